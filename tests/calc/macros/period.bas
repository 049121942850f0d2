Option VBASupport 1

Sub Main()
    Dim g As Object, p As Object, s As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set s = ThisWorkbook.Sheets("Lapas")
    ThisWorkbook.Names.Add Name:="repyear", RefersTo:="=Lapas!$A$3"
    s.Range("A3").Value = 2024
    Set p = CreateObject("QVA_Varnholt.CRepPeriod")
    On Error Resume Next
    p.Init Nothing
    WriteLine "no sheet: " & Err.Number & " " & Err.Source & "|" & Err.Description
    On Error GoTo 0
    p.Init s
    WriteLine "names: " & ThisWorkbook.Names.Count
    WriteLine "year: " & Range("RepYear").Address & " " & Range("RepYear").Value
    WriteLine "created: " & Range("AccPlan").Address & " " & Range("BookCode").Address & " " & Range("AccPlan").Font.ColorIndex
    Range("CurrBudgetDocId").Value = 102
    Range("CurrBudgetDocCode").Value = "BIU-2024-01"
    Range("AccPlan").Value = "BIUDZ"
    ShowPeriod "before"
    WriteLine "confirmed: " & p.Edit
    ShowPeriod "after"
    WriteLine "cancelled: " & p.Edit
    ShowPeriod "cancelled"
    WriteLine "refused: " & p.Edit
    ShowPeriod "refused"
    WriteLine "fewer: " & p.Edit
    ShowPeriod "fewer"
    Range("BookCode").Offset(500, 1).Value = "cleared"
    Range("BookCode").Offset(500, 7).Value = "kept"
    WriteLine "again: " & p.Edit
    ShowPeriod "again"
    WriteLine "below: " & Range("BookCode").Offset(500, 1).Value & "|" & Range("BookCode").Offset(500, 7).Value
    WriteLine "no answers: " & p.Edit
    ShowPeriod "no answers"
    g.ResetConnectEX 0
End Sub

Private Sub ShowPeriod(sWhat)
    Dim sText As String, i As Integer, j As Integer, r
    sText = sWhat & ": " & Range("AccPlan").Value & " " & Range("RepYear").Value & " " & Range("RepQuarter").Value & _
        " " & Range("RepMon").Value & " " & Range("RepType").Value
    For Each r In Array("RepLastPerBeg", "RepLastPerEnd", "RepCurrPerBeg", "RepCurrPerEnd")
        sText = sText & " " & Format(Range(r).Value, "yyyy-mm-dd")
    Next
    WriteLine sText & " " & Range("CurrBudgetDocId").Value & "," & Range("CurrBudgetDocCode").Value & "," & Range("BudgetCount").Value
    For i = 1 To 2
        sText = sWhat & " " & i & ":"
        For j = 0 To 6
            sText = sText & " " & Range("BookCode").Offset(i, j).Value
        Next
        WriteLine sText
    Next
End Sub
