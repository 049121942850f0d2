Option VBASupport 1
Sub Main()
    Do
    Loop
End Sub
