' gExcelObject, as a workbook's macro uses it: the first object of every report.
Const P0 = "HKCU\Software\VB and VBA Program Settings\Quillon Enterprise\Forms\MDI\P0"
Class MacroError
  Public Description
End Class
Dim global, excel, shell, result, failed, number, went_through, halves
halves = ""
Set shell = CreateObject("WScript.Shell")
' The first connection brings the host's client tools to life, which stay.
shell.RegWrite P0, "MEDVILNE"
Set excel = control.NewExcel
Set global = CreateObject("QVA_Varnholt.gExcelObject")
global.InitConnectEX excel, Empty
global.ResetConnectOnError
CheckError "a first connection", 0
Set global = Nothing
Set excel = Nothing
control.Reset
liveAtStart = control.LiveObjects

Set excel = control.NewExcel
Set global = CreateObject("QVA_Varnholt.gExcelObject")
CheckError "creation", 0

shell.RegWrite P0, ""
global.InitConnectEX excel, excel.ActiveWorkbook
CheckErrorText "no book chosen", -2147221504, "InitConnectEX", "Tekstas 16514"
CheckNothing "the book after a failure", global.oBook
shell.RegWrite P0, "NERA"
global.InitConnectEX excel, excel.ActiveWorkbook, Nothing
CheckErrorText "a book that cannot be opened", -2147221504, "InitConnectEX", "Tekstas 842: NERA"
shell.RegWrite P0, "MEDVILNE"
result = global.initConnectEx(excel, excel.ActiveWorkbook)
CheckError "connecting", 0
Check "the number of connections", result, CInt(1)
Check "the book", global.oBook.BookCode, "MEDVILNE"
Check "the book of the host's tools", control.BooksSet, "MEDVILNE"
Check "the book of the plant", control.PlantsMade, "MEDVILNE"
Report Not global.oMyPlant Is Nothing, "the plant is there"
Check "connecting again", global.InitConnectEX(excel, Empty), CInt(1)

global.InitConnectEX excel
CheckError "too few arguments", 450
global.InitConnectEX 5, Empty
CheckError "a number for an object", 13
global.NoSuchMember
CheckError "an unknown name", 438
global.oBook = 5
CheckError "writing what can only be read", 438

CheckNothing "the toolbars at first", global.oToolBars
global.InitToolBars
Check "the toolbars", global.oToolBars.Count, CLng(0)
global.ResetToolBars
CheckNothing "the toolbars after the last reset", global.oToolBars
global.InitEnvironment
Report Not global.oEnvironment Is Nothing, "the environment is there"
global.ResetEnvironment
CheckNothing "the environment after the last reset", global.oEnvironment
global.cmdHelp
CheckError "help without toolbars", 91

Set failed = New MacroError
failed.Description = "Nepavyko"
control.ClearTrace
global.ExcelReportError failed
CheckError "reporting an error", 0
Report InStr(control.Trace, "Application.Visible") > 0, "Excel is asked whether it is visible"

global.ResetConnectEX 0
CheckNothing "the book after the reset", global.oBook
CheckNothing "the plant after the reset", global.oMyPlant

' Whichever call fails, nothing is kept of the connection, and the next one is whole.
number = 0
Do
  number = number + 1
  control.FailCall number
  global.InitConnectEX excel, Empty
  went_through = (Err.Number = 0)
  Err.Clear
  control.FailCall 0
  If Not went_through Then
    If Not (global.oBook Is Nothing And global.oMyPlant Is Nothing) Then halves = halves & " " & number
    If global.InitConnectEX(excel, Empty) <> 1 Then halves = halves & " count " & number
    If global.oMyPlant Is Nothing Then halves = halves & " plant " & number
  End If
  global.ResetConnectOnError
Loop Until went_through Or number > 20
Check "the calls of a connection", number - 1, 6
Check "half connections", halves, ""
Set failed = Nothing
Set global = Nothing
Set excel = Nothing
Finish 32
