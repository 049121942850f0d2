Option VBASupport 1

' A report with a toolbar. Its buttons and keys work until the one that ends it is used.
Private oExcel As Object
Private oToolbar As Object
Private bLeft As Boolean
Private bEnded As Boolean

Sub Main()
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    oExcel.InitToolBars
    oExcel.oToolBars.CreateToolbar Worksheets("Mygtukai")
    Set oToolbar = oExcel.oToolBars.Item(1)
    oToolbar.VisibleToolbar = True
    oToolbar.PositinTop
    oExcel.oToolBars.cmdGoToAppShow
    WriteLine "shown: " & oToolbar.TotalButtons & " " & oToolbar.Caption
    Do Until bEnded
        Wait 20
    Loop
    oExcel.oToolBars.DeleteToolbar 1
    Set oToolbar = Nothing
    oExcel.ResetToolBars
    oExcel.ResetConnectEX 0
    DoEvents
    WriteLine "ended"
End Sub

' Goes from the report, which hides LibreOffice's own bars, to the ordinary program.
Sub Pereiti()
    Dim i As Integer
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    oExcel.InitToolBars
    oExcel.oToolBars.CreateToolbar Worksheets("Mygtukai")
    oExcel.InitEnvironment
    oExcel.oEnvironment.SetDefaultAppState
    For i = 1 To 20
        Wait 20
    Next
    oExcel.oEnvironment.SetDefaultExcelState
    oExcel.oToolBars.cmdGoToAppShow
    bLeft = True
    WriteLine "left"
    Do Until bEnded
        Wait 20
    Loop
    oExcel.oToolBars.DeleteToolbar 1
    oExcel.ResetEnvironment
    oExcel.ResetToolBars
    oExcel.ResetConnectEX 0
    WriteLine "ended"
End Sub

Sub Rikiuoti()
    WriteLine "sorted"
End Sub

Sub Taskas()
    WriteLine "dot"
End Sub

Sub Slepti()
    WriteLine "hidden"
End Sub

Sub Baigti()
    WriteLine "ending"
    bEnded = True
End Sub

Sub cmdComment()
    oToolbar.CmdEvent.cmdComment
    WriteLine "comment: " & ThisComponent.CurrentController.ShowNotes
End Sub

Sub cmdFreeze()
    oToolbar.CmdEvent.cmdFreeze Range("A3")
    WriteLine "frozen: " & ActiveWindow.FreezePanes & " " & ThisComponent.CurrentController.SplitRow & " " & ActiveCell.Address
End Sub

Sub RestoreApp()
    WriteLine "back to the report"
    If bLeft Then bEnded = True
End Sub

Sub cmdHelp()
    WriteLine "help"
End Sub
