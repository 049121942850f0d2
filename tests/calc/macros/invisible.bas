Option VBASupport 1

Sub Main()
    Dim g As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Application.Visible = False
    WriteLine "visible: " & Application.Visible
    On Error GoTo Handler
    Err.Raise 1234, "makro", "Klaida nematomame"
    Exit Sub
Handler:
    g.ExcelReportError Err
End Sub
