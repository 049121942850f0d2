Option VBASupport 1

Sub Main()
    Dim oFrame As Object, g As Object
    oFrame = ThisComponent.CurrentController.Frame
    WriteLine "visible: " & ActiveWindow.Visible & ", its cells " & oFrame.ComponentWindow.isVisible()
    WriteLine "as large as ever: " & (oFrame.ComponentWindow.PosSize.Width > 600 And oFrame.ComponentWindow.PosSize.Height > 400)
    ActiveWindow.Visible = False
    ActiveWindow.Zoom = 80
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    g.InitEnvironment
    g.oEnvironment.SetDefaultAppState
    WriteLine "hidden by the macro: " & ActiveWindow.Visible & ", zoom " & ActiveWindow.Zoom
    g.ResetEnvironment
    WriteLine "as before: zoom " & ActiveWindow.Zoom
    g.ResetConnectEX 0
End Sub
