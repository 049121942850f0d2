Option VBASupport 1

Sub Main()
    Dim g As Object, r As Object, b As Object
    Dim vId, vEmpty, vCell, sText As String
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    vId = "7"
    Set vCell = Range("B1")
    r.FillAttr vEmpty, rPavad:=vCell, ID:=vId
    WriteLine "ID: " & TypeName(vId) & " " & vId
    WriteLine "empty: " & TypeName(vEmpty)
    WriteLine "cell: " & TypeName(vCell) & " " & vCell.Value
End Sub
