Option VBASupport 1
' What the macros of the corpus call by name, in LibreOffice. Paths of Windows lie in the folder of the drives.

Private sAnswers, nBoxes, bookInUse

Private Function OneLine(sText)
    OneLine = Replace(Replace(sText, vbCrLf, "\n"), vbLf, "\n")
End Function

Private Sub WriteLog(sText)
    Dim nFile As Integer
    nFile = FreeFile
    Open Environ("QVA_TEST_LOG") For Append As #nFile
    Print #nFile, OneLine(sText)
    Close #nFile
End Sub

Public Sub Note(sText)
    LogForgottenError
    WriteLog sText
End Sub

Public Sub LogForgottenError()
    If Err.Number <> 0 Then LogError "forgotten"
End Sub

' The texts of Basic's own errors are the engine's.
Public Sub LogError(sWhat)
    Dim sText
    sText = "no error"
    If Err.Number <> 0 Then sText = "error " & Err.Number
    If Err.Number < 0 Then sText = sText & " | " & Err.Source & " | " & Err.Description
    Err.Clear
    WriteLog sWhat & ": " & sText
End Sub

Public Sub LogFact(sWhat, v)
    LogOutcome sWhat, Show(v)
End Sub

Public Sub LogStatement(sWhat)
    LogOutcome sWhat, "done"
End Sub

Private Sub LogOutcome(sWhat, sOutcome)
    If Err.Number <> 0 Then sOutcome = "error " & Err.Number
    Err.Clear
    WriteLog sWhat & " => " & sOutcome
End Sub

Public Function Show(v)
    Select Case TypeName(v)
    Case "String"
        Show = """" & OneLine(v) & """"
    Case "Date"
        Show = "#" & ShowDate(v) & "#"
    Case "Byte", "Integer", "Long", "Double", "Currency", "Boolean"
        Show = CStr(v)
    Case Else
        Show = Kind(v)
    End Select
End Function

Public Function Kind(v)
    Kind = TypeName(v)
    If IsObject(v) Then
        If Not (v Is Nothing) Then Kind = "Object"
    End If
End Function

Public Function ShowDate(v)
    ShowDate = ""
    If Not IsEmpty(v) Then ShowDate = Format(v, "yyyy-mm-dd")
End Function

Public Function SameObject(a, b)
    SameObject = EqualUnoObjects(a, b)
End Function

Public Function TheApplication()
    Set TheApplication = Application
End Function

Public Function TheWorkbook()
    Set TheWorkbook = bookInUse
End Function

Public Function TheSheet(nSheet)
    Set TheSheet = bookInUse.Sheets(nSheet)
End Function

Public Sub DefineName(sName, nSheet, sAddress)
    bookInUse.Names.Add sName, "=Sheet" & nSheet & "!" & sAddress
End Sub

Public Sub DescribeToolbar(nSheet, nButtons)
    Dim names, i, target
    Set target = TheSheet(nSheet)
    target.Range("A1").Value = nButtons
    target.Range("B1").Value = "Ataskaita"
    target.Range("C1").Value = False
    DefineName "nTotalButtons", nSheet, "$A$1"
    DefineName "sToolBarCaption", nSheet, "$B$1"
    DefineName "bMenuBar", nSheet, "$C$1"
    names = Array("ID", "FaceID", "Captions", "Pictures", "Tag", "TooltipText", "OnKey", "Visible", "BeginGroup", _
        "OnAction")
    For i = 0 To 9
        DefineName "Button_" & names(i), nSheet, "$" & Chr(65 + i) & "$3"
    Next
    For i = 1 To nButtons
        target.Cells(3 + i, 1).Value = 1
        target.Cells(3 + i, 2).Value = 59
        target.Cells(3 + i, 3).Value = "Mygtukas Nr. " & i
        target.Cells(3 + i, 6).Value = "Užuomina"
        If i = 1 Then target.Cells(4, 7).Value = "^{b}"
        target.Cells(3 + i, 8).Value = True
        target.Cells(3 + i, 9).Value = False
        target.Cells(3 + i, 10).Value = "Veiksmas" & i
    Next
End Sub

' Nobody presses keys here.
Public Function PressKey(sKey)
    PressKey = False
End Function

Public Function MacrosRun()
    MacrosRun = ""
End Function

' The library's calls are told to nobody here, and none of them can be refused.
Public Sub ClearTrace()
End Sub

Public Sub LogTrace(sWhat)
    Note sWhat & ": no trace"
End Sub

Public Sub FailCall(nNumber)
End Sub

' The registry is a text file, written anew with all that the macro set.
Public Sub SetSetting(sSection, sKey, sText)
    WriteRegistry "Software\VB and VBA Program Settings\Quillon Enterprise\" & sSection, sKey, sText
End Sub

