Option VBASupport 1

Sub Main()
    Dim g As Object, p As Object, s As Object, oOther As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set s = ThisWorkbook.Sheets("Lapas")
    Set oOther = Workbooks.Add
    oOther.Sheets(1).Name = "Lapas"
    WriteLine "active: " & (ActiveWorkbook.Name = oOther.Name) & ", before: " & ThisWorkbook.Names.Count
    Set p = CreateObject("QVA_Varnholt.CRepPeriod")
    p.Init s
    WriteLine "own: " & ThisWorkbook.Names.Count
    WriteLine "other: " & oOther.Names.Count
    g.ResetConnectEX 0
    oOther.Close False
End Sub
