Option VBASupport 1

'Jobs that go through, and jobs that do not.
Sub Main()
    WriteLine "done in " & CreateUnoService("com.sun.star.util.PathSettings").UserConfig
    Touch Environ("QVA_VARNHOLT_DRIVES") & "/C/done.txt"
End Sub

Sub Fails()
    WriteLine "fails"
    Err.Raise 5, "batch_jobs", "Nepavyko"
End Sub

Sub DiesOnce()
    WriteLine "dies once"
    If FileExists(Environ("QVA_TEST_LOG") & ".died") Then
        Main
    Else
        Touch Environ("QVA_TEST_LOG") & ".died"
        Dies
    End If
End Sub

Sub Dies()
    WriteLine "dies"
    Shell "/bin/sh", 0, "-c 'kill -9 $PPID'", True
    Hangs
End Sub

Sub QuitsExcel()
    WriteLine "quits Excel"
    Application.Quit
    Hangs
End Sub

Sub EndsLibreOffice()
    WriteLine "ends LibreOffice"
    StarDesktop.terminate
End Sub

Sub Hangs()
    WriteLine "hangs"
    Do
    Loop
End Sub

'Until the test has done what it does.
Sub Waits()
    WriteLine "waits"
    Do While Not FileExists(Environ("QVA_TEST_LOG") & ".go")
        Wait 50
    Loop
    Main
End Sub

Private Sub Touch(ByVal sFile As String)
    Dim nFile As Integer
    nFile = FreeFile
    Open sFile For Output As #nFile
    Close #nFile
End Sub
