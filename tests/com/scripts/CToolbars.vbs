' CToolbars, as a workbook's macro uses it.
Dim toolbars
Set toolbars = CreateObject("QVA_Varnholt.CToolbars")
CheckError "creation", 0
Check "the class", TypeName(toolbars), "_CToolbars"
Check "the number of toolbars", toolbars.Count, CLng(0)
CheckNothing "a toolbar that is not there", toolbars.Item(1)
toolbars.Item 300
CheckError "a number beyond 8 bits", 6
toolbars.Item "one"
CheckError "a text that is no number", 13
toolbars.Count = 1
CheckError "writing what can only be read", 438
Check "the caption of the command", toolbars.cmdGoToAppCaption, "Tekstas 841"
toolbars.NoSuchMember
CheckError "an unknown name", 438
Set toolbars = Nothing
Finish 13
