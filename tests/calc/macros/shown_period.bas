Option VBASupport 1

Sub Main()
    Dim g As Object, p As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set p = CreateObject("QVA_Varnholt.CRepPeriod")
    p.Init ThisWorkbook.Sheets("Lapas")
    Range("AccPlan").Value = "BIUDZ"
    Range("RepYear").Value = 2023
    Do
        WriteLine "edited: " & p.Edit & ShowPeriod()
    Loop Until Range("RepYear").Value = 2025
    g.ResetConnectEX 0
End Sub

Private Function ShowPeriod()
    Dim sText As String, i As Integer, j As Integer, r
    For Each r In Array("AccPlan", "RepYear", "RepQuarter", "RepMon", "RepType")
        sText = sText & " " & Range(r).Value
    Next
    For Each r In Array("RepLastPerBeg", "RepLastPerEnd", "RepCurrPerBeg", "RepCurrPerEnd")
        sText = sText & " " & Format(Range(r).Value, "yyyy-mm-dd")
    Next
    sText = sText & " " & Range("BudgetCount").Value & ":"
    For i = 1 To IIf(Range("BudgetCount").Value > 1, Range("BudgetCount").Value, 1)
        For j = 0 To 6
            sText = sText & " " & Range("BookCode").Offset(i, j).Value
        Next
    Next
    ShowPeriod = sText
End Function
