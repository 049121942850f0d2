' The guide's examples on the test bench's Excel and the registered host; tools/guide-examples.pl puts them in. The log
' goes into a file in UTF-16, as consoles do not carry every letter: a line for each example, its name, a tab, whether it
' went through, and what it left in the first sheet.
Dim texts, output, control, Application, ThisWorkbook
Const P0 = "HKCU\Software\VB and VBA Program Settings\Quillon Enterprise\Forms\MDI\P0"

' Literals beyond ASCII, which tools/ascii-script.pl moves into a file.
Function U(number)
  U = texts(number)
End Function

' What VBA has and VBScript has not.
Function Format(value, pattern)
  If pattern <> "yyyy-mm-dd" Then Err.Raise 5
  Format = Year(value) & "-" & Right("0" & Month(value), 2) & "-" & Right("0" & Day(value), 2)
End Function

' A workbook of its own for each example.
Sub BeginExample(name)
  Set Application = control.NewExcel
  Set ThisWorkbook = Application.ActiveWorkbook
  output.Write name & vbTab
End Sub

Sub EndExample()
  Dim row, column, value, line
  line = "no error"
  If Err.Number <> 0 Then line = "error " & Err.Number & " " & Err.Description
  Err.Clear
  For row = 1 To 9
    For column = 1 To 13
      value = ThisWorkbook.Worksheets(1).Cells(row, column).Value
      If VarType(value) = vbDate Then value = Format(value, "yyyy-mm-dd")
      If CStr(value) <> "" Then line = line & " " & Chr(64 + column) & row & "=" & value
    Next
  Next
  If Err.Number <> 0 Then line = line & " and then error " & Err.Number & " " & Err.Description
  output.Write line & vbLf
End Sub

@EXAMPLES@

Set output = CreateObject("Scripting.FileSystemObject").CreateTextFile("@LOG@", True, True)
texts = Split(CreateObject("Scripting.FileSystemObject").OpenTextFile("@TEXTS@", 1, False, -1).ReadAll, vbLf)
CreateObject("WScript.Shell").RegWrite P0, "MEDVILNE"
Set control = CreateObject("QVA_TestBench.Control")
On Error Resume Next
@RUNS@
output.Close
