Option VBASupport 1

' Pages beside a Windows help file, or in its place, are what is opened.
Sub Main()
    Dim g As Object, c As Object, sFile, n
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set c = CreateObject("QVA_Varnholt.CCommandsEvent")
    sFile = "C:\Help\Reports.chm"
    Shown c, sFile
    sFile = "C:\Help\Other.chm"
    Shown c, sFile
    For n = 1 To 100
        If FileExists(Environ("QVA_TEST_OPENED")) Then Exit For
        Wait 100
    Next
    g.ResetConnectEX 0
End Sub

Private Sub Shown(c, sFile)
    On Error Resume Next
    c.cmdHelp sFile
    WriteErr "shown"
End Sub
