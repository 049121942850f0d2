Option VBASupport 1

Private g As Object, p As Object, r As Object, m As Object, s As Object
Private nChosen As Long

Sub Main()
    Dim f As Object, i As Integer, nObjects As Long
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set m = CreateObject("QVA_Common.Message")
    Set p = CreateObject("QVA_Varnholt.CRepPeriod")
    Set s = CreateObject("NVXCommonObjects.DocumentSelection")
    Set f = CreateObject("NVXCommonObjects.FormCalls")
    nObjects = f.LiveObjects
    Set r = CreateObject("QVA_Varnholt.CDatePic")
    WriteLine "a new object counts: " & (f.LiveObjects - nObjects)
    p.Init ThisWorkbook.Sheets("Lapas")
    s.Init g.oBook
    Range("RepYear").Value = 2024
    For i = 1 To 3
        ShowAll
    Next
    m.Show "Pirmas", "Palaukite", Array("Gerai")
    nObjects = f.LiveObjects
    For i = 1 To 200
        ShowAll
    Next
    m.Show "Antras", "Palaukite", Array("Gerai")
    WriteLine "chosen: " & nChosen
    WriteLine "more objects: " & f.LiveObjects - nObjects
    g.ResetConnectEX 0
End Sub

Private Sub ShowAll()
    Dim d As Date
    m.Show "Viena", "Trumpas", Array("Gerai")
    r.Show d
    p.Edit
    nChosen = nChosen + s.Open("BOBN", DateSerial(2023, 1, 1), DateSerial(2026, 12, 31), "1=1")
End Sub
