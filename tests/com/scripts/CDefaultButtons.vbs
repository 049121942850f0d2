' CDefaultButtons, as a workbook's macro uses it.
Dim buttons, list, global, excel, book, sheet, bar
Set buttons = CreateObject("QVA_Varnholt.CDefaultButtons")
CheckError "creation", 0
Check "the class", TypeName(buttons), "_CDefaultButtons"
buttons.Init 1, 2
CheckError "too few arguments", 450
buttons.Init Nothing, Nothing, CreateObject("QVA_Varnholt.CTools")
CheckError "an object of another class", 13
buttons.cmdIndexHelp = 1
CheckError "writing what can only be read", 438
buttons.NoSuchMember
CheckError "an unknown name", 438
buttons.AddButtons
CheckError "buttons before Init", 91
Set buttons = Nothing

ConnectFirst

Set excel = control.NewExcel
Set global = CreateObject("QVA_Varnholt.gExcelObject")
global.InitConnectEX excel, Empty
Set book = excel.ActiveWorkbook
Set sheet = book.Sheets("Sheet2")
CheckError "connecting", 0

control.SetText 849, "Žinynas"
Set list = CreateObject("QVA_Varnholt.CButtonProperties")
Set buttons = CreateObject("QVA_Varnholt.CDefaultButtons")
Set bar = excel.CommandBars.Add("Ataskaita")
buttons.Init sheet, bar, list
Check "no help button at first", buttons.cmdIndexHelp, CLng(0)
buttons.AddButtons
CheckError "adding the buttons", 0
Check "the controls", bar.Controls.Count, CLng(7)
Check "the list", list.TotalButtons, CByte(7)
Check "the comment button", buttons.cmdIndexComment, CLng(1)
Check "the freeze button", buttons.cmdIndexFreeze, CLng(2)
Check "the print button", buttons.cmdIndexPrint, CLng(3)
Check "the print preview button", buttons.cmdIndexPrintP, CLng(4)
Check "the Excel button", buttons.cmdIndexExcel, CLng(6)
Check "the help button", buttons.cmdIndexHelp, CLng(7)
Check "the help button's tooltip is its caption", list.sBTooltipText(7), "Žinynas"
Check "the help button's key", list.sBOnKey(7), "{F1}"
Check "the help button's macro in the list", list.sBOnAction(7), "Book1!cmdHelp"
Check "the comment button's macro is not in the list", list.sBOnAction(1), ""
Check "the comment button's macro", bar.Controls(1).OnAction, "Book1!cmdComment"
Check "the box", bar.Controls(5).Width, CLng(52)
Check "the parameter of all", bar.Controls(5).Parameter, "Ataskaita"
list.Add 248
buttons.AddButtons
CheckError "more than 255 buttons", 6

global.ResetConnectEX 0
Set buttons = Nothing
Set list = Nothing
Set bar = Nothing
Set sheet = Nothing
Set book = Nothing
Set global = Nothing
Set excel = Nothing
Finish 31
