Option VBASupport 1

Sub Main()
    Dim f As Object, sLine
    Set f = CreateObject("NVXCommonObjects.Contracts")
    For Each sLine In f.Run()
        WriteLine sLine
    Next
End Sub
