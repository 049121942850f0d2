' CReports, as a workbook's macro uses it.
Dim reports, global, excel, sheet, code, name, id, book, calls
Set global = CreateObject("QVA_Varnholt.gExcelObject")
Set excel = control.NewExcel
Set book = CreateObject("NVXCommonObjects.CommonObjects").CreateBook("MEDVILNE")
global.InitConnectEX excel, excel.ActiveWorkbook, book
CheckError "connecting", 0
Set reports = CreateObject("QVA_Varnholt.CReports")
CheckError "creation", 0

control.ClearTrace
reports.Init "Balanso ataskaita"
CheckError "Init", 0
Check "the caption of the window", excel.ActiveWindow.Caption, "Balanso ataskaita"
calls = Split(control.Trace, vbLf)
Check "the calls of Init", calls(2), "Application.ActiveWindow.Caption = ""Balanso ataskaita"""

Set sheet = excel.ActiveSheet
Set code = sheet.Range("B1")
Set name = sheet.Range("B2")
reports.FillAttr code, , name
CheckError "FillAttr with a cell left out", 0
Check "the code", code.Value, CDbl(302511789)
Check "the name", name.Value, "UAB „Medvilnė“"
id = 17
reports.FillAttr , sheet.Range("B3"), , sheet.Range("B4"), sheet.Range("B5"), sheet.Range("B6"), sheet.Range("B7"), _
  sheet.Range("B8"), , , , , , id
CheckError "FillAttr with the other cells", 0
Check "the VAT code", sheet.Range("B3").Value, "LT100005117810"
Check "the address", sheet.Range("B4").Value, "Šaltinių g. 12, LT-03215 Vilnius"
Check "the telephone", sheet.Range("B5").Value, "(8 5) 212 3456"
Check "the fax", sheet.Range("B6").Value, "(8 5) 212 3457"
Check "the head", sheet.Range("B7").Value, "Žygimantas Ąžuolaitis"
Check "the accountant", sheet.Range("B8").Value, "Eglė Čepėnienė"
Check "the variable by reference", CLng(id), CLng(17)
reports.FillAttr "B1"
CheckError "a text for a cell", 13
control.FailCall 3
reports.FillAttr code
CheckErrorText "an error of Excel or the host", 1004, "Microsoft Excel", "Refused"

reports.FillBnksAcc code, code, code, code, code
CheckError "FillBnksAcc", 0
reports.FillBnksAcc code
CheckError "too few arguments", 450
reports.ReadDate code, code, code, code, "full"
CheckError "a text that is no number", 13
reports.NoSuchMember
CheckError "an unknown name", 438

global.ResetConnectEX 0
Set book = Nothing
Set code = Nothing
Set name = Nothing
Set sheet = Nothing
Set reports = Nothing
Set global = Nothing
Set excel = Nothing
Finish 26
