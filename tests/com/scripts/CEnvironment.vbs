' CEnvironment, as a workbook's macro uses it: Excel goes into the report state, and the user's own comes back.
Dim global, excel, environment, users, outer, bar, key, i

' All settings of Excel, a line each.
Function Settings()
  Dim window, page, text, element
  Set window = excel.ActiveWindow
  Set page = excel.ActiveSheet.PageSetup
  text = "alerts " & excel.DisplayAlerts & vbLf & "drag " & excel.CellDragAndDrop & vbLf & _
    "edit " & excel.EditDirectlyInCell & vbLf & "keys " & excel.TransitionNavigKeys & vbLf & _
    "move " & excel.MoveAfterReturn & vbLf & "links " & excel.AskToUpdateLinks & vbLf & _
    "objects " & excel.CopyObjectsWithCells & vbLf & "animations " & excel.EnableAnimations & vbLf & _
    "status bar " & excel.DisplayStatusBar & vbLf & "formula bar " & excel.DisplayFormulaBar & vbLf & _
    "comments " & excel.DisplayCommentIndicator & vbLf & _
    "horizontal " & window.DisplayHorizontalScrollBar & vbLf & "vertical " & window.DisplayVerticalScrollBar & _
    vbLf & "tabs " & window.DisplayWorkbookTabs & vbLf & "formulas " & window.DisplayFormulas & vbLf & _
    "gridlines " & window.DisplayGridlines & vbLf & "headings " & window.DisplayHeadings & vbLf & _
    "outline " & window.DisplayOutline & vbLf & "zeros " & window.DisplayZeros & vbLf & "zoom " & window.Zoom & _
    vbLf & "printed gridlines " & page.PrintGridlines & vbLf & "page breaks " & excel.ActiveSheet.DisplayPageBreaks
  For element = 1 To excel.CommandBars.Count
    text = text & vbLf & excel.CommandBars(element).Name & " " & excel.CommandBars(element).Enabled & " " & _
      excel.CommandBars(element).Visible
  Next
  Settings = text & vbLf & "."
End Function

' How often the trace tells of a call.
Function Times(call_text)
  Times = CInt(UBound(Split(control.Trace, call_text)))
End Function

Set environment = CreateObject("QVA_Varnholt.CEnvironment")
CheckError "creation", 0
Check "the class", TypeName(environment), "_CEnvironment"
environment.SetDefaultAppState "maybe"
CheckError "a text that is no Boolean", 13
environment.SetDefaultExcelState True
CheckError "too many arguments", 450
environment.NoSuchMember
CheckError "an unknown name", 438
environment.SetDefaultAppState
CheckError "the report state without Excel", 0
environment.SetDefaultExcelState
CheckError "the ordinary state without Excel", 0
Set environment = Nothing

ConnectFirst

' An Excel that its user has set up: the report must not be able to tell it from any other.
Set excel = control.NewExcel
excel.DisplayCommentIndicator = 1
excel.MoveAfterReturn = False
excel.ActiveWindow.Zoom = 75
excel.ActiveWindow.DisplayZeros = False
excel.ActiveWindow.DisplayVerticalScrollBar = False
excel.ActiveSheet.PageSetup.PrintGridlines = True
excel.ActiveSheet.DisplayPageBreaks = True
excel.CommandBars("Formatting").Visible = False
excel.ActiveWorkbook.Names.Add "rMetai", "=Sheet1!$A$1"
Set bar = excel.CommandBars.Add("Ataskaita")
bar.Controls.Add 1, 1, "Ataskaita"
bar.Visible = True
users = Settings()
CheckError "setting Excel up", 0
Check "lines of settings", CInt(UBound(Split(users, vbLf))), CInt(22 + 4)

Set global = CreateObject("QVA_Varnholt.gExcelObject")
global.InitConnectEX excel, excel.ActiveWorkbook
global.InitEnvironment
CheckError "the snapshot", 0
Check "a snapshot changes nothing", Settings(), users

Set environment = global.oEnvironment
environment.SetDefaultAppState
CheckError "the report state", 0
Check "the formula bar of a report", excel.DisplayFormulaBar, False
Check "the comment indicators of a report", excel.DisplayCommentIndicator, CLng(0)
Check "dragging in a report", excel.CellDragAndDrop, False
Check "the gridlines of a report", excel.ActiveWindow.DisplayGridlines, False
Check "the headings of a report", excel.ActiveWindow.DisplayHeadings, False
Check "the zoom of a report", excel.ActiveWindow.Zoom, CLng(100)
Check "the vertical scroll bar stays as it is", excel.ActiveWindow.DisplayVerticalScrollBar, False
Check "the printed gridlines of a report", excel.ActiveSheet.PageSetup.PrintGridlines, False
Check "the names of a report", excel.ActiveWorkbook.Names("rMetai").Visible, False
Check "Excel's toolbars in a report", excel.CommandBars("Standard").Enabled, False
Check "Excel's menu in a report", excel.CommandBars("Worksheet Menu Bar").Enabled, False
Check "the report's toolbar", bar.Visible, True
For Each key In Array("F1", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F11", "F12")
  Check key & " is turned off", Times("Application.OnKey(""{" & key & "}"", """")"), CInt(1)
Next
Check "F2 is left alone", Times("{F2}"), CInt(0)
outer = Settings()

' A report within the report.
global.InitEnvironment
environment.SetDefaultExcelState
CheckError "the ordinary state", 0
Check "the formula bar of an ordinary Excel", excel.DisplayFormulaBar, True
Check "the toolbars of an ordinary Excel", excel.CommandBars("Formatting").Visible, True
Check "the names of an ordinary Excel", excel.ActiveWorkbook.Names("rMetai").Visible, True
Check "F1 is given back", Times("Application.OnKey(""{F1}"")"), CInt(1)
excel.ActiveWindow.Zoom = 50
excel.Caption = "Mano Excel"
global.ResetEnvironment
CheckError "the end of the inner report", 0
Check "the outer report's state", Settings(), outer
Check "the caption", excel.Caption, "Microsoft Excel"

excel.Calculation = -4135
global.ResetEnvironment
CheckError "the end of the report", 0
Check "the user's Excel", Settings(), users
Check "the calculation stays as the report left it", excel.Calculation, CLng(-4135)
CheckNothing "the environment after the last reset", global.oEnvironment

' Whatever Excel refuses is skipped.
global.InitEnvironment
For i = 1 To 30
  control.FailCall i
  global.oEnvironment.SetDefaultAppState
  CheckError "call " & i & " refused in the report state", 0
Next
control.FailCall 1
global.ResetEnvironment
CheckError "a call refused while the user's settings come back", 0
Check "the user's Excel after refusals", Settings(), users

global.ResetConnectEX 0
Set environment = Nothing
Set bar = Nothing
Set global = Nothing
Set excel = Nothing
Finish 85
