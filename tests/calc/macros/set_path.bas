Option VBASupport 1

Sub Main()
    Dim p As Object
    Set p = CreateObject("QVA_Varnholt.CSetPath")
    WriteLine "added: " & p.RegPath("Kelias")
    WriteLine "again: " & p.RegPath("Kelias")
End Sub
