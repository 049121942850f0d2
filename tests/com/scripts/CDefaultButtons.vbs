' CDefaultButtons, as a workbook's macro uses it.
Dim buttons
Set buttons = CreateObject("QVA_Varnholt.CDefaultButtons")
CheckError "creation", 0
Check "the class", TypeName(buttons), "_CDefaultButtons"
buttons.Init 1, 2
CheckError "too few arguments", 450
buttons.Init Nothing, Nothing, CreateObject("QVA_Varnholt.CTools")
CheckError "an object of another class", 13
buttons.cmdIndexHelp = 1
CheckError "writing what can only be read", 438
buttons.NoSuchMember
CheckError "an unknown name", 438
Set buttons = Nothing
Finish 10
