Option VBASupport 1

'The archive has the report already. The user refuses to replace it at first.
Sub Main()
    Dim g As Object, r As Object, s As Object, oNothing As Object, bSaved As Boolean
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Balansas"
    Set s = ThisWorkbook.Sheets("Lapas")
    s.Range("H1").Value = 2024
    r.SaveDoc s.Range("H1"), oNothing, bSaved
    WriteLine "kept: " & bSaved & " " & ThisWorkbook.Name
    r.SaveDoc s.Range("H1"), oNothing, bSaved
    WriteLine "replaced: " & bSaved & " " & ThisWorkbook.Name
    s.Range("H1").Value = 2025
    r.SaveDoc s.Range("H1"), oNothing, bSaved
    WriteLine "new: " & bSaved & " " & ThisWorkbook.Name
End Sub
