Option VBASupport 1

' A report's window, which shows another workbook afterwards, as LibreOffice's start window takes the last one's place.
Sub Main()
    Dim oExcel As Object, oReport As Object, oBook As Object, oFrame As Object
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    oBook = StarDesktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, Array())
    oFrame = oBook.CurrentController.Frame
    oFrame.Name = "ataskaita"
    oFrame.activate
    Set oReport = CreateObject("QVA_Varnholt.CReports")
    oReport.Init "Balansas, 2025 m."
    oReport.Init "Pelnas, 2025 m."
    WriteLine "report: " & oFrame.Title
    SwitchView oFrame, "slot:5631"
    SwitchView oFrame, "slot:5630"
    WriteLine "after its preview: " & oFrame.Title
    StarDesktop.loadComponentFromURL("private:factory/scalc", "ataskaita", com.sun.star.frame.FrameSearchFlag.CHILDREN, Array())
    WriteLine "afterwards: " & oFrame.Title
    oFrame.close True
    oExcel.ResetConnectEX 0
End Sub

Sub SwitchView(oFrame, sCommand)
    createUnoService("com.sun.star.frame.DispatchHelper").executeDispatch(oFrame, sCommand, "", 0, Array())
    Wait 200
End Sub
