' CToolbars, as a workbook's macro uses it.
Const Bar = "Ataskaita(Book1)"
Const Menu = "Worksheet Menu Bar"
Dim toolbars, toolbar, global, excel, book, sheet

Set toolbars = CreateObject("QVA_Varnholt.CToolbars")
CheckError "creation", 0
Check "the class", TypeName(toolbars), "_CToolbars"
Check "the number of toolbars", toolbars.Count, CLng(0)
CheckNothing "a toolbar that is not there", toolbars.Item(1)
toolbars.Item 300
CheckError "a number beyond 8 bits", 6
toolbars.Item "one"
CheckError "a text that is no number", 13
toolbars.Count = 1
CheckError "writing what can only be read", 438
Check "the caption of the command", toolbars.cmdGoToAppCaption, "Tekstas 841"
toolbars.NoSuchMember
CheckError "an unknown name", 438
Set toolbars = Nothing

ConnectFirst

Set excel = control.NewExcel
Set global = CreateObject("QVA_Varnholt.gExcelObject")
global.InitConnectEX excel, Empty
Set book = excel.ActiveWorkbook
Set sheet = book.Sheets("Sheet2")
CheckError "connecting", 0

Describe sheet, 2
global.InitToolBars
Set toolbars = global.oToolBars
Check "the first toolbar", toolbars.CreateToolbar(sheet), CByte(1)
Check "a toolbar of the same sheet", toolbars.CreateToolbar(sheet), CByte(2)
Check "the number of toolbars now", toolbars.Count, CLng(2)
Check "its id", toolbars.Item(2).IDCollection, CByte(2)
toolbars.DeleteToolbar 1
CheckError "deleting one", 0
Check "the other one lost its bar", toolbars.Item(2).VisibleButton(1, True), CByte(1)
toolbars.DeleteToolbar 2
Check "no toolbar is left", toolbars.Count, CLng(0)
Check "ids are not used again", toolbars.CreateToolbar(sheet), CByte(3)
toolbars.Refresh
CheckError "refreshing what stands where the last one was deleted", 0
toolbars.Item 9
toolbars.Refresh
CheckError "refreshing what was not found", 5
Set toolbar = toolbars.Item(3)
toolbar.VisibleToolbar = True
toolbars.Refresh
CheckError "refreshing what was looked for", 0
CheckNothing "an id that is not there", toolbars.Item(9)
toolbars.Refresh
CheckError "refreshing what is not there", 5

book.Names("bMenuBar").Delete
Check "a sheet that lacks a name", toolbars.CreateToolbar(sheet), CByte(0)
Check "makes no bar", excel.CommandBars.Count, CLng(4)
toolbars.CreateToolbar Nothing
CheckError "no sheet", 91

toolbars.cmdGoToAppShow
CheckError "the command", 0
Check "the command's macro", excel.CommandBars(Menu).Controls("Tekstas 841").OnAction, "RestoreApp"
Check "the menu bar is protected", excel.CommandBars(Menu).Protection, CLng(9)
toolbars.cmdGoToAppShow "Grizti"
Check "there is one command", excel.CommandBars(Menu).Controls.Count, CLng(2)
excel.CommandBars(Menu).Controls("Tekstas 841").Execute
Check "it runs the macro", control.MacrosRun(excel), "Grizti"
toolbars.cmdGoToAppDelete
Check "the command goes", excel.CommandBars(Menu).Controls.Count, CLng(1)
Check "the menu bar stays without protection", excel.CommandBars(Menu).Protection, CLng(0)
toolbars.cmdGoToAppDelete
CheckError "no command to delete", 0
toolbars.cmdGoToAppShow

excel.SendKeys "{F1}"
Check "the help key runs the macro", control.MacrosRun(excel), "Grizti,Book1!cmdHelp"
control.ClearTrace
global.cmdHelp
CheckError "the help of toolbar 1, which is not there", 91
Set toolbar = Nothing
Set toolbars = Nothing
global.ResetToolBars
Check "the bar goes with the collection", excel.CommandBars.Count, CLng(3)
Check "so does the command", excel.CommandBars(Menu).Controls.Count, CLng(1)
excel.SendKeys "{F1}"
Check "so do the keys", control.MacrosRun(excel), "Grizti,Book1!cmdHelp"

global.ResetConnectEX 0
Set sheet = Nothing
Set book = Nothing
Set global = Nothing
Set excel = Nothing
Finish 44
