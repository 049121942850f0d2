Option VBASupport 1

' What the window has of a toolbar, told by LibreOffice's own layout and settings.
Private Function Toolbar() As String
    Dim oElement, oItems, aItem, i, j, s, sCommand
    Toolbar = "none"
    For Each oElement In ThisComponent.CurrentController.Frame.LayoutManager.Elements
        If InStr(oElement.ResourceURL, "qva_varnholt") > 0 Then
            Set oItems = oElement.getSettings(False)
            s = ""
            For i = 0 To oItems.Count - 1
                sCommand = "|"
                For Each aItem In oItems.getByIndex(i)
                    If aItem.Name = "Label" Then sCommand = aItem.Value
                Next
                s = s & " " & sCommand
            Next
            Toolbar = oItems.UIName & ":" & s
        End If
    Next
End Function

' Labels of the last menu of the document's own menu bar and of its only command, which is used; "none" without
' such a menu bar.
Private Function LastMenu() As String
    Dim oManager, oItems, oMenu, aItem
    LastMenu = "none"
    Set oManager = ThisComponent.getUIConfigurationManager()
    If Not oManager.hasSettings("private:resource/menubar/menubar") Then Exit Function
    Set oItems = oManager.getSettings("private:resource/menubar/menubar", False)
    For Each aItem In oItems.getByIndex(oItems.Count - 1)
        If aItem.Name = "Label" Then LastMenu = aItem.Value
        If aItem.Name = "ItemDescriptorContainer" Then Set oMenu = aItem.Value
    Next
    For Each aItem In oMenu.getByIndex(0)
        If aItem.Name = "Label" Then LastMenu = LastMenu & ": " & aItem.Value
        If aItem.Name = "CommandURL" Then Dispatch aItem.Value
    Next
End Function

Private Sub Dispatch(ByVal sCommand)
    Dim aNone()
    CreateUnoService("com.sun.star.frame.DispatchHelper").executeDispatch ThisComponent.CurrentController.Frame, sCommand, "", 0, aNone()
End Sub

Private Function Shortcuts()
    Shortcuts = UBound(ThisComponent.getUIConfigurationManager().getShortCutManager().getAllKeyEvents()) + 1
End Function

Private Sub Settle()
    Dim i
    For i = 1 To 20
        DoEvents
    Next
End Sub

' In procedures of their own, since Basic lets go of objects at the end of one.
Private Sub UseToolbar(ByVal oExcel)
    Dim oToolbar As Object
    WriteLine "id: " & oExcel.oToolBars.CreateToolbar(Worksheets("Mygtukai"))
    Set oToolbar = oExcel.oToolBars.Item(1)
    Settle
    WriteLine "new: " & oToolbar.VisibleToolbar & " " & Toolbar() & ", keys " & Shortcuts()
    oToolbar.VisibleToolbar = True
    Settle
    WriteLine "visible: " & Toolbar() & ", keys " & Shortcuts()
    oToolbar.VisibleButton 1, False
    Settle
    WriteLine "button hidden: " & Toolbar() & ", keys " & Shortcuts()
    WriteLine "indexes: " & oToolbar.iComment & " " & oToolbar.iFreeze & " " & oToolbar.iPrint & " " & oToolbar.iPrintP & " " & oToolbar.iExcel & " " & oToolbar.iHelp
    oToolbar.VisibleToolbar = False
    Settle
    WriteLine "invisible: " & Toolbar() & ", keys " & Shortcuts()
    oToolbar.VisibleToolbar = True
    Settle
    WriteLine "again: " & (Toolbar() <> "none") & ", keys " & Shortcuts()
End Sub

Private Sub UseMenu(ByVal oExcel)
    oExcel.oToolBars.cmdGoToAppShow
    oExcel.oToolBars.cmdGoToAppShow
    Settle
    WriteLine "menu: " & LastMenu()
    oExcel.oToolBars.cmdGoToAppDelete
    Settle
    WriteLine "menu: " & LastMenu()
    oExcel.oToolBars.cmdGoToAppShow
    Settle
End Sub

Private Sub UseReport(ByVal oExcel)
    oExcel.InitToolBars
    WriteLine "no toolbar: " & oExcel.oToolBars.CreateToolbar(Worksheets("Lapas"))
    UseToolbar oExcel
    UseMenu oExcel
    oExcel.ResetToolBars
    ' Basic keeps what a property gave until it gives something else.
    WriteLine "reset: " & (oExcel.oToolBars Is Nothing)
End Sub

Sub Main()
    Dim oExcel As Object
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    UseReport oExcel
    Settle
    WriteLine "released: " & Toolbar() & ", keys " & Shortcuts() & ", menu " & LastMenu() & ", modified " & ThisComponent.isModified()
    oExcel.ResetConnectEX 0
End Sub

Sub RestoreApp()
    WriteLine "restored"
End Sub
