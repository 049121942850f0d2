' A sample report on the test bench's Excel and the registered host; tools/sample-script.pl puts its sheets and macros
' in. The log goes into a file in UTF-16, as consoles do not carry every letter.
Dim texts, output, files, logFile, Application, ThisWorkbook
Const P0 = "HKCU\Software\VB and VBA Program Settings\Quillon Enterprise\Forms\MDI\P0"

' Literals beyond ASCII, which tools/ascii-script.pl moves into a file.
Function U(number)
  U = texts(number)
End Function

Sub WriteLog(text)
  output.Write text & vbLf
End Sub

' What the macros call in place of their own.
Sub PradetiZurnala()
End Sub
Sub Zingsnis(text)
  WriteLog text
End Sub

' What VBA has and VBScript has not.
Function IIf(condition, whenTrue, whenFalse)
  If condition Then IIf = whenTrue Else IIf = whenFalse
End Function
Function Val(text)
  Val = 0
  If IsNumeric(text) Then Val = CDbl(text)
End Function
Function Format(value, pattern)
  Select Case pattern
    Case "yyyy-mm-dd": Format = Year(value) & "-" & TwoDigits(Month(value)) & "-" & TwoDigits(Day(value))
    Case "yyyy-mm": Format = Year(value) & "-" & TwoDigits(Month(value))
    Case "0": Format = CStr(RoundTo(value, 0))
    Case "0.00": Format = Fix(RoundTo(value, 2)) & "." & TwoDigits(RoundTo(Abs(value) * 100, 0) - Fix(RoundTo(Abs(value), 2)) * 100)
  End Select
End Function
Function TwoDigits(number)
  TwoDigits = Right("0" & number, 2)
End Function

' What Wine's script engine cannot: elements of what a function gives, digits after the point, letters beyond ASCII.
Function Element(values, index)
  Element = values(index)
End Function
Function RoundTo(value, digits)
  Dim i, scaled, factor
  factor = 1
  For i = 1 To digits
    factor = factor * 10
  Next
  scaled = CDbl(value) * factor
  RoundTo = Fix(scaled + Sgn(scaled) * 0.5) / factor
End Function
Function Upper(text)
  Dim i
  Upper = UCase(text)
  For i = 1 To 9
    Upper = Replace(Upper, Mid("ąčęėįšųūž", i, 1), Mid("ĄČĘĖĮŠŲŪŽ", i, 1))
  Next
End Function

' The array without its elements 0, which arrays of VBScript cannot be without.
Function FromOne(values)
  Dim i, j, result
  ReDim result(UBound(values, 1) - 1, UBound(values, 2) - 1)
  For i = 1 To UBound(values, 1)
    For j = 1 To UBound(values, 2)
      result(i - 1, j - 1) = values(i, j)
    Next
  Next
  FromOne = result
End Function

' The workbook.
Function AddSheet(name)
  Dim sheets
  Set sheets = ThisWorkbook.Worksheets
  Set AddSheet = sheets.Add(, sheets(sheets.Count))
  AddSheet.Name = name
End Function
Sub AddShape(sheet, name)
  sheet.Shapes.AddShape(1, 0, 0, 12, 12).Name = name
End Sub

' The rows of the printed area: the cells that are not empty, numbers with up to six decimals.
Sub WriteRows(area)
  Dim row, column, values, line
  values = area.Value
  For row = 1 To UBound(values, 1)
    line = ""
    For column = 1 To UBound(values, 2)
      If CellText(values(row, column)) <> "" Then line = line & "|" & CellText(values(row, column))
    Next
    If line <> "" Then WriteLog Mid(line, 2)
  Next
End Sub
Function CellText(value)
  If VarType(value) = vbDouble Then
    CellText = Replace(CStr(RoundTo(value, 6)), ",", ".")
  Else
    CellText = Replace(CStr(value), vbLf, "")
  End If
End Function

Sub MakeWorkbook()
  Dim sheet
@SHEETS@
End Sub

@MACROS@

@EXCEL@

Sub MakeReport()
  @MACRO@
  Uzverti
End Sub

On Error Resume Next
Set files = CreateObject("Scripting.FileSystemObject")
logFile = files.GetParentFolderName(WScript.ScriptFullName) & "\log.txt"
If WScript.Arguments.Count > 0 Then logFile = WScript.Arguments(0)
Set output = files.CreateTextFile(logFile, True, True)
texts = Split(files.OpenTextFile(files.GetParentFolderName(WScript.ScriptFullName) & "\texts.txt", 1, False, -1).ReadAll, vbLf)
CreateObject("WScript.Shell").RegWrite P0, "MEDVILNE"
Set Application = StartExcel("C:\Corpus\Pavyzdys.xls")
Set ThisWorkbook = Application.ActiveWorkbook
MakeWorkbook
If Err.Number = 0 Then MakeReport
If Err.Number <> 0 Then WriteLog "ERROR " & Err.Number & " | " & Err.Source & " | " & Err.Description
Err.Clear
WriteLog "=="
WriteRows ThisWorkbook.Names.Item("Print").RefersToRange
If Err.Number <> 0 Then WriteLog "ERROR " & Err.Number & " | " & Err.Source & " | " & Err.Description
output.Close
Set ThisWorkbook = Nothing
Set Application = Nothing
CloseExcel
