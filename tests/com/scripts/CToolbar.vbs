' CToolbar, as a workbook's macro uses it.
Const Bar = "Ataskaita(Book1)"
Dim toolbar, global, excel, book, sheet, number, macro, picture, events

' How often a call was made.
Function Times(call_text)
  Times = CInt(UBound(Split(control.Trace, call_text)))
End Function

Set toolbar = CreateObject("QVA_Varnholt.CToolbar")
CheckError "creation", 0
Check "the class", TypeName(toolbar), "_CToolbar"
CheckNothing "the events at first", toolbar.CmdEvent
Set events = CreateObject("QVA_Varnholt.CCommandsEvent")
Set toolbar.CmdEvent = events
CheckError "setting the events", 0
Report toolbar.CmdEvent Is events, "the same events come back"
Set toolbar.CmdEvent = toolbar
CheckError "an object of another class", 13
toolbar.IDCollection = 7
Check "the id", toolbar.IDCollection, CByte(7)
toolbar.IDCollection = 256
CheckError "an id beyond 8 bits", 6
toolbar.SetAction 1
CheckError "too few arguments", 450
toolbar.VisibleButton "one", True
CheckError "a text that is no number", 13
Set events = Nothing
toolbar.NoSuchMember
CheckError "an unknown name", 438
Check "an operation before Init", toolbar.VisibleButton(1, True), CByte(1)
Check "buttons before Init", toolbar.TotalButtons, CByte(0)
toolbar.iHelp
CheckError "the help button before Init", 91
Set toolbar = Nothing

ConnectFirst

Set excel = control.NewExcel
Set global = CreateObject("QVA_Varnholt.gExcelObject")
global.InitConnectEX excel, Empty
Set book = excel.ActiveWorkbook
Set sheet = book.Sheets("Sheet2")
CheckError "connecting", 0

' A bar without a name is not taken for that of a toolbar before Init.
Set picture = excel.CommandBars.Add("Kieno nors")
picture.Name = ""
number = excel.CommandBars.Count
Set toolbar = CreateObject("QVA_Varnholt.CToolbar")
toolbar.SetAction 1, "Veiksmas"
CheckError "an action before Init", 91
toolbar.SetHotKey 1, "^{k}"
CheckError "a key before Init", 91
toolbar.VisibleButton 1, False
CheckError "a button before Init", 91
toolbar.VisibleToolbar = True
CheckError "showing the bar before Init", 91
Set toolbar = Nothing
Check "the bar without a name stays", excel.CommandBars.Count, number
picture.Delete
Set picture = Nothing

' Settings sheets of every size.
For Each number In Array(0, 1, 20, 254)
  Describe sheet, number
  CheckError "a sheet of " & number, 0
  Set toolbar = CreateObject("QVA_Varnholt.CToolbar")
  toolbar.Init book, sheet
  CheckError "a toolbar of " & number, 0
  If number = 254 Then
    Check "254 buttons leave room for one", toolbar.TotalButtons, CByte(255)
    Check "which is the first default button", toolbar.iComment, CLng(255)
    Check "there is no help button then", toolbar.iHelp, CLng(0)
  Else
    Check number & " buttons and seven", toolbar.TotalButtons, CByte(number + 7)
    Check "the first default button of " & number, toolbar.iComment, CLng(number + 1)
    Check "the help button of " & number, toolbar.iHelp, CLng(number + 7)
  End If
  Check "Excel has the controls of " & number, excel.CommandBars(Bar).Controls.Count, CLng(toolbar.TotalButtons)
  Check "the bar of " & number & " is hidden at first", toolbar.VisibleToolbar, False
  Set toolbar = Nothing
  Check "the bar of " & number & " goes", excel.CommandBars.Count, CLng(3)
Next

' A face from a picture of the sheet, a button without a macro, a picture that is not there.
Describe sheet, 3
Set picture = sheet.Shapes.AddShape(1, 0, 0, 16, 16)
picture.Name = "Picture02"
sheet.Range("Button_FaceID").Offset(1, 0).Value = 0
sheet.Range("Button_Pictures").Offset(1, 0).Value = "Picture02"
sheet.Range("Button_OnAction").Offset(2, 0).ClearContents
sheet.Range("Button_FaceID").Offset(3, 0).Value = 0
sheet.Range("Button_Pictures").Offset(3, 0).Value = "Picture99"
CheckError "a sheet with a picture", 0
control.ClearTrace
Set toolbar = CreateObject("QVA_Varnholt.CToolbar")
toolbar.Init book, sheet
CheckError "a toolbar with a picture", 0
Report Times(".Copy()") = 1, "the picture is copied"
Report Times(".Controls(1).PasteFace()") = 1, "and pasted onto the button"
Report Times(".Controls(1).FaceId = ") = 0, "which gets no other face"
Report Times(".Controls(2).FaceId = 59") = 1, "the next button gets Excel's face"
Report Times(".Controls(2).PasteFace()") = 0, "and no picture"
Report Times(".Controls(3).PasteFace()") = 1, "what is on the clipboard stands for a picture that is not there"
Check "the button after the picture", excel.CommandBars(Bar).Controls(3).Caption, "Mygtukas Nr. 3"
Check "a macro from the sheet", excel.CommandBars(Bar).Controls(1).OnAction, "Book1!Veiksmas1"
Check "no macro from the sheet", excel.CommandBars(Bar).Controls(2).OnAction, ""
Check "all buttons are there", toolbar.TotalButtons, CByte(10)
excel.CommandBars(Bar).Controls(2).Execute
CheckError "a button without a macro", 0
Check "it runs none", control.MacrosRun(excel), ""
Set picture = Nothing
Set toolbar = Nothing

