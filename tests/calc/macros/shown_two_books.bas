Option VBASupport 1

Sub Main()
    Dim r As Object, m As Object, p As Object, g As Object, oOther As Object, d As Date
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set p = CreateObject("QVA_Varnholt.CRepPeriod")
    p.Init ThisWorkbook.Sheets("Lapas")
    Range("AccPlan").Value = "BIUDZ"
    Range("RepYear").Value = 2024
    Set r = CreateObject("QVA_Varnholt.CDatePic")
    Set m = CreateObject("QVA_Common.Message")
    Set oOther = Workbooks.Add
    oOther.Sheets(1).Name = "Kitas"
    m.Show "Pereikite į kitą knygą", "Pradžia", Array("Gerai")
    WriteActive "new"
    ' The window of the other workbook keeps the focus.
    ThisWorkbook.Activate
    m.Show "Viena", "Pirmas", Array("Gerai")
    WriteActive "box"
    p.Edit
    WriteActive "period"
    WriteLine "own cells: " & Range("AccPlan").Value & " " & Worksheets("Lapas").Name
    DoEvents
    WriteActive "events"
    oOther.Activate
    r.Show d
    WriteActive "date"
    WriteLine "other cells: " & Worksheets("Kitas").Name
    m.Show "Antra", "Paskutinis", Array("Gerai")
    DoEvents
    WriteActive "other events"
    oOther.Close False
    g.ResetConnectEX 0
End Sub

Private Sub WriteActive(ByVal sWhat As String)
    WriteLine sWhat & ": " & IIf(ActiveWorkbook.Name = ThisWorkbook.Name, "own", "other")
End Sub
