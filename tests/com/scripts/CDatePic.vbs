' CDatePic, as a workbook's macro uses it.
Dim picker
Set picker = CreateObject("QVA_Varnholt.CDatePic")
CheckError "creation", 0
Check "the class", TypeName(picker), "_CDatePic"
Dim day
picker.Show
CheckError "too few arguments", 450
day = "never"
picker.Show day
CheckError "a text that is no date", 13
Check "the variable", day, "never"
picker.NoSuchMember
CheckError "an unknown name", 438
Set picker = Nothing
Finish 10
