Option VBASupport 1

Sub Main()
    Dim g As Object, r As Object, s As Object, u As Object, i As Integer
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Balansas"
    Set s = ThisWorkbook.Sheets("Lapas")
    For i = 1 To 9
        s.Cells(i, 1).Value = "E" & i & "S1"
        s.Cells(i, 4).Value = "E" & i & "S4"
    Next
    r.ColorRanges s.Range("A5,B6"), Nothing, Nothing, True
    WriteLine "list: " & Colours(s)
    r.ColorRanges Union(s.Range("A5"), s.Range("C7:C8")), Nothing, Nothing, True
    WriteLine "union: " & Colours(s)
    r.ColorRanges s.Range("A5,B6"), Nothing, Nothing, False
    WriteLine "none: " & Colours(s)
    Set u = s.Range("A5,B6")
    r.Locking u
    r.Locking u
    WriteLine "unlocked: " & s.Range("A5").Locked & " " & s.Range("B6").Locked & " " & s.Range("C7").Locked
    r.Locking u
    WriteLine "locked: " & s.Range("A5").Locked & " " & s.Range("B6").Locked
    s.Range("E1").Formula = "=1+1"
    s.Range("G3").Formula = "=1+2"
    s.Range("F1").Formula = "=1+3"
    r.ClearFormulas s.Range("E1,G3")
    WriteLine "frozen: " & s.Range("E1").Formula & " " & s.Range("G3").Formula & " " & s.Range("F1").Formula
    r.Spauzd s, True
    WriteLine "print area: " & s.PageSetup.PrintArea
End Sub

Private Function Colours(s)
    Dim c
    For Each c In Array("A5", "A6", "B5", "B6", "C7", "C8")
        Colours = Colours & s.Range(c).Interior.ColorIndex & " "
    Next
End Function
