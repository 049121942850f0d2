
' Two samples that are open side by side: each has its toolbar, and goes on when the other one is closed.
Public Sub RunBoth()
    Dim oSecond As Object, aOptions(0) As New com.sun.star.beans.PropertyValue, oFirst As Object
    ActiveWindow.DisplayHeadings = False
    ActiveWindow.Zoom = 80
    WriteUsersProgram "before"
    Set oFirst = ThisComponent
    Ataskaita.Main
    aOptions(0).Name = "MacroExecutionMode"
    aOptions(0).Value = 4
    Set oSecond = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("QVA_TEST_SECOND")), "_blank", 0, aOptions)
    RunIn oSecond, "PVM.Ataskaita.Main"
    WriteBars "both", oFirst, oSecond
    If Environ("QVA_TEST_FIRST_GOES_FIRST") = "1" Then
        QvaReport.Uzverti
        WriteBars "one left", oFirst, oSecond
        RunIn oSecond, "PVM.QvaReport.cmdHelp"
        RunIn oSecond, "PVM.Ataskaita.Spausdinti"
        RunIn oSecond, "PVM.QvaReport.Uzverti"
    Else
        RunIn oSecond, "PVM.QvaReport.Uzverti"
        WriteBars "one left", oFirst, oSecond
        QvaReport.cmdHelp
        Ataskaita.KeistiLaikotarpi
        Ataskaita.Issaugoti
        QvaReport.Uzverti
    End If
    oSecond.close True
    WriteUsersProgram "after"
End Sub

Private Sub RunIn(oDocument As Object, sMacro As String)
    oDocument.getScriptProvider().getScript("vnd.sun.star.script:" & sMacro & "?language=Basic&location=document"). _
        invoke Array(), Array(), Array()
End Sub

' Whether each of the documents has a toolbar of a report.
Private Sub WriteBars(sWhat As String, oFirst As Object, oSecond As Object)
    DoEvents
    Wait 200
    WriteLine sWhat & ": bars " & (ReportBars(oFirst.CurrentController.Frame.LayoutManager) > 0) & " " & _
        (ReportBars(oSecond.CurrentController.Frame.LayoutManager) > 0)
End Sub
