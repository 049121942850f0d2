Option VBASupport 1
Sub Main()
    Dim x
    x = = 1
End Sub
