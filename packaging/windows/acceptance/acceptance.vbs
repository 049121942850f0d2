' --- Excel of this machine in place of the test bench's --------------------------------------------------------

Class RealExcel
  ' Calls into Excel are told to nobody.
  Public Property Get Trace()
    Trace = "no trace"
  End Property
  Public Sub ClearTrace()
  End Sub
  Public Sub FailCall(number)
  End Sub
  Public Function MacrosRun(application)
    MacrosRun = ""
  End Function
  Public Property Get Boxes()
    Boxes = ""
  End Property
  ' The answers stand in the answers file.
  Public Sub Answer(button)
  End Sub

  ' Closes the Excel of the macro before. What Excel would keep for the user becomes what it was: settings, and toolbars.
  Public Sub Reset()
    Dim i, bar
    On Error Resume Next
    If own Is Nothing Then Exit Sub
    own.DisplayAlerts = False
    Do While own.Workbooks.Count > 0
      own.Workbooks(1).Close False
      If Err.Number <> 0 Then Exit Do
    Loop
    For i = own.CommandBars.Count To 1 Step -1
      Set bar = own.CommandBars(i)
      If Not bar.BuiltIn And Not barsAtFirst.Exists(bar.Name) Then bar.Delete
    Next
    Set bar = Nothing
    own.DisplayFormulaBar = settings(0)
    own.DisplayStatusBar = settings(1)
    own.CellDragAndDrop = settings(2)
    own.EditDirectlyInCell = settings(3)
    own.TransitionNavigKeys = settings(4)
    own.MoveAfterReturn = settings(5)
    own.AskToUpdateLinks = settings(6)
    own.CopyObjectsWithCells = settings(7)
    own.EnableAnimations = settings(8)
    own.DisplayCommentIndicator = settings(9)
    own.Quit
    Set own = Nothing
  End Sub

  ' A new Excel, with a workbook that is opened as an .xls file, so that it has the grid of one.
  Public Function NewExcel()
    Dim book, bar, i
    Set own = CreateObject("Excel.Application")
    own.Visible = False
    own.DisplayAlerts = False
    Set barsAtFirst = CreateObject("Scripting.Dictionary")
    For i = 1 To own.CommandBars.Count
      Set bar = own.CommandBars(i)
      If Not bar.BuiltIn Then barsAtFirst(bar.Name) = True
    Next
    settings = Array(own.DisplayFormulaBar, own.DisplayStatusBar, own.CellDragAndDrop, own.EditDirectlyInCell, _
      own.TransitionNavigKeys, own.MoveAfterReturn, own.AskToUpdateLinks, own.CopyObjectsWithCells, _
      own.EnableAnimations, own.DisplayCommentIndicator)
    MakeFolder "C:\Corpus"
    Set book = own.Workbooks.Add
    Do While book.Sheets.Count < 3
      book.Sheets.Add , book.Sheets(book.Sheets.Count)
    Loop
    For i = 1 To 3
      If book.Sheets(i).Name <> "Sheet" & i Then book.Sheets(i).Name = "Sheet" & i
    Next
    book.Sheets(1).Activate
    book.SaveAs "C:\Corpus\Corpus.xls", OldFormat()
    book.Close False
    own.Workbooks.Open "C:\Corpus\Corpus.xls"
    ' The test bench's Excel comes with a workbook.
    For i = own.Workbooks.Count To 1 Step -1
      If own.Workbooks(i).Name <> "Corpus.xls" Then own.Workbooks(i).Close False
    Next
    Set NewExcel = own
  End Function

  Private Function OldFormat()
    OldFormat = 56
    If CDbl(Left(own.Version, InStr(own.Version, ".") - 1)) < 12 Then OldFormat = -4143
  End Function
End Class

