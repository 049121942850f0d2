' Put before the macros of the corpus: what they call by name, on the test bench. The log goes into a file in
' UTF-16, as consoles do not carry every letter.
Option Explicit
Dim control, texts, output, shell, files, excel, answers, boxesLogged, ownBoxesLogged

' Literals beyond ASCII, which tools/ascii-script.pl moves into a file.
Function U(number)
  U = texts(number)
End Function

Function OneLine(text)
  OneLine = Replace(Replace(text, vbCrLf, "\n"), vbLf, "\n")
End Function

Sub WriteLog(text)
  output.Write OneLine(text) & vbLf
End Sub

Sub Note(text)
  LogForgottenError
  WriteLog text
End Sub

Sub LogForgottenError()
  If Err.Number <> 0 Then LogError "forgotten"
End Sub

' The texts of Basic's own errors are the engine's.
Sub LogError(what)
  Dim text
  text = "no error"
  If Err.Number <> 0 Then text = "error " & Err.Number
  If Err.Number < 0 Then text = text & " | " & Err.Source & " | " & Err.Description
  Err.Clear
  WriteLog what & ": " & text
End Sub

Function Show(value)
  If IsObject(value) Then
    Show = Kind(value)
  ElseIf VarType(value) = vbString Then
    Show = """" & OneLine(value) & """"
  ElseIf VarType(value) = vbDate Then
    Show = "#" & ShowDate(value) & "#"
  ElseIf VarType(value) = vbBoolean Then
    Show = "False"
    If value Then Show = "True"
  ElseIf IsNumeric(value) And Not IsEmpty(value) Then
    ' The user's decimal separator is a comma here.
    Show = Replace(CStr(value), ",", ".")
  Else
    Show = Kind(value)
  End If
End Function

Function Kind(value)
  If Not IsObject(value) Then
    Kind = TypeName(value)
  ElseIf value Is Nothing Then
    Kind = "Nothing"
  Else
    Kind = "Object"
  End If
End Function

Function ShowDate(value)
  ShowDate = ""
  If Not IsEmpty(value) Then ShowDate = _
    Right("000" & Year(value), 4) & "-" & Right("0" & Month(value), 2) & "-" & Right("0" & Day(value), 2)
End Function

Function SameObject(a, b)
  SameObject = a Is b
End Function

Function TheApplication()
  Set TheApplication = excel
End Function

Function TheWorkbook()
  Set TheWorkbook = excel.ActiveWorkbook
End Function

' By these names the guide's examples call them.
Function Application()
  Set Application = excel
End Function

Function ThisWorkbook()
  Set ThisWorkbook = excel.ActiveWorkbook
End Function

Function Format(value, pattern)
  If pattern <> "yyyy-mm-dd" Then Err.Raise 5
  Format = ShowDate(value)
End Function

Function TheSheet(number)
  Set TheSheet = excel.ActiveWorkbook.Sheets(number)
End Function

Sub DefineName(name, sheet, address)
  excel.ActiveWorkbook.Names.Add name, "=Sheet" & sheet & "!" & address
End Sub

Sub DescribeToolbar(sheet, buttons)
  Dim names, column, i, target
  Set target = TheSheet(sheet)
  target.Range("A1").Value = buttons
  target.Range("B1").Value = "Ataskaita"
  target.Range("C1").Value = False
  DefineName "nTotalButtons", sheet, "$A$1"
  DefineName "sToolBarCaption", sheet, "$B$1"
  DefineName "bMenuBar", sheet, "$C$1"
  names = Array("ID", "FaceID", "Captions", "Pictures", "Tag", "TooltipText", "OnKey", "Visible", "BeginGroup", _
    "OnAction")
  For column = 0 To 9
    DefineName "Button_" & names(column), sheet, "$" & Chr(65 + column) & "$3"
  Next
  For i = 1 To buttons
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

Function PressKey(key)
  Dim before
  before = MacrosRun()
  excel.SendKeys key
  PressKey = (MacrosRun() <> before)
End Function

Function MacrosRun()
  MacrosRun = control.MacrosRun(excel)
End Function

Sub ClearTrace()
  control.ClearTrace
End Sub

Sub LogTrace(what)
  Dim line
  LogForgottenError
  If control.Trace = "" Then WriteLog what & ": no call"
  For Each line In Split(control.Trace, vbLf)
    ' A property that is read cannot be told from a method without arguments here.
    If line <> "" Then WriteLog what & ": " & Replace(line, "()", "")
  Next
  control.ClearTrace
End Sub

Sub FailCall(number)
  control.FailCall number
