Option VBASupport 1

Private oExcel As Object

Private Sub Settle()
    Dim i
    For i = 1 To 20
        DoEvents
    Next
End Sub

' Uses all that a report brings, and is closed with its toolbar on the screen.
Sub Main()
    Dim oToolbar As Object
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    oExcel.InitToolBars
    oExcel.oToolBars.CreateToolbar Worksheets("Mygtukai")
    Set oToolbar = oExcel.oToolBars.Item(1)
    oToolbar.VisibleToolbar = True
    Settle
    oToolbar.PositinTop
    oExcel.oToolBars.cmdGoToAppShow
    Settle
    oToolbar.VisibleToolbar = False
    Settle
    oToolbar.VisibleToolbar = True
    Settle
    WriteLine "left: " & oToolbar.VisibleToolbar
End Sub

' The same workbook without it.
Sub Plain()
    Dim i
    For i = 1 To 4
        Settle
    Next
    WriteLine "plain"
End Sub
