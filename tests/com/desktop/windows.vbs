' The library's windows, as a workbook's macro opens them, worked by a user at keyboard and mouse: each scene is
' written to the file of states, where the user of tests/com/desktop/run.sh awaits it. The bench creates the
' library's objects, so that nothing but them keeps the library in use.
Dim period, picker, global, excel, sheet, reports, before, day, objects, system, saved, files, name, i

Sub Scene(name)
  control.Watch "@STATE@", name
End Sub

' What the named cells and the first two rows of the budget table hold.
Function Cells()
  Dim name, row, column, text
  For Each name In Array("AccPlan", "RepYear", "RepQuarter", "RepMon", "RepType", "RepLastPerBeg", "RepLastPerEnd", _
      "RepCurrPerBeg", "RepCurrPerEnd", "BudgetCount")
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

If Not control.HasWindows Then
  WScript.Echo "no windows"
  WScript.Quit 3
End If

' The host's data access comes to life with the first report save and stays.
Set reports = control.NewObject("QVA_Varnholt.CSaveForm")
reports.Init
Set reports = Nothing
ConnectFirst
control.ShowWindows
control.SetText 828, "Ataskaitos už nurodytą laikotarpį"
control.SetText 811, "Neteisingai nurodytas laikotarpis"
control.SetText 814, "Ataskaita įrašyta"
control.SetText 840, "Ataskaita jau yra. Ar pakeisti?"
control.SetText 816, "Kaip spausdinti ataskaitą?"
control.SetText 817, "Visus puslapius iš karto"
control.SetText 818, "Po vieną puslapį"
Set excel = control.NewExcel
Set global = control.NewObject("QVA_Varnholt.gExcelObject")
global.InitConnectEX excel, Empty
Set sheet = excel.ActiveSheet
Set period = control.NewObject("QVA_Varnholt.CRepPeriod")
period.Init sheet
excel.Range("AccPlan").Value = "F1"
excel.Range("RepYear").Value = 2023
excel.Range("CurrBudgetDocId").Value = 11
excel.Range("CurrBudgetDocCode").Value = "BIU-2023"

Scene "confirm"
Check "a confirmed period", period.Edit, True
before = Cells()
Check "the cells", before, "F1|2024|2|0|2|2024-01-01|2024-03-31|2024-04-01|2024-06-30|2|" & _
  " MEDVILNE F1 0 11 BIU-2023  ; BALTIJA F2 0 14 BIU-B 0 BIU-A;"
Scene "cancel"
Check "a cancelled period", period.Edit, False
Check "the cells after it", Cells(), before
Scene "escape"
Check "a period left by Escape", period.Edit, False
Check "the cells after that", Cells(), before
Scene "refuse"
Check "a period that was refused at first", period.Edit, True
Check "the cells of the accepted one", Cells(), before

Scene "nested"
control.EditMeanwhile period
Check "a period that was asked for once more meanwhile", period.Edit, True
Check "the error of the second request", control.ErrorMeanwhile, CLng(400)
Check "the cells after both", Cells(), before

Set picker = control.NewObject("QVA_Varnholt.CDatePic")
day = DateSerial(2024, 2, 12)
Scene "double click"
Check "a date that was clicked", picker.Show(day), True
Check "the date", day, DateSerial(2024, 2, 14)
Scene "arrows"
Check "a date by keys", picker.Show(day), True
Check "a week and a day later", day, DateSerial(2024, 2, 22)
Scene "leave"
Check "a date left by Escape", picker.Show(day), False
Check "the date stays", day, DateSerial(2024, 2, 22)

Set reports = control.NewObject("QVA_Varnholt.CReports")
excel.ActiveWorkbook.Names.Add "Print", "=Sheet1!$A$1:$C$9"
control.ClearTrace
Scene "print"
reports.Spauzd sheet, True, True, 2
CheckError "printing", 0
Report InStr(control.Trace, ".PrintOut(From:=2, To:=2, Copies:=1)") > 0, "a print of page 2: " & control.Trace

' Saved under a period; then again, which the user refuses at first.
Set files = CreateObject("Scripting.FileSystemObject")
files.CreateFolder "C:\Ataskaitos"
reports.Init "Balansas"
excel.ActiveWorkbook.VBProject.Name = "Balansas"
excel.ActiveWorkbook.Names.Add "Saved", "=Sheet1!$E$9"
sheet.Range("E1").Value = 2024
sheet.Range("E2").Value = 3
For Each name In Array("save", "keep", "replace")
  saved = False
  control.ClearTrace
  Scene name
  reports.SaveDoc sheet.Range("E1"), sheet.Range("E2"), saved
  CheckError "saving, scene " & name, 0
  Check "saved, scene " & name, saved, True
  Check "written, scene " & name, InStr(control.Trace, ".SaveAs(") > 0, name <> "keep"
Next
files.DeleteFolder "C:\Ataskaitos"
Set files = Nothing
CheckError "the archive", 0
Scene "end"

' Each window comes and goes once before the count, since the system keeps something of the first one.
Sub OpenAndClose()
  Report period.Edit = False, "a period closed by the clock"
  Report picker.Show(day) = False, "a picker closed by the clock"
End Sub
control.Watch "", ""
control.CloseWindows True
OpenAndClose
objects = control.LiveObjects
system = control.SystemObjects
For i = 1 To 200
  OpenAndClose
Next
control.CloseWindows False
Check "the bench's objects after 200 windows of each", control.LiveObjects, objects
' Wine itself loses a font with each calendar that is given one, at most 200 here; anything of ours would come on top.
Report control.SystemObjects <= system + 250, "the system's objects: " & control.SystemObjects & " after " & system

Set reports = Nothing
Set picker = Nothing
Set period = Nothing
Set sheet = Nothing
global.ResetConnectEX 0
Set global = Nothing
Set excel = Nothing
CheckError "the end of the report", 0
Check "objects of the bench after the library's last one", control.LiveObjects, liveAtStart
Check "the library is unused", control.LibraryIsUnused, True
liveAtStart = control.LiveObjects
Finish 441