' Boxes of library and host, from their log.
Function LogNewBoxes(what)
  Dim path, line, text, found
  LogNewBoxes = False
  path = work & "\boxes.log"
  If Not files.FileExists(path) Then Exit Function
  If files.GetFile(path).Size = 0 Then Exit Function
  found = 0
  For Each line In Split(Replace(files.OpenTextFile(path).ReadAll, vbCr, ""), vbLf)
    If Left(line, 11) = "  text:    " Then
      text = Mid(line, 12)
    ElseIf Left(line, 11) = "           " Then
      text = text & "\n" & Mid(line, 12)
    ElseIf Left(line, 11) = "  answer:  " Then
      found = found + 1
      If found > boxesInLog Then
        WriteLog what & ": box """ & text & """ -> " & Mid(line, 12, 1)
        LogNewBoxes = True
      End If
    End If
  Next
  boxesInLog = found
End Function

' --- Facts -------------------------------------------------------------------------------------------------------

Sub LogFact(what, value)
  Dim text
  text = "error " & Err.Number
  If Err.Number = 0 Then text = Show(value)
  Err.Clear
  WriteLog what & " => " & text
End Sub

Sub LogStatement(what)
  Dim text
  text = "done"
  If Err.Number <> 0 Then text = "error " & Err.Number
  Err.Clear
  WriteLog what & " => " & text
End Sub

' --- The report ---------------------------------------------------------------------------------------------------

' The sections of a log: name => lines.
Function Sections(path)
  Dim result, name, line
  Set result = CreateObject("Scripting.Dictionary")
  name = ""
  For Each line In Split(files.OpenTextFile(path, 1, False, -1).ReadAll, vbLf)
    If Left(line, 3) = "== " Then
      name = Mid(line, 4)
      result.Add name, ""
    ElseIf name <> "" And line <> "" Then
      result(name) = result(name) & line & vbLf
    End If
  Next
  Set Sections = result
End Function

Sub Tell(text)
  report.Write text & vbCrLf
End Sub

' Each line that differs, as it was expected and as it came.
Sub TellDifference(expected, actual)
  Dim want, got, i, last
  want = Split(expected, vbLf)
  got = Split(actual, vbLf)
  last = UBound(want)
  If UBound(got) > last Then last = UBound(got)
  For i = 0 To last
    If LineOf(want, i) <> LineOf(got, i) Then
      If i < UBound(want) Then Tell "    expected: " & want(i)
      If i < UBound(got) Then Tell "    here:     " & got(i)
    End If
  Next
End Sub
Function LineOf(lines, i)
  LineOf = ""
  If i <= UBound(lines) Then LineOf = lines(i)
End Function

Sub Compare()
  Dim expected, actual, name, agreed, differed, missing
  Set expected = Sections(kit & "\expected.txt")
  Set actual = Sections(work & "\log.txt")
  agreed = 0
  differed = 0
  missing = 0
  For Each name In expected.Keys
    If Not actual.Exists(name) Then
      Tell "NOT RUN  " & name
      missing = missing + 1
    ElseIf actual(name) = expected(name) Then
      Tell "agrees   " & name
      agreed = agreed + 1
    Else
      Tell "DIFFERS  " & name
      TellDifference expected(name), actual(name)
      differed = differed + 1
    End If
  Next
  Tell ""
  For Each name In leftOut
    Tell "left out " & name
  Next
  Tell ""
  Conclude agreed & " agree, " & differed & " differ, " & missing & " not run"
  If differed + missing > 0 Then status = 1
End Sub

Sub Conclude(text)
  Tell text
  WScript.Echo text
End Sub

' What an object says of itself, where it can.
Function VersionOf(application)
  On Error Resume Next
  VersionOf = application.Version
  VersionOf = VersionOf & ", build " & application.Build
  VersionOf = VersionOf & ", " & application.OperatingSystem
  Err.Clear
End Function

Function VersionOfFile(path)
  VersionOfFile = ""
  If files.FileExists(path) Then VersionOfFile = ", version " & files.GetFileVersion(path)
End Function

Sub TellMachine()
  Dim path
  Tell "QVA_Varnholt @VERSION@, acceptance on a machine with Excel, " & ShowDate(Now)
  On Error Resume Next
  path = LibraryOf("QVA_Varnholt.gExcelObject")
  Tell "Library: " & path & VersionOfFile(path)
  Tell "Host: " & LibraryOf("NVXCommonObjects.CommonObjects")
  Tell "Excel: " & excelVersion
  Tell "Script host: " & WScript.Version & ", " & shell.ExpandEnvironmentStrings("%PROCESSOR_ARCHITECTURE%")
  Tell "Code page: " & ReadKey("HKLM\SYSTEM\CurrentControlSet\Control\Nls\CodePage\ACP")
  Tell ""
End Sub

' --- What the machine has, and what is put there for a while -------------------------------------------------------

Function ReadKey(path)
  On Error Resume Next
  ReadKey = ""
  ReadKey = shell.RegRead(path)
  Err.Clear
End Function

' The file of a class, empty when it is not registered for this bitness.
Function LibraryOf(identifier)
  LibraryOf = ReadKey("HKCR\CLSID\" & ReadKey("HKCR\" & identifier & "\CLSID\") & "\InprocServer32\")
End Function

Function IsDemoHost(path)
  IsDemoHost = (LCase(Right(path, 16)) = "qva_demohost.dll")
End Function

' Registers a file of the package for the user. Whether that went well.
Function Register(name)
  Dim bitness
  bitness = "x64"
  If LCase(shell.ExpandEnvironmentStrings("%PROCESSOR_ARCHITECTURE%")) = "x86" Then bitness = "x86"
  bitness = files.GetParentFolderName(kit) & "\" & bitness & "\" & name
  Register = (shell.Run("regsvr32.exe /s /n /i:user """ & bitness & """", 0, True) = 0)
  If Register Then registered = registered & bitness & vbLf
End Function

Sub Unregister()
  Dim path
  For Each path In Split(registered, vbLf)
    If path <> "" Then shell.Run "regsvr32.exe /s /u """ & path & """", 0, True
  Next
End Sub

' The host's settings of the user, kept in a file and put back afterwards - also those of a run that was cut off.
Const kSettings = "HKCU\Software\VB and VBA Program Settings\Quillon Enterprise"
Sub KeepSettings()
  Dim kept
  kept = work & "\settings.reg"
  hadSettingsOfOthers = (shell.Run("reg query ""HKCU\Software\VB and VBA Program Settings""", 0, True) = 0)
  shell.Run "reg export """ & kSettings & """ """ & kept & """ /y", 0, True
  files.CreateTextFile(work & "\began").Close
End Sub
Sub PutBack()
  If Not files.FileExists(work & "\began") Then Exit Sub
  DropFolders
  shell.Run "reg delete """ & kSettings & """ /f", 0, True
  If files.FileExists(work & "\settings.reg") Then
    shell.Run "reg import """ & work & "\settings.reg""", 0, True
  ElseIf Not hadSettingsOfOthers Then
    shell.Run "reg delete ""HKCU\Software\VB and VBA Program Settings"" /f", 0, True
  End If
  files.DeleteFile work & "\began"
