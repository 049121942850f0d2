Option VBASupport 1

Private oExcel As Object

' Three workbooks have these macros: the report, another one, and one of another folder whose file has the
' report's name.
Private Function OpenCopy(ByVal sPath) As Object
    Dim aArguments(1) As New com.sun.star.beans.PropertyValue
    aArguments(0).Name = "MacroExecutionMode"
    aArguments(0).Value = 4
    aArguments(1).Name = "FilterName"
    aArguments(1).Value = "OpenDocument Spreadsheet Flat XML"
    Set OpenCopy = StarDesktop.loadComponentFromURL(UrlOf(sPath), "_blank", 0, aArguments())
    Settle
End Function

Private Function UrlOf(ByVal sPath) As String
    UrlOf = ConvertToUrl(Left(Environ("QVA_TEST_LOG"), Len(Environ("QVA_TEST_LOG")) - Len("macro.log")) & sPath)
End Function

Private Function RunIn(ByVal oDocument, ByVal sMacro)
    RunIn = oDocument.getScriptProvider().getScript("vnd.sun.star.script:VBAProject.Ataskaita." & sMacro & "?language=Basic&location=document").invoke(Array(), Array(), Array())
End Function

Private Sub Settle()
    Dim i
    For i = 1 To 20
        DoEvents
    Next
End Sub

' The first button of a document's toolbar, the number of its keys, its last menu and its marks of comments.
Private Function Look(ByVal oDocument) As String
    Dim oElement, oItems, aItem, sBar, sMenu, oManager
    sBar = "none"
    sMenu = "none"
    For Each oElement In oDocument.CurrentController.Frame.LayoutManager.Elements
        If InStr(oElement.ResourceURL, "qva_varnholt") > 0 Then
            For Each aItem In oElement.getSettings(False).getByIndex(0)
                If aItem.Name = "Label" Then sBar = aItem.Value
            Next
        End If
    Next
    Set oManager = oDocument.getUIConfigurationManager()
    If oManager.hasSettings("private:resource/menubar/menubar") Then
        Set oItems = oManager.getSettings("private:resource/menubar/menubar", False)
        For Each aItem In oItems.getByIndex(oItems.Count - 1)
            If aItem.Name = "Label" Then sMenu = aItem.Value
        Next
    End If
    Look = sBar & ", keys " & (UBound(oManager.getShortCutManager().getAllKeyEvents()) + 1) & ", menu " & sMenu & ", marks " & oDocument.CurrentController.ShowNotes
End Function

Private Sub WriteBoth(ByVal sWhat, ByVal oOther)
    Settle
    WriteLine sWhat & ": " & Look(ThisComponent) & " | " & Look(oOther)
End Sub

' Presses a button of the toolbar, from 0.
Private Sub Press(ByVal oDocument, ByVal nButton)
    Dim oElement, aItem, sCommand, aNone()
    For Each oElement In oDocument.CurrentController.Frame.LayoutManager.Elements
        If InStr(oElement.ResourceURL, "qva_varnholt") > 0 Then
            For Each aItem In oElement.getSettings(False).getByIndex(nButton)
                If aItem.Name = "CommandURL" Then sCommand = aItem.Value
            Next
        End If
    Next
    CreateUnoService("com.sun.star.frame.DispatchHelper").executeDispatch oDocument.CurrentController.Frame, sCommand, "", 0, aNone()
End Sub

' The other report connects, in its own workbook.
Sub Connect()
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
End Sub

Function Connected() As Object
    Connect
    Set Connected = oExcel
End Function

Sub Disconnect()
    Set oExcel = Nothing
End Sub

Private Function View(ByVal oDocument) As String
    View = IIf(HasUnoInterfaces(oDocument.CurrentController, "com.sun.star.sheet.XSpreadsheetView"), "cells", "preview")
End Function

Private Sub Preview(ByVal oDocument)
    Dim aNone()
    CreateUnoService("com.sun.star.frame.DispatchHelper").executeDispatch oDocument.CurrentController.Frame, ".uno:PrintPreview", "", 0, aNone()
    Settle
End Sub

' Both workbooks show the preview, and the other one is in front.
Sub InPreview()
    Dim oOther, oToolbar As Object
    ShowToolbar
    Set oToolbar = oExcel.oToolBars.Item(1)
    ThisComponent.CurrentController.ShowNotes = False
    Set oOther = OpenCopy("Kita.fods")
    Preview ThisComponent
    Preview oOther
    WriteLine "previews: " & View(ThisComponent) & " " & View(oOther)
    oToolbar.CmdEvent.cmdComment
    WriteLine "comments: " & View(ThisComponent) & " " & View(oOther) & " " & ThisComponent.CurrentController.ShowNotes
End Sub

' Runs the macro of a name by the command on the menu bar.
Private Sub RunByMenu(ByVal sMacro)
    Dim oItems, aItem, oEntries, sCommand, aNone()
    oExcel.oToolBars.cmdGoToAppShow sMacro
    Settle
    Set oItems = ThisComponent.getUIConfigurationManager().getSettings("private:resource/menubar/menubar", False)
    For Each aItem In oItems.getByIndex(oItems.Count - 1)
        If aItem.Name = "ItemDescriptorContainer" Then Set oEntries = aItem.Value
    Next
    For Each aItem In oEntries.getByIndex(0)
        If aItem.Name = "CommandURL" Then sCommand = aItem.Value
    Next
    CreateUnoService("com.sun.star.frame.DispatchHelper").executeDispatch ThisComponent.CurrentController.Frame, sCommand, "", 0, aNone()
    Settle
