' CToolbar, as a workbook's macro uses it.
Dim toolbar
Set toolbar = CreateObject("QVA_Varnholt.CToolbar")
CheckError "creation", 0
Check "the class", TypeName(toolbar), "_CToolbar"
Dim events
CheckNothing "the events at first", toolbar.CmdEvent
Set events = CreateObject("QVA_Varnholt.CCommandsEvent")
Set toolbar.CmdEvent = events
CheckError "setting the events", 0
Report toolbar.CmdEvent Is events, "the same events come back"
Set toolbar.CmdEvent = toolbar
CheckError "an object of another class", 13
toolbar.IDCollection = 7
Check "the id", toolbar.IDCollection, CByte(7)
toolbar.IDCollection = 256
CheckError "an id beyond 8 bits", 6
toolbar.SetAction 1
CheckError "too few arguments", 450
toolbar.VisibleButton "one", True
CheckError "a text that is no number", 13
Set events = Nothing
toolbar.NoSuchMember
CheckError "an unknown name", 438
Set toolbar = Nothing
Finish 15
