Option VBASupport 1

' The report state of a workbook that was opened hidden: LibreOffice by itself crashes on its zoom.
Sub Main()
    Dim book As Object
    Dim aProperties(2) As New com.sun.star.beans.PropertyValue
    aProperties(0).Name = "Hidden"
    aProperties(0).Value = True
    aProperties(1).Name = "MacroExecutionMode"
    aProperties(1).Value = com.sun.star.document.MacroExecMode.ALWAYS_EXECUTE_NO_WARN
    aProperties(2).Name = "FilterName"
    aProperties(2).Value = "OpenDocument Spreadsheet Flat XML"
    book = StarDesktop.loadComponentFromURL(ThisComponent.URL, "_blank", 0, aProperties())
    book.getScriptProvider().getScript("vnd.sun.star.script:VBAProject.Ataskaita.Report?language=Basic&location=document").invoke(Array(), Array(), Array())
    WriteLine "alive"
End Sub

Sub Report()
    Dim g As Object
    WriteLine "visible: " & ActiveWindow.Visible
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    g.InitEnvironment
    g.oEnvironment.SetDefaultAppState
    WriteLine "report: zoom " & ActiveWindow.Zoom & ", gridlines " & ActiveWindow.DisplayGridlines
    g.oEnvironment.SetDefaultExcelState
    WriteLine "ordinary: zoom " & ActiveWindow.Zoom & ", gridlines " & ActiveWindow.DisplayGridlines
    ActiveWindow.DisplayGridlines = False
    g.ResetEnvironment
    WriteLine "user's: zoom " & ActiveWindow.Zoom & ", gridlines " & ActiveWindow.DisplayGridlines
    g.ResetConnectEX 0
End Sub
