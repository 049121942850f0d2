' CSaveForm, as a workbook's macro uses it.
Dim form
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
Set form = Nothing
Finish 19
