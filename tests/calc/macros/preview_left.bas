Option VBASupport 1

' What comes after a preview, while LibreOffice shows it in place of the cells.
Private Function View()
    View = IIf(HasUnoInterfaces(ThisComponent.CurrentController, "com.sun.star.sheet.XSpreadsheetView"), "cells", "preview")
End Function

Private Sub Preview(r, s)
    r.Spauzd s, False
    DoEvents
    WriteLine View()
End Sub

Sub Main()
    Dim g As Object, r As Object, s As Object, bSaved As Boolean
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Balansas"
    Set s = ThisWorkbook.Sheets("Lapas")
    g.InitEnvironment
    Preview r, s
    g.oEnvironment.SetDefaultAppState
    WriteLine "state: " & View() & " " & ActiveWindow.DisplayGridlines & " " & ActiveWindow.Zoom
    Preview r, s
    g.ResetEnvironment
    WriteLine "reset: " & View() & " " & ActiveWindow.DisplayGridlines
    Preview r, s
    r.ColorRanges s.Range("A3"), Nothing, Nothing, True
    WriteLine "coloured: " & View() & " " & s.Range("A3").Interior.ColorIndex
    r.Locking s.Range("A1:B2")
    r.Locking s.Range("A1:B2")
    WriteLine "locked: " & View() & " " & s.Range("B2").Locked & " " & s.Range("B3").Locked
    Preview r, s
    r.Spauzd s, True
    WriteLine "printed: " & View()
    Preview r, s
    r.Init "Kita"
    WriteLine "taken over: " & View() & " " & ActiveWindow.Caption
    Preview r, s
    Preview r, s
    s.Range("H1").Value = 2024
    s.Range("H2").Value = 3
    r.SaveDoc s.Range("H1"), s.Range("H2"), bSaved
    WriteLine "saved: " & bSaved & " " & ThisWorkbook.Name
    r.Init "Balansas"
    ' The sheet is hidden again by the time that LibreOffice shows its preview.
    Set s = ThisWorkbook.Sheets("Antras")
    s.Visible = xlSheetHidden
    ThisWorkbook.Sheets("Lapas").Activate
    s.Range("A1").Value = "ANTRAS"
    ThisWorkbook.Sheets("Lapas").Range("A3").Value = "LAPAS"
    Preview r, s
    WriteLine "hidden: " & s.Visible & " " & Shows(ThisComponent.CurrentController.Frame.ComponentWindow, "ANTRAS") & " " & Shows(ThisComponent.CurrentController.Frame.ComponentWindow, "LAPAS")
    r.Locking ThisWorkbook.Sheets("Lapas").Range("A1")
    WriteLine "back: " & View() & " " & ActiveSheet.Name & " " & s.Visible
End Sub

' Whether a text stands in the window, as assistive technology sees it.
Private Function Shows(oAccessible, sText) As Boolean
    Dim i, oContext
    oContext = oAccessible.getAccessibleContext()
    If HasUnoInterfaces(oContext, "com.sun.star.accessibility.XAccessibleText") Then
        If InStr(oContext.getText(), sText) > 0 Then Shows = True
    End If
    If InStr(oContext.getAccessibleName(), sText) > 0 Then Shows = True
    For i = 0 To oContext.getAccessibleChildCount() - 1
        If Shows Then Exit Function
        Shows = Shows(oContext.getAccessibleChild(i), sText)
    Next
End Function
