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

  Public Sub Reset()
    CloseExcel
  End Sub
  Public Function NewExcel()
    Set NewExcel = StartExcel("C:\Corpus\Corpus.xls")
  End Function
End Class

@EXCEL@

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

' --- The samples -------------------------------------------------------------------------------------------------

' The steps that a report must reach, each once, the figures of its printed area, and what went wrong.
Sub RunSample(name)
  Dim line, word, steps, isFigures
  On Error Resume Next
  control.Reset
  DropFolders
  MakeFolder "C:\Ataskaitos\Archyvas"
  output.Write "== sample_" & name & vbLf
  shell.Run "cmd.exe /c """"" & kit & "\samples\sample.cmd"" " & name & " """ & work & """""", 0, True
  isFigures = False
  For Each line In Split(files.OpenTextFile(work & "\sample.txt", 1, False, -1).ReadAll, vbLf)
    If line = "==" Then
      isFigures = True
    ElseIf isFigures Or Left(line, 5) = "ERROR" Or Left(line, 11) = "Neišsaugota" Then
      If line <> "" Then WriteLog line
    Else
      For Each word In Array("Išsaugota", "Baigta", "Grąžinta")
        If Left(line, Len(word)) = word And InStr(steps, word) = 0 Then
          WriteLog word
          steps = steps & word
        End If
      Next
    End If
  Next
  files.DeleteFile work & "\sample.txt"
  If Err.Number <> 0 Then WriteLog "it did not run: " & Err.Number & " " & Err.Description
  Err.Clear
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

' Each line that differs, as it was expected and as it came. A line that is missing makes no others differ.
Sub TellDifference(expected, actual)
  Dim want, got, lastWanted, lastGot, i
  want = Split(expected, vbLf)
  got = Split(actual, vbLf)
  lastWanted = UBound(want)
  lastGot = UBound(got)
  Do While lastWanted >= 0 And lastGot >= 0
    If want(lastWanted) <> got(lastGot) Then Exit Do
    lastWanted = lastWanted - 1
    lastGot = lastGot - 1
  Loop
  For i = 0 To UBound(want) + UBound(got)
    If LineOf(want, lastWanted, i) <> LineOf(got, lastGot, i) Then
      If i <= lastWanted Then Tell "    expected: " & want(i)
      If i <= lastGot Then Tell "    here:     " & got(i)
    End If
  Next
End Sub
' What no line is stands for one that is not there.
Function LineOf(lines, last, i)
  LineOf = vbLf
  If i <= last Then LineOf = lines(i)
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

' What a macro of each sample workbook gives, where Excel opens it, and what becomes of one that is saved as reports are
' archived, under the ending .xls: the format that it has then (52 is that of .xlsm, 56 that of .xls), or the error.
Sub TellWorkbooks()
  Dim folder, file, book, answer, saved
  On Error Resume Next
  folder = files.GetParentFolderName(kit) & "\samples"
  If Not files.FolderExists(folder) Then Exit Sub
  own.AutomationSecurity = 1
  For Each file In files.GetFolder(folder).Files
    If LCase(Right(file.Name, 5)) = ".xlsm" Then
      Err.Clear
      Set book = Nothing
      Set book = own.Workbooks.Open(file.Path, 0, True)
      answer = own.Run("'" & file.Name & "'!DataTekstu", DateSerial(2025, 3, 31))
      If Err.Number <> 0 Then answer = "error " & Err.Number & " " & Err.Description
      Tell "Workbook " & file.Name & ", DataTekstu(2025-03-31): " & answer
      Err.Clear
      saved = "C:\Corpus\" & files.GetBaseName(file.Name) & ".xls"
      book.SaveAs saved
      If Err.Number = 0 Then answer = "format " & book.FileFormat
      If Err.Number <> 0 Then answer = "error " & Err.Number & " " & Err.Description
      Tell "Workbook " & file.Name & ", saved as .xls: " & answer
      book.Close False
      files.DeleteFile saved
    End If
  Next
  Err.Clear
End Sub

Sub TellMachine()
  Dim path
  Tell "QVA_Varnholt @VERSION@, acceptance on a machine with Excel, " & ShowDate(Now)
  On Error Resume Next
  path = LibraryOf("QVA_Varnholt.gExcelObject")
  Tell "Library: " & path & VersionOfFile(path)
  Tell "Host: " & LibraryOf("NVXCommonObjects.CommonObjects")
  Tell "Excel: " & excelVersion
  If problem = "" Then TellWorkbooks
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
  Dim bitness, began
  bitness = "x64"
  If LCase(shell.ExpandEnvironmentStrings("%PROCESSOR_ARCHITECTURE%")) = "x86" Then bitness = "x86"
  bitness = files.GetParentFolderName(kit) & "\" & bitness & "\" & name
  Set began = files.OpenTextFile(work & "\began", 8, False, -1)
  began.WriteLine bitness
  began.Close
  Register = (shell.Run("regsvr32.exe /s /n /i:user """ & bitness & """", 0, True) = 0)
End Function

' The host's settings of the user, kept in a file and put back afterwards - also those of a run that was cut off. The file
' "began" is there meanwhile; below its first line stand the libraries that the kit registers.
Const kSettings = "HKCU\Software\VB and VBA Program Settings\Quillon Enterprise"
Sub KeepSettings()
  Dim kept, began
  kept = work & "\settings.reg"
  hadSettingsOfOthers = (shell.Run("reg query ""HKCU\Software\VB and VBA Program Settings""", 0, True) = 0)
  shell.Run "reg export """ & kSettings & """ """ & kept & """ /y", 0, True
  Set began = files.CreateTextFile(work & "\began", True, True)
  began.WriteLine ShowDate(Now)
  began.Close
End Sub
Sub PutBack()
  Dim lines, i
  If Not files.FileExists(work & "\began") Then Exit Sub
  DropFolders
  lines = Split(files.OpenTextFile(work & "\began", 1, False, -1).ReadAll, vbCrLf)
  For i = 1 To UBound(lines)
    If lines(i) <> "" Then shell.Run "regsvr32.exe /s /u """ & lines(i) & """", 0, True
  Next
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

Dim work, kit, report, status, boxesInLog, leftOut, problem, reportFile, hadSettingsOfOthers, excelVersion
Set files = CreateObject("Scripting.FileSystemObject")
Set shell = CreateObject("WScript.Shell")
kit = files.GetParentFolderName(WScript.ScriptFullName)
' Started by itself: the other script makes what it needs.
If WScript.Arguments.Count < 2 Then
  reportFile = ""
  If WScript.Arguments.Count = 1 Then reportFile = WScript.Arguments(0)
  WScript.Quit shell.Run("cmd.exe /c """"" & kit & "\acceptance.cmd"" """ & reportFile & """""", 1, True)
End If
work = WScript.Arguments(0)
reportFile = WScript.Arguments(1)
texts = Split(files.OpenTextFile(kit & "\texts.txt", 1, False, -1).ReadAll, vbLf)
leftOut = Array(@LEFT_OUT@)
Set report = files.CreateTextFile(reportFile, True, True)
Set control = New RealExcel
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
report.Close
WScript.Echo reportFile
WScript.Quit status
