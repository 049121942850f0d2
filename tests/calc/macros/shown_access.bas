Option VBASupport 1

'Tells of the window on top as a screen reader finds it, at each F9: by LibreOffice's own accessible objects, to which
'a key's listener comes while the dialog waits.
Sub Main()
    Dim g As Object, p As Object, r As Object, oToolkit As Object, oKeys As Object, dDay As Date
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set p = CreateObject("QVA_Varnholt.CRepPeriod")
    p.Init ThisWorkbook.Sheets("Lapas")
    Set r = CreateObject("QVA_Varnholt.CDatePic")
    Range("AccPlan").Value = "BIUDZ"
    Range("RepYear").Value = 2023
    Set oToolkit = CreateUnoService("com.sun.star.awt.Toolkit")
    Set oKeys = CreateUnoListener("Key_", "com.sun.star.awt.XKeyHandler")
    oToolkit.addKeyHandler oKeys
    p.Edit
    dDay = DateSerial(2024, 2, 29)
    r.Show dDay
    oToolkit.removeKeyHandler oKeys
    g.ResetConnectEX 0
End Sub

Function Key_keyPressed(oEvent) As Boolean
    Dim oToolkit As Object
    If oEvent.KeyCode = com.sun.star.awt.Key.F9 Then
        Set oToolkit = CreateUnoService("com.sun.star.awt.Toolkit")
        Tell oToolkit.getActiveTopWindow().getAccessibleContext(), ""
        WriteLine "."
    End If
    Key_keyPressed = False
End Function

Function Key_keyReleased(oEvent) As Boolean
    Key_keyReleased = False
End Function

Sub Key_disposing(oEvent)
End Sub

Private Sub Tell(oContext, sIndent)
    Dim i As Long, sRole As String
    sRole = RoleName(oContext.getAccessibleRole())
    WriteLine sIndent & sRole & " '" & oContext.getAccessibleName() & "'" & ValueOf(oContext, sRole) & _
              States(oContext, sRole) & LabelOf(oContext, sRole) & PlaceOf(oContext)
    If sRole = "combo box" Or sRole = "tab" Then Exit Sub       'what they hold is LibreOffice's own
    For i = 0 To oContext.getAccessibleChildCount() - 1
        Tell oContext.getAccessibleChild(i).getAccessibleContext(), sIndent & "  "
    Next
End Sub

Private Function ValueOf(oContext, sRole)
    ValueOf = ""
    If sRole = "text" Then ValueOf = " = '" & oContext.getText() & "'"
    If sRole = "combo box" Then ValueOf = " = '" & oContext.getAccessibleChild(0).getAccessibleContext().getText() & "'"
End Function

'A label beside it, which a screen reader says in the name's place.
Private Function LabelOf(oContext, sRole)
    Dim oLabels, oLabel As Object
    LabelOf = ""
    If sRole <> "text" And sRole <> "check box" Then Exit Function
    oLabels = oContext.getAccessibleRelationSet()
    If Not oLabels.containsRelation(com.sun.star.accessibility.AccessibleRelationType.LABELED_BY) Then Exit Function
    oLabel = oLabels.getRelationByType(com.sun.star.accessibility.AccessibleRelationType.LABELED_BY).TargetSet(0)
    oLabel = oLabel.getAccessibleContext()
    If oLabel.getAccessibleName() <> oContext.getAccessibleName() Then LabelOf = " by '" & oLabel.getAccessibleName() & "'"
End Function

Private Function PlaceOf(oContext)
    PlaceOf = ""
    If oContext.getBounds().Width <= 0 Or oContext.getBounds().Height <= 0 Then PlaceOf = " nowhere"
End Function

Private Function RoleName(iRole)
    Select Case iRole
    Case com.sun.star.accessibility.AccessibleRole.DIALOG: RoleName = "dialog"
    Case com.sun.star.accessibility.AccessibleRole.LABEL: RoleName = "label"
    Case com.sun.star.accessibility.AccessibleRole.TEXT: RoleName = "text"
    Case com.sun.star.accessibility.AccessibleRole.COMBO_BOX: RoleName = "combo box"
    Case com.sun.star.accessibility.AccessibleRole.CHECK_BOX: RoleName = "check box"
    Case com.sun.star.accessibility.AccessibleRole.RADIO_BUTTON: RoleName = "option"
    Case com.sun.star.accessibility.AccessibleRole.PUSH_BUTTON: RoleName = "button"
    Case com.sun.star.accessibility.AccessibleRole.GROUP_BOX: RoleName = "group"
    Case com.sun.star.accessibility.AccessibleRole.PANEL: RoleName = "panel"
    Case com.sun.star.accessibility.AccessibleRole.SCROLL_PANE: RoleName = "panel"
    Case com.sun.star.accessibility.AccessibleRole.PAGE_TAB_LIST: RoleName = "tabs"
    Case com.sun.star.accessibility.AccessibleRole.PAGE_TAB: RoleName = "tab"
    Case Else: RoleName = "role " & iRole
    End Select
End Function

Private Function States(oContext, sRole)
    Dim oStates
    States = ""
    oStates = oContext.getAccessibleStateSet()
    If HasState(oStates, com.sun.star.accessibility.AccessibleStateType.FOCUSED) Then States = States & " focused"
    If HasState(oStates, com.sun.star.accessibility.AccessibleStateType.SELECTED) Then States = States & " selected"
    If HasState(oStates, com.sun.star.accessibility.AccessibleStateType.CHECKED) Then States = States & " checked"
    If Not HasState(oStates, com.sun.star.accessibility.AccessibleStateType.ENABLED) Then
        States = States & " disabled"
    ElseIf sRole = "text" And Not HasState(oStates, com.sun.star.accessibility.AccessibleStateType.EDITABLE) Then
        States = States & " read-only"
    End If
End Function

'A set in LibreOffice 7.4, bits of a number in later ones.
Private Function HasState(oStates, nState) As Boolean
    If IsObject(oStates) Then
        HasState = oStates.contains(nState)
    Else
        HasState = (oStates And nState) <> 0
    End If
End Function
