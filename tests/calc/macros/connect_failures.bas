Option VBASupport 1

Sub Main()
    Dim g As Object
    Dim n
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    On Error Resume Next
    n = g.InitConnectEX(Application, ThisWorkbook, Nothing)
    WriteErr "InitConnectEX"
    WriteLine "book is Nothing: " & (g.oBook Is Nothing)
End Sub
