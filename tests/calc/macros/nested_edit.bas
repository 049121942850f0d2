Option VBASupport 1

Private oAgain As Object
Private bAsked As Boolean

'While the dialog is up, a listener of LibreOffice's asks for it once more. It has another reference to the object:
'Basic makes no second call by the one that is in a call already.
Sub Main()
    Dim g As Object, p As Object, oToolkit As Object, oListener As Object
    Dim oCopy As New com.sun.star.beans.PropertyValue
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set p = CreateObject("QVA_Varnholt.CRepPeriod")
    p.Init ThisWorkbook.Sheets("Lapas")
    oCopy.Value = p
    Set oAgain = oCopy.Value
    Range("AccPlan").Value = "BIUDZ"
    Range("RepYear").Value = 2023
    Set oToolkit = CreateUnoService("com.sun.star.awt.Toolkit")
    Set oListener = CreateUnoListener("Window_", "com.sun.star.awt.XTopWindowListener")
    oToolkit.addTopWindowListener oListener
    WriteLine "edited: " & p.Edit & " " & Range("RepYear").Value
    oToolkit.removeTopWindowListener oListener
    g.ResetConnectEX 0
End Sub

Private Sub AskAgain(oWindow)
    Dim bEdited As Boolean, sTitle As String
    On Error Resume Next
    sTitle = oWindow.Title              'which windows of documents have not
    If bAsked Or sTitle = "" Then Exit Sub
    bAsked = True
    Err.Clear
    bEdited = oAgain.Edit
    WriteLine "asked again: " & bEdited & " " & Err.Number
End Sub

Sub Window_windowOpened(oEvent)
    AskAgain oEvent.Source
End Sub
Sub Window_windowActivated(oEvent)
    AskAgain oEvent.Source
End Sub
Sub Window_windowDeactivated(oEvent)
End Sub
Sub Window_windowClosing(oEvent)
End Sub
Sub Window_windowClosed(oEvent)
End Sub
Sub Window_windowMinimized(oEvent)
End Sub
Sub Window_windowNormalized(oEvent)
End Sub
Sub Window_disposing(oEvent)
End Sub
