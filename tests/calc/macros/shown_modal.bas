Option VBASupport 1

' Shows windows while another workbook is open, in which a user tries to work meanwhile.
Sub Main()
    Dim r As Object, m As Object, oOther As Object, d As Date, i As Integer
    Set r = CreateObject("QVA_Varnholt.CDatePic")
    Set m = CreateObject("QVA_Common.Message")
    Set oOther = Workbooks.Add
    oOther.Sheets(1).Name = "Kitas"
    m.Show "Pereikite į kitą knygą", "Pradžia", Array("Gerai")
    ThisWorkbook.Activate
    For i = 1 To 2
        m.Show "Spauskite kitą knygą", "Langas " & i, Array("Gerai")
        WriteActive "box", oOther
        r.Show d
        WriteActive "date", oOther
    Next
    oOther.Activate
    m.Show "Baigta", "Pabaiga", Array("Gerai")
    WriteActive "other", oOther
    Do Until oOther.Sheets(1).UsedRange.Cells(1, 1).Value = 77
        Wait 100
    Loop
    WriteLine "typed"
    oOther.Close False
End Sub

' At once, and after LibreOffice handled what comes later.
Private Sub WriteActive(ByVal sWhat As String, ByVal oOther As Object)
    Dim sLine As String
    sLine = sWhat & ": " & ActiveSheet.Name
    Wait 1000
    WriteLine sLine & " " & ActiveSheet.Name & " " & oOther.Sheets(1).UsedRange.Address
End Sub
