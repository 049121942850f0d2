Option VBASupport 1

Sub Main()
    Dim oWindow As Object, g As Object
    oWindow = ThisComponent.CurrentController.Frame.ContainerWindow
    WriteLine "visible: " & oWindow.isVisible() & ", " & ActiveWindow.Visible
    WriteLine "as large as ever: " & (oWindow.PosSize.Width > 600 And oWindow.PosSize.Height > 400)
    ActiveWindow.Zoom = 80
    ActiveWindow.WindowState = xlMaximized
    WriteLine "zoom " & ActiveWindow.Zoom
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    g.InitEnvironment
    g.oEnvironment.SetDefaultAppState
    WriteLine "report: zoom " & ActiveWindow.Zoom & ", gridlines " & ActiveWindow.DisplayGridlines
    g.ResetEnvironment
    g.ResetConnectEX 0
    ActiveSheet.Range("B300").Select
    WriteLine ActiveSheet.Name & ": " & ActiveCell.Address
End Sub