End Sub

' Macros of workbooks whose names are in quotes, as Excel has them, and of one that is not open.
Sub OfQuotedNames()
    Dim oOther
    ShowToolbar
    Set oOther = OpenCopy("kita/Jono's ataskaita.fods")
    RunByMenu "'Jono''s ataskaita.fods'!Rikiuoti"
    RunByMenu "'two_reports.fods'!Ataskaita.Rikiuoti"
    oOther.close False
    Settle
    WriteLine "closed"
    RunByMenu "'Jono''s ataskaita.fods'!Rikiuoti"
End Sub

Sub RunBeside()
    ShowToolbar
    RunByMenu "Rikiuoti"
    RunByMenu "Nera"
    WriteLine "locked: " & Not ThisComponent.BasicLibraries.isLibraryPasswordVerified("Slapta")
End Sub

Sub Rikiuoti()
    WriteLine "sorted in " & IIf(InStr(ThisComponent.URL, "/kita/") > 0, "the other one", "the report")
End Sub

Sub RestoreApp()
    WriteLine "restored"
End Sub

Private Sub UseToolbar(ByVal oOther)
    Dim oToolbar As Object
    oExcel.oToolBars.CreateToolbar ThisWorkbook.Worksheets("Mygtukai")
    Set oToolbar = oExcel.oToolBars.Item(oExcel.oToolBars.Count)
    oToolbar.VisibleToolbar = True
    WriteBoth "shown", oOther
    WriteLine "button: " & oToolbar.VisibleButton(1, False)
    oToolbar.CmdEvent.cmdComment
    oExcel.oToolBars.cmdGoToAppShow
    WriteBoth "used", oOther
    oToolbar.CmdEvent.cmdComment
    WriteBoth "comments again", oOther
    RunIn oOther, "Disconnect"
    WriteLine "button: " & oToolbar.VisibleButton(1, True)
    RunIn oOther, "Connect"
    oExcel.oEnvironment.SetDefaultAppState
    WriteBoth "report state", oOther
    oExcel.oEnvironment.SetDefaultExcelState
    oToolbar.Refresh
    WriteBoth "ordinary state", oOther
End Sub

Private Sub DropToolbars()
    oExcel.oToolBars.DeleteToolbar 1
    oExcel.ResetEnvironment
    oExcel.ResetToolBars
    If oExcel.oToolBars Is Nothing Then WriteLine "dropped"
End Sub

Sub Main()
    Dim oOther
    Connect
    oExcel.InitToolBars
    oExcel.InitEnvironment
    ThisComponent.CurrentController.ShowNotes = True
    Set oOther = OpenCopy("Kita.fods")
    RunIn oOther, "Connect"
    UseToolbar oOther
    DropToolbars
    WriteBoth "dropped", oOther
End Sub

' A workbook whose toolbar is still there is closed, and another report goes on.
Sub AfterAClosedOne()
    Dim oOther
    Set oOther = OpenCopy("Kita.fods")
    RunIn oOther, "ShowToolbar"
    WriteLine "other: " & Look(oOther)
    Connect
    oOther.close False
    Settle
    oExcel.InitToolBars
    oExcel.oToolBars.CreateToolbar ThisWorkbook.Worksheets("Mygtukai")
    WriteLine "own: " & oExcel.oToolBars.Count
    oExcel.ResetToolBars
End Sub

' A workbook that connected, without any toolbar, is closed, and another report goes on.
Sub AfterAClosedOneWithoutBars()
    Dim oOther
    Set oOther = OpenCopy("Kita.fods")
    Set oExcel = RunIn(oOther, "Connected")
    oOther.close False
    Settle
    oExcel.InitToolBars
    On Error Resume Next
    oExcel.oToolBars.CreateToolbar ThisWorkbook.Worksheets("Mygtukai")
    WriteLine "created: " & Err.Number & " | " & Err.Source & " | " & Err.Description
    On Error Goto 0
    oExcel.ResetToolBars
    Connect
    oExcel.InitToolBars
    oExcel.oToolBars.CreateToolbar ThisWorkbook.Worksheets("Mygtukai")
    WriteLine "own: " & oExcel.oToolBars.Count
    oExcel.ResetToolBars
End Sub

Sub ShowToolbar()
    Connect
    oExcel.InitToolBars
    oExcel.oToolBars.CreateToolbar ThisWorkbook.Worksheets("Mygtukai")
    oExcel.oToolBars.Item(1).VisibleToolbar = True
    Settle
End Sub

' The buttons of a workbook and of another one of the same name, before and after the file got another name.
Sub OfOneName()
    Dim oOther, aFilter(0) As New com.sun.star.beans.PropertyValue
    ShowToolbar
    Set oOther = OpenCopy("kita/two_reports.fods")
    Press ThisComponent, 0
    RunIn oOther, "ShowToolbar"
    Press oOther, 0
    Settle
    oOther.close False
    ' The other one's toolbars took the place of ours.
    Set oExcel = Nothing
    ShowToolbar
    Set oOther = OpenCopy("kita/two_reports.fods")
    aFilter(0).Name = "FilterName"
    aFilter(0).Value = "OpenDocument Spreadsheet Flat XML"
    ThisComponent.storeAsURL UrlOf("kitas.fods"), aFilter()
    Press ThisComponent, 0
End Sub
