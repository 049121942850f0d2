' CRepPeriod, as a workbook's macro uses it.
Dim period
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
Set period = Nothing
Finish 10
