' CSetPath, as a workbook's macro uses it.
Dim path
Set path = CreateObject("QVA_Varnholt.CSetPath")
CheckError "creation", 0
Check "the class", TypeName(path), "_CSetPath"
path.RegPath
CheckError "too few arguments", 450
path.RegPath Null
CheckError "Null for a text", 94
path.NoSuchMember
CheckError "an unknown name", 438
Set path = Nothing
Finish 9
