Option VBASupport 1

Sub Main()
    Dim g As Object, r As Object, c As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Eiga"
    ' Errors go back cell by cell, so that it takes seconds.
    Set c = ThisComponent.Sheets(0)
    c.getCellRangeByName("A1").setFormula("=1/0")
    c.getCellRangeByName("A1:T1").fillAuto com.sun.star.sheet.FillDirection.TO_RIGHT, 1
    c.getCellRangeByName("A1:T1000").fillAuto com.sun.star.sheet.FillDirection.TO_BOTTOM, 1
    MsgBox "Pradėti", 0, "Pradžia"
    r.ClearFormulas ThisWorkbook.Sheets("Lapas").Range("A1:T1000")
    MsgBox "Baigta", 0, "Pabaiga"
    g.ResetConnectEX 0
End Sub