End Sub

Sub SetSetting(section, key, text)
  shell.RegWrite "HKCU\Software\VB and VBA Program Settings\Quillon Enterprise\" & section & "\" & key, text
End Sub

Sub SetUserPath(text)
  shell.RegWrite "HKCU\Environment\PATH", text
End Sub

Function UserPath()
  UserPath = shell.RegRead("HKCU\Environment\PATH")
End Function

' The bench takes the answers itself; they are kept for the log.
Sub Answer(number)
  control.Answer number
  answers = answers & number & ","
End Sub

Function NextAnswer()
  NextAnswer = "1"
  If answers = "" Then Exit Function
  NextAnswer = Left(answers, InStr(answers, ",") - 1)
  answers = Mid(answers, InStr(answers, ",") + 1)
End Function

Sub LogBoxes(what)
  LogForgottenError
  If Not LogNewBoxes(what) Then WriteLog what & ": no box"
End Sub

' Boxes of the host, which the bench shows, and those that the library shows itself, from its log.
Function LogNewBoxes(what)
  Dim boxes, i
  LogNewBoxes = False
  boxes = Split(Replace(control.Boxes, vbCrLf, "\n") & vbLf, vbLf)
  If control.Boxes = "" Then boxes = Array("")
  For i = boxesLogged To UBound(boxes) - 1
    WriteLog what & ": box """ & boxes(i) & """ -> " & NextAnswer()
    boxesLogged = i + 1
    LogNewBoxes = True
  Next
  boxes = OwnBoxes()
  For i = ownBoxesLogged To UBound(boxes) - 1
    WriteLog what & ": box """ & boxes(i) & """ -> 1"
    ownBoxesLogged = i + 1
    LogNewBoxes = True
  Next
End Function

' The texts of the library's own boxes, which are in ASCII here, and nothing behind them.
Function OwnBoxes()
  Dim path, line, found
  found = ""
  path = shell.ExpandEnvironmentStrings("%QVA_VARNHOLT_MESSAGE_LOG%")
  If files.FileExists(path) Then
    For Each line In Split(Replace(files.OpenTextFile(path).ReadAll, vbCr, ""), vbLf)
      If Left(line, 11) = "  text:    " Then found = found & Mid(line, 12) & vbLf
    Next
  End If
  OwnBoxes = Array("")
  If found <> "" Then OwnBoxes = Split(found, vbLf)
End Function

Sub MakeFolder(path)
  Dim parts, i, whole
  parts = Split(path, "\")
  whole = parts(0)
  For i = 1 To UBound(parts)
    whole = whole & "\" & parts(i)
    If Not files.FolderExists(whole) Then files.CreateFolder whole
  Next
End Sub

Sub MakeFile(path)
  MakeFolder files.GetParentFolderName(path)
  files.CreateTextFile(path).Close
End Sub

Function FolderExists(path)
  FolderExists = files.FolderExists(path)
End Function

' Objects go when the last reference does; only LibreOffice needs a hand.
Sub Settle()
End Sub

' A fresh Excel with its workbook, and none of the files that an earlier macro left.
Sub BeginMacro(name)
  Dim folder
  control.Reset
  For Each folder In Array("C:\Ataskaitos", "C:\Corpus")
    If files.FolderExists(folder) Then files.DeleteFolder folder, True
  Next
  SetSetting "Forms\MDI", "P0", "MEDVILNE"
  SetUserPath ""
  answers = ""
  boxesLogged = 0
  Set excel = control.NewExcel
  MakeFolder "C:\Corpus"
  excel.ActiveWorkbook.SaveAs "C:\Corpus\Corpus.xls"
  control.ClearTrace
  output.Write "== " & name & vbLf
End Sub

Sub EndMacro()
  LogForgottenError
  LogNewBoxes "forgotten"
  Set excel = Nothing
  ' What a macro left undone must not reach the next one.
  Dim global
  Set global = CreateObject("QVA_Varnholt.gExcelObject")
  global.ResetConnectEX 0
End Sub

' Wine's script host deletes no values itself.
Sub EndCorpus()
  output.Close
  shell.Run "reg delete HKCU\Environment /v PATH /f", 0, True
End Sub

Set files = CreateObject("Scripting.FileSystemObject")
texts = Split(files.OpenTextFile("@TEXTS@", 1, False, -1).ReadAll, vbLf)
Set shell = CreateObject("WScript.Shell")
Set output = files.CreateTextFile("@LOG@", True, True)
Set control = CreateObject("QVA_TestBench.Control")
ownBoxesLogged = 0
