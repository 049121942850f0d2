Option VBASupport 1

Sub Main()
    Dim g As Object, r As Object, o As Object
    Dim n
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    Set r = CreateObject("QVA_Varnholt.CReports")
    On Error Resume Next
    g.NoSuchMethod 1
    WriteErr "unknown method"
    n = g.NoSuchProperty
    WriteErr "unknown property"
    g.NoSuchProperty = 1
    WriteErr "unknown property put"
    g.InitConnectEX Application
    WriteErr "too few arguments"
    g.ResetConnectEX 1, 2
    WriteErr "too many arguments"
    g.InitConnectEX "Excel", Nothing
    WriteErr "no object"
    r.Init Array(1, 2)
    WriteErr "no text"
    r.FillAttr rNoSuch:=Nothing
    WriteErr "unknown named argument"
    Set g.oBook = r
    WriteErr "read-only property"
    g.cmdHelp
    WriteErr "object not set"
    r.FillAttr
    WriteErr "host's own error"
    Set o = CreateObject("QVA_Varnholt.NoSuchClass")
    WriteErr "unknown class"
    Set o = CreateObject("Foreign.Thing")
    WriteErr "foreign class"
    Goes r
End Sub

Private Sub Goes(r)
    On Error GoTo Handler
    r.FillAttr 5
    WriteLine "not reached"
    Exit Sub
Handler:
    WriteErr "handler"
End Sub
