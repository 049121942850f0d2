Option VBASupport 1

Sub Main()
    WriteLine "answer: " & MsgBox("Labas", vbOKCancel, "Pasisveikinimas")
End Sub
