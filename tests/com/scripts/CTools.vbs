' CTools, as a workbook's macro uses it.
Class OtherExcel
End Class
Dim tools, excel, name, book, sheet, path, files, folder, other
Set tools = CreateObject("QVA_Varnholt.CTools")
CheckError "creation", 0
Check "the class", TypeName(tools), "_CTools"
tools.LockScreen True
CheckError "no application", 91
Set excel = control.NewExcel
tools.Init excel
CheckError "Init", 0

Set files = CreateObject("Scripting.FileSystemObject")
files.CreateFolder "C:\Arch"
excel.ActiveWorkbook.SaveAs "C:\Arch\REPORT_Š.XLS"
name = "Report_š"
Check "an open book", tools.BookIsOpen(name), True
Check "the name by reference", name, "Report_š.xls"
Check "a book that is not open", tools.BookIsOpen("Balansas"), False
name = "Balansas.xlsx"
tools.CheckFileName name
Check "a name that gains the extension", name, "Balansas.xlsx.xls"
Set book = tools.OpenBook("D:\", "report_š")
Check "an open book of another path", book.FullName, "C:\Arch\REPORT_Š.XLS"
book.Close
Set book = Nothing
Set book = tools.OpenBook("C:\Arch\", "report_š")
Check "a book that is opened", book.FullName, "C:\Arch\REPORT_Š.XLS"
CheckNothing "a book that cannot be opened", tools.OpenBook("C:\Arch", "report_š2")
CheckError "opening books", 0

excel.StatusBar = "Skaičiuojama"
tools.LockScreen True
Check "updating while locked", excel.ScreenUpdating, False
Check "the cursor while locked", CLng(excel.Cursor), CLng(2)
tools.LockScreen False
Check "updating while unlocked", excel.ScreenUpdating, True
Check "the cursor while unlocked", CLng(excel.Cursor), CLng(-4143)
Check "the status bar while unlocked", excel.StatusBar, False
tools.LockScreen True
Check "a second lock", excel.ScreenUpdating, True

Set sheet = excel.ActiveSheet
tools.SheetLock True, "slaptas", "Sheet1"
Check "a protected sheet", sheet.ProtectContents, True
sheet.Range("A1").Value = 5
Check "a macro's change of it", sheet.Range("A1").Value, CDbl(5)
tools.SheetLock False, "kitas", "Sheet1"
Check "a wrong password", sheet.ProtectContents, True
tools.SheetLock False, "slaptas", "Sheet1"
Check "the right password", sheet.ProtectContents, False
tools.SheetLock True, "slaptas", "Nera"
CheckError "protecting", 0

Check "a text for a file name", tools.ConvertStr2Str("a/b.c:d", "_"), "a_b_c_d"
Check "without a replacement", tools.ConvertStr2Str("ą[č]?"), "ą_č__"
Check "an empty replacement", tools.ConvertStr2Str("a/b", ""), "ab"
Check "a file", tools.FileExist("C:\Arch", "Report_*.x?s"), True
Check "no file", tools.FileExist("C:\Arch", "Balansas.xls"), False

folder = files.GetSpecialFolder(2) & "\Archyvas ąč"
files.CreateFolder folder
files.CreateTextFile(folder & "\Ataskaita_Š.xls").Close
tools.Init New OtherExcel
Check "a file without Excel's search", tools.FileExist(folder, "ATASKAITA_š.xls"), True
Check "a pattern without it", tools.FileExist(folder & "\", "Ataskaita_?.x*"), True
Check "no file without it", tools.FileExist(folder, "Balansas*"), False
files.DeleteFolder folder, True
files.DeleteFolder "C:\Arch", True
CheckError "searching without Excel", 0
tools.Init excel
Set files = Nothing

control.FailCall 1
tools.BookIsOpen "Balansas"
CheckErrorText "an error of Excel", 1004, "Microsoft Excel", "Refused"
control.FailCall 0

tools.LockScreen
CheckError "too few arguments", 450
tools.LockScreen True, True
CheckError "too many arguments", 450
tools.LockScreen "maybe"
CheckError "a text that is no Boolean", 13
tools.Init "Excel"
CheckError "a text for an object", 13
path = Null
tools.FileExist path, "Report.xls"
CheckError "Null for a text", 94
tools.NoSuchMember
CheckError "an unknown name", 438
Set other = CreateObject("QVA_Varnholt.CTools")
other.Init New OtherExcel
other.LockScreen True
CheckErrorText "a name that Excel does not know", 445, "QVA_Varnholt", _
  "Object doesn't support this action"
Set other = Nothing
Set sheet = Nothing
Set book = Nothing
Set tools = Nothing
Set excel = Nothing
Finish 44
