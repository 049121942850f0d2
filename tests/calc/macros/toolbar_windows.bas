Option VBASupport 1

Private oExcel As Object
Private oToolbar As Object

Private Sub Settle()
    Dim i
    For i = 1 To 20
        DoEvents
    Next
End Sub

Private Sub Dispatch(ByVal oFrame, ByVal sCommand)
    Dim aNone()
    CreateUnoService("com.sun.star.frame.DispatchHelper").executeDispatch oFrame, sCommand, "", 0, aNone()
End Sub

' The command of the first button of the toolbar in a window; empty without a toolbar.
Private Function FirstButton(ByVal oFrame) As String
    Dim oElement, aItem
    For Each oElement In oFrame.LayoutManager.Elements
        If InStr(oElement.ResourceURL, "qva_varnholt") > 0 Then
            For Each aItem In oElement.getSettings(False).getByIndex(0)
                If aItem.Name = "CommandURL" Then FirstButton = aItem.Value
            Next
        End If
    Next
End Function

Private Function KeyCommand() As String
    Dim oShortcuts, aKey
    Set oShortcuts = ThisComponent.getUIConfigurationManager().getShortCutManager()
    For Each aKey In oShortcuts.getAllKeyEvents()
        If aKey.KeyCode = com.sun.star.awt.Key.K Then KeyCommand = oShortcuts.getCommandByKeyEvent(aKey)
    Next
End Function

' Uses button and key in a window.
Private Sub UseWindow(ByVal sName, ByVal oFrame)
    WriteLine sName & ": " & (FirstButton(oFrame) <> "")
    Dispatch oFrame, FirstButton(oFrame)
    Dispatch oFrame, KeyCommand()
End Sub

Sub Main()
    Dim oFirst, oSecond
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    oExcel.InitToolBars
    oExcel.oToolBars.CreateToolbar ThisWorkbook.Worksheets("Mygtukai")
    Set oToolbar = oExcel.oToolBars.Item(1)
    oToolbar.VisibleToolbar = True
    Settle
    Set oFirst = ThisComponent.CurrentController.Frame
    Dispatch oFirst, ".uno:NewWindow"
    Settle
    Set oSecond = ThisComponent.CurrentController.Frame
    WriteLine "another window: " & Not EqualUnoObjects(oFirst, oSecond)
    UseWindow "first", oFirst
    UseWindow "second", oSecond
    oToolbar.VisibleButton 1, False
    Settle
    WriteLine "button hidden: " & (FirstButton(oFirst) <> "") & " " & (FirstButton(oFirst) = FirstButton(oSecond))
    oToolbar.VisibleButton 1, True
    Settle
    oFirst.close False
    Settle
    UseWindow "second alone", oSecond
    Dispatch oSecond, "slot:5631"
    Settle
    WriteLine "in the preview: " & (FirstButton(oSecond) <> "")
    Dispatch oSecond, "slot:5630"
    Settle
    WriteLine "after the preview: " & (FirstButton(oSecond) <> "")
    oToolbar.SetAction 1, "Nera"
    oToolbar.SetAction 2, "Nera.Taip"
    Dispatch oSecond, FirstButton(oSecond)
    oToolbar.VisibleToolbar = True
    Dispatch oSecond, KeyCommand()
    oToolbar.VisibleToolbar = False
    Settle
    WriteLine "invisible: " & (FirstButton(oSecond) <> "")
End Sub

Sub Rikiuoti()
    WriteLine "sorted"
End Sub

Sub Taskas()
    WriteLine "dot"
End Sub
