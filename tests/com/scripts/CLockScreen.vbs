' CLockScreen, as a workbook's macro uses it: the screen is frozen for as long as the object lives.
Dim screen, global, excel
Set screen = Nothing
Set screen = CreateObject("QVA_Varnholt.CLockScreen")
Report Err.Number <> 0 And screen Is Nothing, "creation without an application"
Err.Clear
Set global = CreateObject("QVA_Varnholt.gExcelObject")
Set excel = control.NewExcel
global.InitConnectEX excel, Empty, excel
CheckError "connecting", 0
excel.StatusBar = "Skaičiuojama"
Set screen = CreateObject("QVA_Varnholt.CLockScreen")
CheckError "creation", 0
Check "updating while locked", excel.ScreenUpdating, False
Check "the cursor while locked", CLng(excel.Cursor), CLng(2)
screen.NoSuchMember
CheckError "an unknown name", 438
Set screen = Nothing
Check "updating afterwards", excel.ScreenUpdating, True
Check "the cursor afterwards", CLng(excel.Cursor), CLng(-4143)
Check "the status bar afterwards", excel.StatusBar, False
global.ResetConnectEX 0
Set global = Nothing
Set excel = Nothing
Finish 13