Describe sheet, 20
Set toolbar = CreateObject("QVA_Varnholt.CToolbar")
toolbar.Init book, sheet
toolbar.VisibleToolbar = True
CheckError "showing the bar", 0
Check "the bar is shown", excel.CommandBars(Bar).Visible, True
Check "its caption", toolbar.Caption, Bar
Check "its place among the bars", toolbar.ToolbarID, CLng(4)
Check "moving it to the top", toolbar.PositinTop, CByte(0)
Check "the top", excel.CommandBars(Bar).Position, CLng(1)
Check "a button of the sheet", excel.CommandBars(Bar).Controls(2).Caption, "Mygtukas Nr. 2"

' Hiding a button silences its key.
excel.SendKeys "^{b}"
Check "the key runs the macro", control.MacrosRun(excel), "Book1!Veiksmas1"
Check "hiding the button", toolbar.VisibleButton(1, False), CByte(0)
excel.SendKeys "^{b}"
Check "the key is silent", control.MacrosRun(excel), "Book1!Veiksmas1"
Check "showing the button", toolbar.VisibleButton(1, True), CByte(0)
excel.SendKeys "^{b}"
Check "the key runs the macro again", control.MacrosRun(excel), "Book1!Veiksmas1,Book1!Veiksmas1"

toolbar.EnabledButton 1, False
CheckError "a member that Excel does not have", 438
Check "a face", toolbar.ButtonFaceID(1, 100), CByte(0)
Check "the face", excel.CommandBars(Bar).Controls(1).FaceId, CLng(100)
Set picture = sheet.Shapes.AddShape(1, 0, 0, 16, 16)
Check "a picture", toolbar.ButtonFace(1, picture), CByte(0)
Check "the picture is no face of Excel's", excel.CommandBars(Bar).Controls(1).FaceId, CLng(0)
Check "a tooltip", toolbar.ButtonToolTipText(2, "Kita užuomina"), CByte(0)
Check "the tooltip", excel.CommandBars(Bar).Controls(2).ToolTipText, "Kita užuomina"
macro = "Kitas"
Check "a macro", toolbar.SetAction(1, macro), CByte(0)
Check "the macro in the variable", macro, "Book1!Kitas"
macro = ""
Check "no macro", toolbar.SetAction(1, macro), CByte(0)
Check "another key", toolbar.SetHotKey(2, "^{s}"), CByte(0)
excel.SendKeys "^{S}"
Check "the save key works with Caps Lock, too", control.MacrosRun(excel), _
  "Book1!Veiksmas1,Book1!Veiksmas1,Book1!Veiksmas2"
toolbar.Refresh
CheckError "refreshing", 0
Check "the freeze button", toolbar.iFreeze, CLng(22)
Check "the print button", toolbar.iPrint, CLng(23)
Check "the print preview button", toolbar.iPrintP, CLng(24)
Check "the Excel button", toolbar.iExcel, CLng(26)
toolbar.VisibleButton 99, True
CheckError "a button that is not there", 5

' Somebody deletes the bar while it is in use.
excel.CommandBars(Bar).Delete
macro = "Kitas"
Check "VisibleButton without a bar", toolbar.VisibleButton(1, True), CByte(1)
Check "EnabledButton without a bar", toolbar.EnabledButton(1, True), CByte(1)
Check "ButtonFaceID without a bar", toolbar.ButtonFaceID(1, 3), CByte(1)
Check "ButtonFace without a bar", toolbar.ButtonFace(1, picture), CByte(1)
Check "ButtonToolTipText without a bar", toolbar.ButtonToolTipText(1, "x"), CByte(1)
Check "SetAction without a bar", toolbar.SetAction(1, macro), CByte(1)
Check "the variable stays", macro, "Kitas"
Check "SetHotKey without a bar", toolbar.SetHotKey(1, "^{k}"), CByte(1)
Check "PositinTop without a bar", toolbar.PositinTop, CByte(1)
Check "buttons without a bar", toolbar.TotalButtons, CByte(0)
Set toolbar = Nothing
excel.SendKeys "^{b}"
Check "the keys are Excel's own again", control.MacrosRun(excel), _
  "Book1!Veiksmas1,Book1!Veiksmas1,Book1!Veiksmas2"
CheckError "the end of the toolbar", 0

global.ResetConnectEX 0
Set picture = Nothing
Set sheet = Nothing
Set book = Nothing
Set global = Nothing
Set excel = Nothing
Finish 113
