Option VBASupport 1

Sub Main()
    WriteLine "main"
End Sub

Sub Auto_Close()
    WriteLine "closed"
    If Environ("QVA_TEST_FAIL") <> "" Then Err.Raise 1234, "Auto_Close", "neužverta"
End Sub
