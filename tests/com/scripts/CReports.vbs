' CReports, as a workbook's macro uses it.
Dim reports, global, excel, sheet, code, name, id, book, calls, saved, files, boxes, row

' The texts of a block, row by row.
Function BlockText(block)
  Dim i, j, lines, cells
  For i = LBound(block, 1) To UBound(block, 1)
    cells = ""
    For j = LBound(block, 2) To UBound(block, 2)
      If j > LBound(block, 2) Then cells = cells & ","
      cells = cells & block(i, j)
    Next
    If i > LBound(block, 1) Then lines = lines & "|"
    lines = lines & cells
  Next
  BlockText = lines
End Function

' The host's data access comes to life with the first report save and stays.
Set reports = CreateObject("QVA_Varnholt.CSaveForm")
reports.Init
Set reports = Nothing
liveAtStart = control.LiveObjects
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

' Printing, by the workbook's name "Print".
excel.ActiveWorkbook.Names.Add "Print", "=Sheet1!$A$1:$C$9"
control.ClearTrace
reports.Spauzd sheet, True
CheckError "Spauzd", 0
Check "the print area", sheet.PageSetup.PrintArea, "$A$1:$C$9"
Report InStr(control.Trace, ".PrintOut()") > 0, "a print of the whole sheet: " & control.Trace
control.Answer 2
control.ClearTrace
reports.Spauzd sheet, True, True, 2
CheckError "Spauzd page by page", 0
Report InStr(control.Trace, ".PrintOut(From:=2, To:=2, Copies:=1)") > 0, "a print of page 2: " & control.Trace
Check "the questions", control.Boxes, "Tekstas 816" & vbLf & "Tekstas 819: 2"
control.ClearTrace
reports.Spauzd sheet, 0, True, 2
Report InStr(control.Trace, ".PrintPreview()") > 0, "a preview: " & control.Trace
reports.Spauzd sheet, True, True, 256
CheckError "more pages than a byte counts", 6
reports.Spauzd excel.Sheets("Sheet2"), True
boxes = Split(control.Boxes, vbLf)
Check "a sheet without a print area", boxes(2), "Tekstas 815"

' Protection, formulas, colours.
reports.Locking sheet.Range("A1:B2")
reports.Locking sheet.Range("C1:C2")
CheckError "Locking", 0
Check "the first zone", sheet.Range("A1:B2").Locked, True
Check "the second zone", sheet.Range("C1:C2").Locked, False
sheet.Range("D1").Value = 21
sheet.Range("D2").Formula = "=D1*2"
sheet.Range("D3").Formula = "="""""
reports.ClearFormulas sheet.Range("D1:D3")
CheckError "ClearFormulas", 0
Check "a formula's value", sheet.Range("D2").Formula, "42"
Check "a formula of the empty text", VarType(sheet.Range("D3").Value), VarType(Empty)
sheet.Range("G1").Value = "'=D1"
Check "a text like a formula", sheet.Range("G1").Formula, "=D1"
reports.ClearFormulas sheet.Range("G1")
CheckError "ClearFormulas of a text like a formula", 0
Check "the text", sheet.Range("G1").Value, "=D1"
' A block of two dimensions, in which each cell differs.
For row = 2 To 4
  sheet.Cells(row, 7).Formula = "=" & row * 10 & "+1"
  sheet.Cells(row, 8).Value = row
  sheet.Cells(row, 9).Formula = "=H" & row & "*100"
Next
reports.ClearFormulas sheet.Range("G1:I4")
CheckError "ClearFormulas of a block", 0
Check "the block", BlockText(sheet.Range("G1:I4").Formula), "=D1,,|21,2,200|31,3,300|41,4,400"
sheet.Range("H2:H4").Value = 0
Check "fixed values", CLng(sheet.Range("I4").Value), CLng(400)
reports.ClearFormulas Nothing
CheckError "ClearFormulas of nothing", 91
reports.ColorRanges sheet.Range("A1"), sheet.Range("B1"), Nothing, True
CheckError "ColorRanges", 0
Check "the grey range", CLng(sheet.Range("A1").Interior.ColorIndex), CLng(15)
Check "the yellow range", CLng(sheet.Range("B1").Interior.ColorIndex), CLng(-4142)

' Saving into the archive, whose year folders are real.
Set files = CreateObject("Scripting.FileSystemObject")
files.CreateFolder "C:\Ataskaitos"
excel.ActiveWorkbook.VBProject.Name = "Žiemos balansas"
excel.ActiveWorkbook.Names.Add "Saved", "=Sheet1!$E$9"
sheet.Range("E1").Value = 2024
sheet.Range("E2").Value = 3
sheet.Range("E3").Value = DateSerial(2024, 5, 15)
saved = False
reports.SaveDoc sheet.Range("E1"), sheet.Range("E2"), saved
CheckError "SaveDoc", 0
Check "saved", saved, True
Check "the file", excel.ActiveWorkbook.FullName, "C:\Ataskaitos\2024\Žiemos balansas_2024_03.xls"
Check "the folder of the year", files.FolderExists("C:\Ataskaitos\2024"), True
Check "the cell", sheet.Range("E9").Value, True
boxes = Split(control.Boxes, vbLf)
Check "the message", boxes(3), "Tekstas 814: C:\Ataskaitos\2024\Žiemos balansas_2024_03.xls"
control.Answer 2
reports.SaveDoc sheet.Range("E1"), sheet.Range("E2"), saved
Check "saved, as the user refused", saved, True
boxes = Split(control.Boxes, vbLf)
Check "the question", boxes(4), "Tekstas 840"
reports.SaveDoc sheet.Range("E3"), Nothing, saved, True
Check "the file of a full date", excel.ActiveWorkbook.Name, "Žiemos balansas_2024_05.xls"
sheet.Range("E1").Value = 1969
reports.SaveDoc sheet.Range("E1"), Nothing, saved
Check "not saved", saved, False
boxes = Split(control.Boxes, vbLf)
Check "the reason", boxes(6), "Tekstas 804"
files.DeleteFolder "C:\Ataskaitos"
Set files = Nothing
CheckError "saving", 0

global.ResetConnectEX 0
Set book = Nothing
Set code = Nothing
Set name = Nothing
Set sheet = Nothing
Set reports = Nothing
Set global = Nothing
Set excel = Nothing
Finish 63
