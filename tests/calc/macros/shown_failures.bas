Option VBASupport 1

Sub Main()
    Dim f As Object, sWhat
    Set f = CreateObject("NVXCommonObjects.FormCalls")
    For Each sWhat In Array("memory", "range", "error", "none")
        WriteLine sWhat & ": " & f.Show(sWhat)
    Next
End Sub
