Option VBASupport 1

Sub Main()
    Dim nFile As Integer
    nFile = FreeFile
    Open Environ("QVA_VARNHOLT_DRIVES") & "/C/new.txt" For Output As #nFile
    Print #nFile, "new"
    Close #nFile
End Sub
