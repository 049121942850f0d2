Option VBASupport 1

Private Sub Choose(ByVal sCommand As String)
    createUnoService("QVA_Varnholt.MenuJob").trigger(sCommand)
End Sub

Public Sub Main()
    WriteLine "Main of this workbook"
End Sub

Public Sub RunsItself()
    Choose "run-workbook"
    WriteLine "back"
End Sub

' Opens the workbook of QVA_TEST_BOOK with the macro mode QVA_TEST_MODE and runs it by the menu.
Public Sub RunsAnother()
    Dim oBook As Object, aMode(0) As New com.sun.star.beans.PropertyValue
    aMode(0).Name = "MacroExecutionMode"
    aMode(0).Value = CInt(Environ("QVA_TEST_MODE"))
    Set oBook = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("QVA_TEST_BOOK")), "_blank", 0, aMode())
    Choose "run-workbook"
    WriteLine "modified: " & oBook.isModified()
    oBook.close True
End Sub

Public Sub RunsWithoutAWorkbook()
    Dim oFrame As Object
    Set oFrame = StarDesktop.getActiveFrame()
    StarDesktop.setActiveFrame(Nothing)
    Choose "run-workbook"
    StarDesktop.setActiveFrame(oFrame)
End Sub

Public Sub ChoosesTheBook()
    Dim nFile As Integer, sLine As String
    Choose "choose-book"
    nFile = FreeFile
    Open Environ("QVA_VARNHOLT_REGISTRY") For Input As #nFile
    Do While Not EOF(nFile)
        Line Input #nFile, sLine
        If InStr(sLine, """P0""") > 0 Then WriteLine sLine
    Loop
    Close #nFile
End Sub

Public Sub ChoosesABook()
    Choose "choose-book"
End Sub

Public Sub MakesAReport()
    Choose "new-report"
End Sub

Public Sub MakesTwoReports()
    Dim n As Integer, sUrl As String
    For n = 1 To 2
        Choose "new-report"
        sUrl = ConvertFromURL(StarDesktop.getCurrentComponent().getURL())
        WriteLine Mid(sUrl, InStr(sUrl, "/drives/") + 8)
    Next
End Sub

' Waits until the desktop's program was there, where one is to come.
Public Sub ShowsTheGuide()
    Dim n As Integer
    Choose "guide"
    If Environ("QVA_TEST_OPENED") = "" Then Exit Sub
    For n = 1 To 100
        If FileExists(Environ("QVA_TEST_OPENED")) Then Exit For
        Wait 100
    Next
End Sub