End Sub

Sub DropFolders()
  Dim folder
  For Each folder In Array("C:\Ataskaitos", "C:\Corpus")
    If files.FolderExists(folder) Then files.DeleteFolder folder, True
  Next
End Sub

' Why nothing can be tried; empty when it can.
Function Obstacle()
  Dim folder
  Obstacle = ""
  For Each folder In Array("C:\Ataskaitos", "C:\Corpus")
    If files.FolderExists(folder) Then Obstacle = "There is a folder " & folder & ", which would be written into."
  Next
  If Obstacle <> "" Then Exit Function
  KeepSettings
  If LibraryOf("QVA_Varnholt.gExcelObject") = "" Then
    If Not Register("QVA_Varnholt.dll") Then Obstacle = "The library cannot be registered."
  End If
  If LibraryOf("NVXCommonObjects.CommonObjects") = "" Then
    If Not Register("QVA_DemoHost.dll") Then Obstacle = "The demo host cannot be registered."
  ElseIf Not IsDemoHost(LibraryOf("NVXCommonObjects.CommonObjects")) Then
    Obstacle = "The host system is installed here; its data are not touched. Take a machine without it."
  End If
  If Obstacle <> "" Then Exit Function
  On Error Resume Next
  CreateObject "QVA_Varnholt.CTools"
  If Err.Number <> 0 Then Obstacle = "The library cannot be created: " & Err.Number & " " & Err.Description
  Err.Clear
  If Obstacle <> "" Then Exit Function
  control.NewExcel
  If Err.Number <> 0 Then
    Obstacle = "Excel cannot be started: " & Err.Number & " " & Err.Description
    Err.Clear
  Else
    excelVersion = VersionOf(own)
  End If
End Function

Sub RunAll()
@RUN@
End Sub

Dim work, kit, own, report, status, registered, boxesInLog, leftOut, problem, reportFile, hadSettingsOfOthers, _
  barsAtFirst, settings, excelVersion
Set files = CreateObject("Scripting.FileSystemObject")
Set shell = CreateObject("WScript.Shell")
kit = files.GetParentFolderName(WScript.ScriptFullName)
work = WScript.Arguments(0)
reportFile = WScript.Arguments(1)
texts = Split(files.OpenTextFile(kit & "\texts.txt", 1, False, -1).ReadAll, vbLf)
leftOut = Array(@LEFT_OUT@)
Set report = files.CreateTextFile(reportFile, True, True)
Set own = Nothing
Set control = New RealExcel
registered = ""
boxesInLog = 0
status = 0
hadSettingsOfOthers = True
On Error Resume Next
PutBack
problem = Obstacle()
TellMachine
If problem = "" Then
  Set output = files.CreateTextFile(work & "\log.txt", True, True)
  RunAll
  output.Close
  Compare
Else
  Conclude problem
  status = 2
End If
If Err.Number <> 0 Then
  Conclude "The kit itself failed: " & Err.Number & " " & Err.Description
  status = 2
End If
control.Reset
PutBack
Unregister
report.Close
WScript.Echo reportFile
WScript.Quit status
