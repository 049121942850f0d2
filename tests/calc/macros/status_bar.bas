Option VBASupport 1

Sub Main()
    Dim oExcel As Object, oTools As Object
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    Set oTools = CreateObject("QVA_Varnholt.CTools")
    oTools.Init Application
    Application.DisplayStatusBar = False
    oTools.LockScreen True
    oTools.LockScreen False ' hands the status bar back
    WriteLine "shown: " & Application.DisplayStatusBar
    oExcel.ResetConnectEX 0
End Sub
