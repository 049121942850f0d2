Option VBASupport 1

' Cells, sheets and the workbook itself of a workbook that is closed.
Sub Main()
    Dim g As Object, r As Object, t As Object, p As Object, b As Object, s As Object, a As Object, c As Object
    Dim bSaved As Boolean, oNothing As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    g.InitToolBars
    Set r = CreateObject("QVA_Varnholt.CReports")
    Set b = Workbooks.Add
    Set s = b.Sheets(1)
    Set a = s.Range("A1:B2")
    Set c = s.Range("A1,C3")
    r.Init "Balansas"
    b.Close False
    DoEvents
    WriteLine "closed"
    On Error Resume Next
    r.ClearFormulas a
    WriteErr "frozen"
    r.ClearFormulas c
    WriteErr "areas frozen"
    r.Locking a
    WriteErr "locked"
    r.FillAttr a
    WriteErr "filled"
    r.ReadDate a, a, a, a, 1
    WriteErr "date"
    r.ColorRanges a, Nothing, Nothing, True
    r.ColorRanges c, Nothing, Nothing, False
    r.Spauzd s, True
    r.SaveDoc ThisWorkbook.Sheets(1).Range("A1"), oNothing, bSaved
    WriteErr "shown"
    g.oToolBars.CreateToolbar s
    WriteErr "toolbar"
    Set t = CreateObject("QVA_Varnholt.CToolbar")
    t.Init ThisWorkbook, s
    WriteErr "sheet"
    t.Init b, ThisWorkbook.Sheets("Lapas")
    WriteErr "workbook"
    Set p = CreateObject("QVA_Varnholt.CRepPeriod")
    p.Init s
    WriteErr "period"
    WriteLine "alive"
End Sub
