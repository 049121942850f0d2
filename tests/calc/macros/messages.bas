Option VBASupport 1

Sub Main()
    Dim m As Object
    Set m = CreateObject("QVA_Common.Message")
    WriteLine "answer: " & m.Show("Ar tęsti ąčę?", "Klausimas", Array("Taip", "Ne"))
    WriteLine "unanswered: " & m.Show("Baigta", "", Array("Gerai"))
End Sub
