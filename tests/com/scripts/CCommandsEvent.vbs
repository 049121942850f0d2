' CCommandsEvent, as a workbook's macro uses it.
Dim events
Set events = CreateObject("QVA_Varnholt.CCommandsEvent")
CheckError "creation", 0
Check "the class", TypeName(events), "_CCommandsEvent"
Dim row
row = 70000
events.cmdFreeze Nothing, row
CheckError "a number beyond 16 bits", 6
events.cmdFreeze "A1"
CheckError "a text for an object", 13
events.cmdFreeze
CheckError "too few arguments", 450
events.cmdHelp "FReport.chm", 1, 2
CheckError "too many arguments", 450
events.NoSuchMember
CheckError "an unknown name", 438
Set events = Nothing
Finish 11
