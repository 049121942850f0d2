' CRepPeriod, as a workbook's macro uses it: the period of a report is asked for and kept, unattended.
Dim period, global, excel, sheet, answers, before, i

' What the named cells and the first two rows of the budget table hold.
Function Cells()
  Dim name, row, column, text
  For Each name In Array("AccPlan", "RepYear", "RepQuarter", "RepMon", "RepType", "RepLastPerBeg", "RepLastPerEnd", _
      "RepCurrPerBeg", "RepCurrPerEnd", "CurrBudgetDocId", "CurrBudgetDocCode", "BudgetCount")
    text = text & CStr(excel.Range(name).Value) & "|"
  Next
  For row = 1 To 2
    For column = 0 To 6
      text = text & " " & CStr(excel.Range("BookCode").Offset(row, column).Value)
    Next
    text = text & ";"
  Next
  Cells = text
End Function

Set period = CreateObject("QVA_Varnholt.CRepPeriod")
CheckError "creation", 0
Check "the class", TypeName(period), "_CRepPeriod"
period.Init
CheckError "too few arguments", 450
period.Init 5
CheckError "a number for an object", 13
period.Edit 1
CheckError "too many arguments", 450
period.NoSuchMember
CheckError "an unknown name", 438
period.Init Nothing
CheckErrorText "no sheet", -2147221503, "Wrong parameter", ""
Check "before Init", period.Edit, False

Set period = Nothing
ConnectFirst

Set excel = control.NewExcel
Set global = CreateObject("QVA_Varnholt.gExcelObject")
global.InitConnectEX excel, Empty
Set sheet = excel.ActiveSheet
excel.ActiveWorkbook.Names.Add "repyear", "=Sheet1!$A$3"
sheet.Range("A3").Value = 2024
Set period = CreateObject("QVA_Varnholt.CRepPeriod")
period.Init sheet
CheckError "Init", 0
Check "names", CLng(excel.ActiveWorkbook.Names.Count), CLng(16)
Check "the name in other letter case", excel.Range("RepYear").Address, "$A$3"
Check "a name created", excel.Range("BookCode").Address, "$P$3"
Check "its colour", CLng(excel.Range("BookCode").Font.ColorIndex), CLng(5)
excel.Range("AccPlan").Value = "F1"
excel.Range("CurrBudgetDocId").Value = 12
excel.Range("CurrBudgetDocCode").Value = "BIU-2024"

Check "a confirmed period", period.Edit, True
before = Cells()
Check "the cells", before, "B1|2024|3|0|2|2024-04-01|2024-06-30|2024-07-01|2024-09-30|0||2|" & _
  " MEDVILNE F1 0 12 BIU-2024  ; BALTIJA F2 0 0  0 ;"
Check "a cancelled period", period.Edit, False
Check "the cells after it", Cells(), before
Check "a refused period", period.Edit, False
Check "the cells after that", Cells(), before
Check "a period with a budget less", period.Edit, True
Check "the cells with one budget", Cells(), "B1|2024|3|0|2|2024-04-01|2024-06-30|2024-07-01|2024-09-30|0||1|" & _
  " BALTIJA F2 0 0  0 ;       ;"
before = Cells()
excel.Range("BookCode").Offset(500, 1).Value = "cleared"
excel.Range("BookCode").Offset(500, 7).Value = "kept"
Check "the same period again", period.Edit, True
Check "the cells after that period", Cells(), before
Check "the sheet below a table of one row", CStr(excel.Range("BookCode").Offset(500, 1).Value), ""
Check "the sheet beside it", excel.Range("BookCode").Offset(500, 7).Value, "kept"
Check "a plan that is none of the list", period.Edit, False
Check "the cells without it", Cells(), before
Check "a period without answers", period.Edit, False
Check "the cells in the end", Cells(), before
control.FailCall 20
Check "a failure of Excel", period.Edit, False
CheckError "a failure of Excel", 0
control.FailCall 0

Set period = Nothing
Set sheet = Nothing
global.ResetConnectEX 0
Set global = Nothing
Set excel = Nothing
CheckError "the end of the report", 0
Finish 37
