Option VBASupport 1

Private oExcel As Object

Private Sub Settle()
    Dim i
    For i = 1 To 20
        DoEvents
    Next
End Sub

Private Function Shortcuts()
    Shortcuts = UBound(ThisComponent.getUIConfigurationManager().getShortCutManager().getAllKeyEvents()) + 1
End Function

' Gives a button each notation; the key is bound, turned off, and given back.
Private Sub UseKeys(ByVal oToolbar)
    Dim sKey, n
    For Each sKey In Array("^-", "^=", "^;", "^{+}", "+^%{]}", "^{BREAK}", "{CAPSLOCK}", "{}}", "{CLEAR}", "%š", "^m")
        n = oToolbar.SetHotKey(1, sKey)
        oToolbar.VisibleButton 1, False
        oToolbar.VisibleButton 1, True
        WriteLine sKey & " " & n & ", keys " & Shortcuts()
        oToolbar.VisibleToolbar = False
        oToolbar.VisibleToolbar = True
    Next
    On Error Resume Next
    oToolbar.SetHotKey 1, "{NERA}"
    oToolbar.VisibleToolbar = False
    WriteErr "no key"
    oToolbar.SetHotKey 1, "^m"
End Sub

Private Sub UseToolbar()
    Dim oToolbar As Object
    ThisWorkbook.Worksheets("Mygtukai").Range("Button_OnKey").Offset(1, 0).Value = "^-"
    oExcel.oToolBars.CreateToolbar ThisWorkbook.Worksheets("Mygtukai")
    Set oToolbar = oExcel.oToolBars.Item(1)
    oToolbar.VisibleToolbar = True
    Settle
    WriteLine "shown: " & oToolbar.VisibleToolbar
    UseKeys oToolbar
End Sub

Sub Main()
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    oExcel.InitToolBars
    UseToolbar
    oExcel.ResetToolBars
    WriteLine "reset: " & (oExcel.oToolBars Is Nothing)
    Settle
    WriteLine "keys " & Shortcuts()
End Sub
