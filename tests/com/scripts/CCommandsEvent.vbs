' CCommandsEvent, as a workbook's macro uses it.
Dim events, toolbar, global, excel, book, sheet, bar, file, topic, row, window
Set events = CreateObject("QVA_Varnholt.CCommandsEvent")
CheckError "creation", 0
Check "the class", TypeName(events), "_CCommandsEvent"
row = 70000
events.cmdFreeze Nothing, row
CheckError "a number beyond 16 bits", 6
events.cmdFreeze "A1"
CheckError "a text for an object", 13
events.cmdFreeze
CheckError "too few arguments", 450
events.cmdHelp "FReport.chm", 1, 2
CheckError "too many arguments", 450
events.NoSuchMember
CheckError "an unknown name", 438
events.cmdComment
CheckError "a command before Init", 91
Set events = Nothing

ConnectFirst

Set excel = control.NewExcel
Set global = CreateObject("QVA_Varnholt.gExcelObject")
global.InitConnectEX excel, Empty
Set book = excel.ActiveWorkbook
Set sheet = book.Sheets("Sheet2")
CheckError "connecting", 0

sheet.Range("A1").Value = 0
sheet.Range("B1").Value = "Ataskaita"
sheet.Range("C1").Value = False
sheet.Range("A1").Name = "nTotalButtons"
sheet.Range("B1").Name = "sToolBarCaption"
sheet.Range("C1").Name = "bMenuBar"
Set toolbar = CreateObject("QVA_Varnholt.CToolbar")
toolbar.Init book, sheet
Set events = toolbar.CmdEvent
Set bar = excel.CommandBars("Ataskaita(Book1)")
CheckError "a toolbar", 0

file = ""
control.ClearTrace
events.cmdHelp file
CheckError "the report help", 0
Report LCase(Right(file, 12)) = "\freport.chm", "the file of the report help: " & file
Report InStr(control.Trace, "Application.Help(") > 0, "Excel shows it"
file = "Kita.chm"
topic = 12
control.ClearTrace
events.cmdHelp file, topic
Check "another file", file, "Kita.chm"
Report InStr(control.Trace, "Application.Help(""Kita.chm"", 12)") > 0, "its topic"
events.cmdHelp
CheckError "no arguments", 0

excel.DisplayCommentIndicator = 0
events.cmdComment
CheckError "the comments", 0
Check "the comments are shown", excel.DisplayCommentIndicator, CLng(-1)
Check "the button is pressed", bar.Controls(1).State, CLng(-1)
events.cmdComment
Check "the comments are hidden again", excel.DisplayCommentIndicator, CLng(0)
Check "the button is released", bar.Controls(1).State, CLng(0)

Set window = excel.ActiveWindow
window.ScrollRow = 7
row = 0
sheet.Activate
events.cmdFreeze sheet.Range("A9"), row
CheckError "freezing", 0
Check "the row on top", row, CInt(7)
Check "the panes are frozen", window.FreezePanes, True
Check "the active cell stays", excel.ActiveCell.Address, "$A$1"
events.cmdFreeze sheet.Range("A9")
Check "the panes are thawed", window.FreezePanes, False
Check "the first row is on top", window.ScrollRow, CLng(1)
events.cmdFreeze book.Sheets("Sheet1").Range("A1"), 3
CheckError "a cell of another sheet", 1004
Check "the screen stays frozen after a failure", excel.ScreenUpdating, False
Check "so do the events", excel.EnableEvents, False

Set toolbar = Nothing
events.cmdComment
Report Err.Number <> 0, "the bar is gone though a macro keeps its commands"
Err.Clear
global.ResetConnectEX 0
Set window = Nothing
Set events = Nothing
Set bar = Nothing
Set sheet = Nothing
Set book = Nothing
Set global = Nothing
Set excel = Nothing
Finish 36
