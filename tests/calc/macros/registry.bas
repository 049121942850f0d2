Option VBASupport 1

Sub Main()
    Dim g As Object, p As Object, nFile As Integer
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    WriteLine "connected: " & g.oBook.BookCode
    Set p = CreateObject("QVA_Varnholt.CSetPath")
    WriteLine "added: " & p.RegPath("AppPath")
    'As a user who edits the file by hand.
    nFile = FreeFile
    Open Environ("QVA_VARNHOLT_REGISTRY") For Append As #nFile
    Print #nFile, """Kelias""=C:\be kabučių"
    Close #nFile
    WriteLine "with a mistake: " & p.RegPath("AppPath") & " " & p.RegPath("Kitas")
    g.ResetConnectEX 0
End Sub
