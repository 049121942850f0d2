Option VBASupport 1

Sub Main()
    Dim r As Object, m As Object, d As Date, i As Integer
    Set r = CreateObject("QVA_Varnholt.CDatePic")
    For i = 1 To 4
        d = DateSerial(2024, 2, 29)
        WriteLine "date: " & r.Show(d) & " " & Format(d, "yyyy-mm-dd")
    Next
    Set m = CreateObject("QVA_Common.Message")
    For i = 1 To 3
        WriteLine "answer: " & m.Show("Ar tęsti ąčę?", "Klausimas", Array("Taip", "Ne", "Nežinau"))
    Next
End Sub
