Option VBASupport 1

' Runs a sample that fails in its middle, and tells what the user had before and has afterwards.
Public Sub RunSample()
    ' Settings that neither the report state nor the ordinary one has.
    ActiveWindow.DisplayHeadings = False
    ActiveWindow.Zoom = 80
    WriteUsersProgram "before"
    Ataskaita.Main
    WriteUsersProgram "after"
End Sub

Private Sub WriteUsersProgram(sWhat As String)
    Dim oLayout As Object, s As String
    DoEvents
    Wait 200
    ThisWorkbook.Activate
    Set oLayout = ThisComponent.CurrentController.Frame.LayoutManager
    s = "menus " & oLayout.isElementVisible("private:resource/menubar/menubar")
    s = s & ", standard bar " & oLayout.isElementVisible("private:resource/toolbar/standardbar")
    s = s & ", report bars " & ReportBars(oLayout)
    s = s & ", keys " & (UBound(ThisComponent.UIConfigurationManager.ShortCutManager.getAllKeyEvents()) + 1)
    s = s & ", formula bar " & Application.DisplayFormulaBar
    s = s & ", gridlines " & ActiveWindow.DisplayGridlines & ", headings " & ActiveWindow.DisplayHeadings
    s = s & ", zoom " & ActiveWindow.Zoom & ", locked " & ThisComponent.hasControllersLocked()
    WriteLine sWhat & ": " & s
End Sub

' The library's toolbars.
Private Function ReportBars(oLayout As Object) As Integer
    Dim i As Integer
    For i = 0 To UBound(oLayout.Elements)
        If InStr(oLayout.Elements(i).ResourceURL, "/toolbar/qva_varnholt_") > 0 Then ReportBars = ReportBars + 1
    Next
End Function
