' CDatePic, as a workbook's macro uses it, and the report's date, which comes from it.
Dim picker, day, excel, global, reports, sheet

Set picker = CreateObject("QVA_Varnholt.CDatePic")
CheckError "creation", 0
Check "the class", TypeName(picker), "_CDatePic"
picker.Show
CheckError "too few arguments", 450
picker.Show "no date"
CheckError "a text that is no date", 13
picker.NoSuchMember
CheckError "an unknown name", 438

day = DateSerial(2024, 2, 12)
Check "a confirmed date", picker.Show(day), True
Check "the date by reference", day, DateSerial(2024, 11, 3)
Check "Enter", picker.Show(day), True
Check "the date shown", day, DateSerial(2024, 11, 3)
Check "Escape after another key", picker.Show(day), False
Check "the date left", day, DateSerial(2024, 11, 3)
day = DateSerial(1600, 1, 1)
picker.Show day
CheckError "a date that no calendar shows", 380
Set picker = Nothing

ConnectFirst

Set excel = control.NewExcel
Set global = CreateObject("QVA_Varnholt.gExcelObject")
global.InitConnectEX excel, Empty
Set reports = CreateObject("QVA_Varnholt.CReports")
Set sheet = excel.ActiveSheet
sheet.Range("A1").Value = 2024
sheet.Range("A2").Value = 2
sheet.Range("A3").Value = 29
sheet.Range("A4").Value = 2

' The cells of the date.
Function Cells()
  Cells = sheet.Range("A1").Value & " " & sheet.Range("A2").Value & " " & sheet.Range("A3").Value & " " & _
    sheet.Range("A4").Value
End Function

Function ReadDate(dateType)
  ReadDate = reports.ReadDate(sheet.Range("A1"), sheet.Range("A2"), sheet.Range("A3"), sheet.Range("A4"), dateType)
End Function

Check "a full date", ReadDate(1), True
Check "its cells", Cells(), "2025 1 31 2"
Check "a month", ReadDate(2), True
Check "its cells", Cells(), "2026 12 31 2"
Check "a quarter", ReadDate(3), True
Check "its cells", Cells(), "2024 12 31 4"
Check "a cancelled date", ReadDate(1), False
Check "its cells", Cells(), "2024 12 31 4"
Check "an unknown type", ReadDate(9), True
Check "its cells", Cells(), "2024 12 31 4"
sheet.Range("A1").Value = 40000
ReadDate 1
CheckError "a year that is too great", 6
ReadDate 1
CheckError "and once more", 6

Set sheet = Nothing
Set reports = Nothing
global.ResetConnectEX 0
Set global = Nothing
Set excel = Nothing
CheckError "the end of the report", 0
Finish 30
