Private Sub WriteLine(ByVal sText As String)
    Dim nFile As Integer
    nFile = FreeFile
    Open Environ("QVA_TEST_LOG") For Append As #nFile
    Print #nFile, sText
    Close #nFile
End Sub

Private Sub WriteErr(ByVal sWhat As String)
    WriteLine sWhat & ": " & Err.Number & " | " & Err.Source & " | " & Err.Description
    Err.Clear
End Sub
