Option VBASupport 1

Sub Main()
    Dim g As Object, p As Object, r As Object, m As Object, d As Date, i As Integer
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set m = CreateObject("QVA_Common.Message")
    Set r = CreateObject("QVA_Varnholt.CDatePic")
    Set p = CreateObject("QVA_Varnholt.CRepPeriod")
    p.Init ThisWorkbook.Sheets("Lapas")
    Range("RepYear").Value = 2024
    For i = 1 To 3
        m.Show "Viena", "Trumpas", Array("Gerai")
        r.Show d
        p.Edit
    Next
    m.Show "Pirmas", "Palaukite", Array("Gerai")
    For i = 1 To 200
        m.Show "Viena", "Trumpas", Array("Gerai")
        r.Show d
        p.Edit
    Next
    m.Show "Antras", "Palaukite", Array("Gerai")
    WriteLine "shown"
    g.ResetConnectEX 0
End Sub
