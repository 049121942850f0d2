Option VBASupport 1

' Every setting of the report state that LibreOffice has, with its value. What it lacks counts as missing.
Private Function Settings(ByRef nMissing)
    Dim s As String
    nMissing = 0
    s = Setting(Application, "DisplayAlerts", nMissing) & Setting(Application, "CellDragAndDrop", nMissing)
    s = s & Setting(Application, "EditDirectlyInCell", nMissing) & Setting(Application, "TransitionNavigKeys", nMissing)
    s = s & Setting(Application, "MoveAfterReturn", nMissing) & Setting(Application, "AskToUpdateLinks", nMissing)
    s = s & Setting(Application, "CopyObjectsWithCells", nMissing) & Setting(Application, "EnableAnimations", nMissing)
    s = s & Setting(Application, "DisplayStatusBar", nMissing) & Setting(Application, "DisplayFormulaBar", nMissing)
    s = s & Setting(Application, "DisplayCommentIndicator", nMissing) & Setting(Application, "Calculation", nMissing)
    s = s & Setting(Application, "ReferenceStyle", nMissing) & Setting(Application, "Caption", nMissing)
    s = s & Setting(ActiveWindow, "DisplayHorizontalScrollBar", nMissing)
    s = s & Setting(ActiveWindow, "DisplayVerticalScrollBar", nMissing)
    s = s & Setting(ActiveWindow, "DisplayWorkbookTabs", nMissing) & Setting(ActiveWindow, "DisplayFormulas", nMissing)
    s = s & Setting(ActiveWindow, "DisplayGridlines", nMissing) & Setting(ActiveWindow, "DisplayHeadings", nMissing)
    s = s & Setting(ActiveWindow, "DisplayOutline", nMissing) & Setting(ActiveWindow, "DisplayZeros", nMissing)
    s = s & Setting(ActiveWindow, "Zoom", nMissing) & Setting(ActiveWindow, "WindowState", nMissing)
    s = s & Setting(ActiveWindow, "ScrollColumn", nMissing) & Setting(ActiveWindow, "ScrollRow", nMissing)
    s = s & Setting(ActiveSheet.PageSetup, "PrintGridlines", nMissing)
    s = s & Setting(ActiveSheet, "DisplayPageBreaks", nMissing)
    s = s & Setting(Application, "CommandBars", nMissing)
    Settings = s
End Function

Private Function Setting(oOwner, sName, ByRef nMissing)
    Dim v
    On Error GoTo Missing
    v = CallByName(oOwner, sName, 2)
    Setting = sName & "=" & v & " "
    Exit Function
Missing:
    nMissing = nMissing + 1
    Setting = ""
End Function

Private Sub WriteState(sWhat)
    Dim s As String
    s = "formula bar " & Application.DisplayFormulaBar & ", status bar " & Application.DisplayStatusBar
    s = s & ", gridlines " & ActiveWindow.DisplayGridlines & ", headings " & ActiveWindow.DisplayHeadings
    s = s & ", outline " & ActiveWindow.DisplayOutline & ", tabs " & ActiveWindow.DisplayWorkbookTabs
    s = s & ", vertical " & ActiveWindow.DisplayVerticalScrollBar & ", zoom " & ActiveWindow.Zoom
    s = s & ", calculation " & Application.Calculation & ", cell " & ActiveCell.Address
    s = s & ", caption [" & Application.Caption & "]"
    WriteLine sWhat & ": " & s
End Sub

Private Sub WriteRound(sWhat, sBefore, sAfter)
    If sBefore = sAfter Then
        WriteLine sWhat & ": the same"
    Else
        WriteLine sWhat & ": " & sBefore & "| " & sAfter
    End If
End Sub

Sub Main()
    Dim g As Object, sFirst As String, sUsers As String, nMissing, n
    ThisWorkbook.Names.Add Name:="rMetai", RefersTo:="=Lapas!$A$1"
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook

    sFirst = Settings(nMissing)
    WriteLine "settings: " & (UBound(Split(sFirst, " "))) & ", missing " & nMissing
    g.InitEnvironment
    WriteRound "snapshot", sFirst, Settings(n)
    g.oEnvironment.SetDefaultAppState
    WriteState "report"
    g.ResetEnvironment
    WriteRound "round", sFirst, Settings(n)
    WriteLine "released: " & (g.oEnvironment Is Nothing)

    Application.DisplayStatusBar = False
    ActiveWindow.DisplayGridlines = False
    ActiveWindow.DisplayVerticalScrollBar = False
    ActiveWindow.DisplayWorkbookTabs = False
    ActiveWindow.Zoom = 80
    Range("C5").Select
    Application.Caption = "Mano"
    WriteState "user's"
    sUsers = Settings(n)
    g.InitEnvironment
    g.oEnvironment.SetDefaultAppState False
    WriteState "report"
    g.InitEnvironment
    g.oEnvironment.SetDefaultExcelState
    WriteState "ordinary"
    g.ResetEnvironment
    WriteState "report again"
    g.ResetEnvironment
    WriteRound "nested round", Replace(sUsers, "Caption=Mano", "Caption="), Settings(n)
    g.ResetConnectEX 0
End Sub