Public Sub SetUserPath(sText)
    WriteRegistry "Environment", "PATH", sText
End Sub

Private Sub WriteRegistry(sKey, sName, sText)
    Dim nFile As Integer
    nFile = FreeFile
    Open Environ("QVA_VARNHOLT_REGISTRY") For Append As #nFile
    Print #nFile, ""
    Print #nFile, "[HKEY_CURRENT_USER\" & sKey & "]"
    Print #nFile, """" & sName & """=""" & Replace(sText, "\", "\\") & """"
    Close #nFile
End Sub

Public Function UserPath()
    Dim nFile As Integer, sLine As String
    UserPath = ""
    nFile = FreeFile
    Open Environ("QVA_VARNHOLT_REGISTRY") For Input As #nFile
    Do While Not EOF(nFile)
        Line Input #nFile, sLine
        If Left(sLine, 8) = """PATH""=""" Then UserPath = Replace(Mid(sLine, 9, Len(sLine) - 9), "\\", "\")
    Loop
    Close #nFile
End Function

' The answers stand in the answers file, taken from the golden logs.
Public Sub Answer(nNumber)
End Sub

Public Sub LogBoxes(sWhat)
    LogForgottenError
    If Not LogNewBoxes(sWhat) Then WriteLog sWhat & ": no box"
End Sub

' From the log of the boxes. The folder of the drives is another one in each run.
Private Function LogNewBoxes(sWhat)
    Dim nFile As Integer, sLine As String, sText As String, n
    LogNewBoxes = False
    n = 0
    If Not FileExists(Environ("QVA_VARNHOLT_MESSAGE_LOG")) Then Exit Function
    nFile = FreeFile
    Open Environ("QVA_VARNHOLT_MESSAGE_LOG") For Input As #nFile
    Do While Not EOF(nFile)
        Line Input #nFile, sLine
        If Left(sLine, 11) = "  text:    " Then
            sText = Mid(sLine, 12)
        ElseIf Left(sLine, 11) = Space(11) Then
            sText = sText & "\n" & Mid(sLine, 12)
        ElseIf Left(sLine, 11) = "  answer:  " Then
            n = n + 1
            If n > nBoxes Then
                WriteLog sWhat & ": box """ & sText & """ -> " & Mid(sLine, 12, 1)
                LogNewBoxes = True
            End If
        End If
    Loop
    Close #nFile
    nBoxes = n
End Function

Public Function OwnPath(sPath)
    OwnPath = Environ("QVA_VARNHOLT_DRIVES") & "/" & Replace(Replace(sPath, ":", ""), "\", "/")
End Function

Public Sub MakeFolder(sPath)
    MkDir OwnPath(sPath)
End Sub

Public Sub MakeFile(sPath)
    Dim nFile As Integer
    MkDir OwnPath(Left(sPath, InStrRev(sPath, "\") - 1))
    nFile = FreeFile
    Open OwnPath(sPath) For Output As #nFile
    Close #nFile
End Sub

Public Function FolderExists(sPath)
    FolderExists = FileExists(OwnPath(sPath))
End Function

' Basic keeps the last object that CreateObject gave until it creates another one.
Public Sub Settle()
    Dim another
    Set another = CreateObject("QVA_Varnholt.CTools")
    Set another = Nothing
    DoEvents
End Sub

' A fresh workbook, and none of the files and settings that an earlier macro left.
Public Sub BeginMacro(sName)
    Dim nFile As Integer, sFolder, files
    Set files = CreateUnoService("com.sun.star.ucb.SimpleFileAccess")
    WriteLog "== " & sName
    For Each sFolder In Array("C:\Ataskaitos", "C:\Corpus")
        If FileExists(OwnPath(sFolder)) Then files.kill(ConvertToUrl(OwnPath(sFolder)))
    Next
    nFile = FreeFile
    Open Environ("QVA_VARNHOLT_REGISTRY") For Output As #nFile
    Print #nFile, "Windows Registry Editor Version 5.00"
    Close #nFile
    SetSetting "Forms\MDI", "P0", "MEDVILNE"
    Set bookInUse = Workbooks.Add
    Do While bookInUse.Sheets.Count < 3
        bookInUse.Sheets.Add After:=bookInUse.Sheets(bookInUse.Sheets.Count)
    Loop
    bookInUse.Sheets(1).Activate
    MakeFolder "C:\Corpus"
    bookInUse.SaveAs Filename:=OwnPath("C:\Corpus\Corpus.xls"), FileFormat:=xlNormal
End Sub

Public Sub EndMacro()
    Dim g
    LogForgottenError
    LogNewBoxes "forgotten"
    ' What a macro left undone must not reach the next one.
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.ResetConnectEX 0
    Set g = Nothing
    Settle
    bookInUse.Saved = True
    bookInUse.Close False
    DoEvents
    Err.Clear
End Sub
