' CTools, as a workbook's macro uses it.
Dim tools
Set tools = CreateObject("QVA_Varnholt.CTools")
CheckError "creation", 0
Check "the class", TypeName(tools), "_CTools"
Dim path
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
Set tools = Nothing
Finish 12
