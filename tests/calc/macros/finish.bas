Option VBASupport 1

Sub Main()
    Dim g As Object, r As Object, s As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Balansas"
    Set s = ThisWorkbook.Sheets("Lapas")
    Printing r, s
    Formulas r, s
    r.Locking s.Range("A1:B2")
    r.Locking s.Range("C1:D2")
    r.ColorRanges s.Range("A1:A2"), s.Range("B1"), s.Range("C1"), True
    r.ColorRanges s.Range("A2"), Nothing, Nothing, False
    WriteLine "screen: " & Application.ScreenUpdating & " " & ActiveCell.Address
    Saving r, s
    OpenAnew
End Sub

Private Sub Printing(r, s)
    r.Spauzd s, True
    ThisWorkbook.Sheets("Antras").Activate
    s.Visible = xlSheetHidden
    r.Spauzd s, True, True, 2
    WriteLine "printed: " & s.Visible & " " & ActiveSheet.Name & " " & s.PageSetup.PrintArea
    r.Spauzd ThisWorkbook.Sheets("Antras"), True
    s.Visible = xlSheetVisible
    s.Activate
End Sub

Private Sub Formulas(r, s)
    Dim i As Integer
    s.Range("F1").Value = 5
    s.Range("F2").Formula = "=F1*2"
    s.Range("F3").Formula = "=F2+0.5"
    s.Range("F4").Formula = "="""""
    s.Range("F5").Formula = "=1/0"
    s.Range("F6").Formula = "=NA()"
    s.Range("F7").Formula = "=F1-F1"
    s.Range("F8").Formula = "=""ą"" & ""č"""
    s.Range("F9").Value = "a = b"
    s.Range("G2").Formula = "=F1*2"
    s.Range("F10").Formula = "=DATE(2024,5,15)"
    r.ClearFormulas s.Range("F1:F10")
    WriteLine "a date: " & s.Range("F10").HasFormula & " " & TypeName(s.Range("F10").Value) & " " & Format(s.Range("F10").Value, "yyyy-mm-dd")
    ' A block of two dimensions, in which each cell differs; the last column holds texts like formulas.
    For i = 1 To 3
        s.Cells(i, 9).Formula = "=" & i * 10 & "+1"
        s.Cells(i, 10).Value = i
        s.Cells(i, 11).Formula = "=J" & i & "*100"
    Next
    s.Range("L1").Value = "'=J1"
    s.Range("L2").Formula = "=""="" & ""J1"""
    WriteLine "like formulas: " & s.Range("L1").Value & " " & s.Range("L2").Value
    r.ClearFormulas s.Range("I1:L3")
    s.Range("J1:J3").Value = 0
End Sub

Private Sub Saving(r, s)
    Dim bSaved As Boolean
    s.Range("H1").Value = 2024
    s.Range("H2").Value = 3
    s.Range("H3").Value = "2024-05-15"
    r.SaveDoc s.Range("H1"), s.Range("H2"), bSaved
    WriteLine "saved: " & bSaved & " " & ThisWorkbook.Name & " " & ThisWorkbook.Saved
    s.Range("F1").Value = 6
    DoEvents
    FileCopy ThisWorkbook.Path & "/Balansas_2024_03.xls", ThisWorkbook.Path & "/Pirma.xls"
    r.SaveDoc s.Range("H1"), s.Range("H2"), bSaved
    WriteLine "refused: " & bSaved & " " & ThisWorkbook.Saved
    r.SaveDoc s.Range("H1"), s.Range("H2"), bSaved, False
    WriteLine "replaced: " & bSaved & " " & Application.DisplayAlerts
    r.SaveDoc s.Range("H3"), Nothing, bSaved, True
    WriteLine "by date: " & bSaved & " " & ThisWorkbook.Name
    s.Range("H1").Value = 1969
    r.SaveDoc s.Range("H1"), s.Range("H2"), bSaved
    WriteLine "wrong year: " & bSaved
End Sub

' A copy, as the workbook itself is open under its name.
Private Sub OpenAnew()
    Dim t As Object, b As Object, s As Object, i As Integer, x As String
    FileCopy ThisWorkbook.Path & "/Balansas_2024_03.xls", ThisWorkbook.Path & "/Kopija.xls"
    Set t = CreateObject("QVA_Varnholt.CTools")
    t.Init Application
    Set b = t.OpenBook("C:\Ataskaitos\Archyvas\2024\", "Kopija")
    WriteLine "opened: " & b.Name
    Set s = b.Sheets("Lapas")
    For i = 1 To 9
        x = x & s.Cells(i, 6).Formula & "|"
    Next
    WriteLine "formulas: " & x & s.Range("G2").Formula
    x = ""
    For i = 1 To 3
        x = x & s.Cells(i, 9).Formula & "," & s.Cells(i, 10).Formula & "," & s.Cells(i, 11).Formula & "|"
    Next
    WriteLine "block: " & x & s.Range("L1").Value & "," & s.Range("L2").Value & "," & s.Range("L3").Value
    WriteLine "saved cell: " & s.Range("H5").Value
    WriteLine "locked: " & s.Range("A1:B2").Locked & " " & s.Range("C1:D2").Locked & " " & s.Range("A3").Locked
    WriteLine "colours: " & s.Range("A1").Interior.ColorIndex & " " & s.Range("A2").Interior.ColorIndex & " " & s.Range("B1").Interior.ColorIndex
    Set s = t.OpenBook("C:\Ataskaitos\Archyvas\2024\", "Pirma").Sheets("Lapas")
    WriteLine "stored first: " & s.Range("F1").Value & " " & s.Range("H5").Value
End Sub
