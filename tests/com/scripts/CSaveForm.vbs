' CSaveForm, as a workbook's macro uses it.
Dim form, global, excel, wb, files, day
' The host's data access comes to life with the first Init and stays.
Set form = CreateObject("QVA_Varnholt.CSaveForm")
form.Init
Set form = Nothing
liveAtStart = control.LiveObjects
Set form = CreateObject("QVA_Varnholt.CSaveForm")
CheckError "creation", 0
Check "the class", TypeName(form), "_CSaveForm"
Check "the status at first", form.ErrorStatus, CByte(0)
form.GeneralPath = "C:\Ataskaitos\" : Check "the archive", form.GeneralPath, "C:\Ataskaitos\"
form.FileFullPath = "C:\Žiemą.xls" : Check "the file", form.fileFULLpath, "C:\Žiemą.xls"
form.ErrorDescr = "Klaida" : Check "the description", form.ErrorDescr, "Klaida"
form.ErrorStatus = 5
CheckError "setting the status", 0
Check "the status", form.ErrorStatus, CByte(5)
Check "the description of the status", form.ErrorDescr, "Tekstas 805"
form.ErrorStatus = 0
Check "the description stays", form.ErrorDescr, "Tekstas 805"
form.ErrorStatus = 256
CheckError "a status beyond 8 bits", 6
form.SaveReport Nothing, "Balansas", 2024
CheckError "too few arguments", 450
form.SaveReport Nothing, "Balansas", "du tūkstančiai", 1
CheckError "a text that is no number", 13
form.Save "book", "a", "b", "c", Now
CheckError "a text for an object", 13
form.NoSuchMember
CheckError "an unknown name", 438
form.FileName Nothing, "a", "b", "c", Now
CheckError "a use before Init", 91

Set global = CreateObject("QVA_Varnholt.gExcelObject")
Set excel = control.NewExcel
Set wb = excel.ActiveWorkbook
global.InitConnectEX excel, wb, CreateObject("NVXCommonObjects.CommonObjects").CreateBook("MEDVILNE")
form.Init
CheckError "Init", 0
Check "the archive", form.GeneralPath, "C:\Ataskaitos"
day = DateSerial(2010, 11, 12)
Check "a file name", form.FileName(wb, "Forma 1.2", "PVM", "12", day), "Forma 1_2_PVM_12_20101112.xls"
Check "no name", form.FileName(wb, "", "", "12", day), ""
Check "the last failing check", form.ErrorStatus, CByte(2)
Check "a report before its folder", form.ReportExist(wb, "Balansas", 2010, 3), False
Check "the status", form.ErrorStatus, CByte(8)
Check "the folder in the description", form.ErrorDescr, "Tekstas 808" & vbCrLf & "C:\Ataskaitos\2010\"
Set files = CreateObject("Scripting.FileSystemObject")
files.CreateFolder "C:\Ataskaitos"
Check "a code that stays", form.ReportExistEx("Balansas", 2010, 3), False
Check "the code", form.ErrorStatus, CByte(8)
form.SaveReport wb, "Balansas", 2010, 3
Check "the status of a save", form.ErrorStatus, CByte(0)
Check "the file of a report", form.FileFullPath, "C:\Ataskaitos\2010\Balansas_2010_03.xls"
Check "the workbook", wb.FullName, "C:\Ataskaitos\2010\Balansas_2010_03.xls"
Check "the folder of the year", files.FolderExists("C:\Ataskaitos\2010"), True
Check "a report that is there", form.ReportExistEx("Balansas", 2010, 3), True
Check "a report of the whole year", form.ReportExistEx("Balansas", 2010, 0), False
form.GeneralPath = "C:\Ataskaitos\Žiemos "
form.Save wb, "F", "PVM", "1", day
CheckError "Save", 0
Check "the file of a form", form.FileFullPath, "C:\Ataskaitos\Žiemos PVM\F_PVM_1_20101112.xls"
Check "its folder", files.FolderExists("C:\Ataskaitos\Žiemos PVM"), True
Check "a form that is there", form.FileExist(wb, "F", "PVM", "1", day), True
control.FailCall 6
form.SaveReport wb, "Balansas", 2010, 4
CheckError "a save that Excel refuses", 0
Check "its code", form.ErrorStatus, CByte(8)
Check "the alerts stay off", excel.DisplayAlerts, False
form.ReportExist wb, "Balansas", 2010, 13
Check "a period beyond the year", form.ErrorStatus, CByte(4)
form.Save Nothing, "F", "PVM", "1", day
Check "no workbook", form.ErrorStatus, CByte(5)
files.DeleteFolder "C:\Ataskaitos"
Set files = Nothing
CheckError "the archive", 0
global.ResetConnectEX 0
Set wb = Nothing
Set global = Nothing
Set excel = Nothing
Set form = Nothing
Finish 46
