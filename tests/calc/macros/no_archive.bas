Option VBASupport 1

Sub Main()
    Dim g As Object, r As Object, s As Object, bSaved As Boolean
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Balansas"
    Set s = ThisWorkbook.Sheets("Lapas")
    s.Range("H1").Value = 2024
    r.SaveDoc s.Range("H1"), Nothing, bSaved
    WriteLine "saved: " & bSaved & " " & ThisWorkbook.Name & " " & ThisWorkbook.Saved
End Sub
