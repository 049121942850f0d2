' CEnvironment, as a workbook's macro uses it.
Dim environment
Set environment = CreateObject("QVA_Varnholt.CEnvironment")
CheckError "creation", 0
Check "the class", TypeName(environment), "_CEnvironment"
environment.SetDefaultAppState "maybe"
CheckError "a text that is no Boolean", 13
environment.SetDefaultExcelState True
CheckError "too many arguments", 450
environment.NoSuchMember
CheckError "an unknown name", 438
Set environment = Nothing
Finish 9
