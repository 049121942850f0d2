' Put before every script: checks that report themselves, since a script that fails prints nothing.
Option Explicit
Dim checks, failures, control, texts, liveAtStart

' Literals beyond ASCII, which Wine's script engine cannot read: whoever starts the script puts them into a file
' and this function in their place.
Function U(number)
  U = texts(number)
End Function

Sub Report(passed, what)
  checks = checks + 1
  If Not passed Then
    failures = failures + 1
    WScript.Echo "FAILED: " & what
  End If
End Sub

Sub Check(what, actual, expected)
  Report (VarType(actual) = VarType(expected) And CStr(actual) = CStr(expected)), what & ": " & _
    TypeName(actual) & " " & CStr(actual) & " instead of " & TypeName(expected) & " " & CStr(expected)
End Sub

' The error of the statement before, which is forgotten.
Sub CheckError(what, number)
  Report Err.Number = number, what & ": error " & Err.Number & " " & Err.Description & " instead of " & number
  Err.Clear
End Sub

Sub CheckErrorText(what, number, source, description)
  Report Err.Number = number And Err.Source = source And Err.Description = description, what & ": error " & _
    Err.Number & ", " & Err.Source & ", " & Err.Description & " instead of " & number & ", " & source & ", " & _
    description
  Err.Clear
End Sub

Sub CheckNothing(what, object)
  Report object Is Nothing, what & ": not Nothing"
End Sub

' Connects to the book "MEDVILNE" and lets go again. The first connection brings the host's client tools to life,
' which stay; what is alive afterwards is the measure for Finish. One check.
Sub ConnectFirst()
  Dim global
  CreateObject("WScript.Shell").RegWrite _
    "HKCU\Software\VB and VBA Program Settings\Quillon Enterprise\Forms\MDI\P0", "MEDVILNE"
  Set global = control.NewObject("QVA_Varnholt.gExcelObject")
  global.InitConnectEX control.NewExcel, Empty
  global.ResetConnectOnError
  Set global = Nothing
  control.Reset
  liveAtStart = control.LiveObjects
  CheckError "a first connection", 0
End Sub

' Describes a toolbar of `number` buttons on the sheet.
Sub Describe(sheet, number)
  Dim names, column, row, cells(253, 9)
  sheet.Range("A1").Value = number
  sheet.Range("B1").Value = "Ataskaita"
  sheet.Range("C1").Value = False
  sheet.Range("A1").Name = "nTotalButtons"
  sheet.Range("B1").Name = "sToolBarCaption"
  sheet.Range("C1").Name = "bMenuBar"
  names = Array("ID", "FaceID", "Captions", "Pictures", "Tag", "TooltipText", "OnKey", "Visible", "BeginGroup", _
    "OnAction")
  For column = 0 To 9
    sheet.Cells(3, column + 1).Name = "Button_" & names(column)
  Next
  If number = 0 Then Exit Sub
  For row = 0 To number - 1
    cells(row, 0) = 1
    cells(row, 1) = 59
    cells(row, 2) = "Mygtukas Nr. " & row + 1
    cells(row, 5) = "Užuomina"
    If row = 0 Then cells(row, 6) = "^{b}"
    cells(row, 7) = True
    cells(row, 8) = False
    cells(row, 9) = "Veiksmas" & row + 1
  Next
  sheet.Range("A4:J" & number + 3).Value = cells
End Sub

' Every script ends with this, after it let go of its objects. `expected` is the number of its checks: one that
' itself fails is skipped without a word.
Sub Finish(expected)
  Check "objects of the bench that are alive", control.LiveObjects, liveAtStart
  CheckError "the end of the script", 0
  Report checks + 1 = expected, "checks made: " & checks + 1 & " instead of " & expected
  If failures = 0 Then
    WScript.Echo "OK " & checks & " checks"
  Else
    WScript.Echo failures & " of " & checks & " checks failed"
  End If
End Sub

On Error Resume Next
texts = Split(CreateObject("Scripting.FileSystemObject").OpenTextFile("@TEXTS@", 1, False, -1).ReadAll, vbLf)
Set control = CreateObject("QVA_TestBench.Control")
control.Reset
' The library's first object brings the host's tools to life, which stay.
Set liveAtStart = control.NewObject("QVA_Varnholt.CTools")
liveAtStart = Empty
liveAtStart = control.LiveObjects
CheckError "the bench", 0

