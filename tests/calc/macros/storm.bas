Option VBASupport 1

' Two reports and a workbook without macros. Each round shows a window of the library from the first report, in which a
' user does what he likes, and then works on as a report does, by cells of the workbook that is active.
Private oExcel As Object
Private oToolbar As Object
Private oReport As Object

Sub Main()
    Dim oSecond As Object, oPlain As Object, sFirst As String, sOwn As String, sSecond As String, sOthers As String
    Dim nRound As Integer, nRounds As Integer
    nRounds = Environ("QVA_STORM_ROUNDS")
    Set oSecond = OpenBeside("Antra.fods")
    Set oPlain = OpenBeside("Paprasta.fods")
    ThisWorkbook.Activate
    Settle
    sFirst = Look(ThisComponent) & Look(oSecond) & Look(oPlain)
    RunIn oSecond, "Connect"
    ThisWorkbook.Activate
    Connect
    Settle
    sOwn = Look(ThisComponent)
    sSecond = Look(oSecond) & Look(oPlain)
    sOthers = CellsOf(oSecond) & CellsOf(oPlain)
    WriteLine "first: " & sOwn
    WriteLine "others: " & sSecond
    For nRound = 1 To nRounds
        ShowWindow nRound
        ' As a careless macro does it.
        Range("A1").Value = "round " & nRound
        oReport.ColorRanges Range("A1"), Nothing, Nothing, True
        oReport.Locking Range("A1")
        WriteRound "round " & nRound, Look(ThisComponent), sOwn, Look(oSecond) & Look(oPlain), sSecond, _
            CellsOf(oSecond) & CellsOf(oPlain), sOthers
    Next
    RunIn oSecond, "Disconnect"
    ThisWorkbook.Activate
    Disconnect
    Settle
    WriteLine "settings: " & IIf(Look(ThisComponent) & Look(oSecond) & Look(oPlain) = sFirst, "as before", _
        sFirst & "| " & Look(ThisComponent) & Look(oSecond) & Look(oPlain))
    WriteLine "untouched: " & Not oPlain.isModified()
    oSecond.close True
    oPlain.close True
End Sub

' A report's beginning and end; the second report's, too.
Sub Connect()
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    oExcel.InitToolBars
    oExcel.InitEnvironment
    oExcel.oEnvironment.SetDefaultAppState
    oExcel.oToolBars.CreateToolbar ThisWorkbook.Worksheets("Nustatymai")
    Set oToolbar = oExcel.oToolBars.Item(1)
    oToolbar.VisibleToolbar = True
    Set oReport = CreateObject("QVA_Varnholt.CReports")
    oReport.Init ThisWorkbook.Name
End Sub

Sub Disconnect()
    Dim oEnvironment As Object, bIsGone As Boolean
    ' The report that connected last has taken the common objects over.
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    Set oEnvironment = CreateObject("QVA_Varnholt.CEnvironment")
    oEnvironment.SetDefaultExcelState
    oExcel.ResetEnvironment
    Set oToolbar = Nothing
    Set oReport = Nothing
    oExcel.ResetToolBars
    bIsGone = oExcel.oToolBars Is Nothing     ' Basic lets go of the collection
End Sub

Private Sub ShowWindow(ByVal nRound As Integer)
    Dim o As Object, d As Date
    Select Case nRound Mod 3
    Case 0
        Set o = CreateObject("QVA_Varnholt.CRepPeriod")
        o.Init ThisWorkbook.Worksheets("Laikotarpis")
        o.Edit
    Case 1
        Set o = CreateObject("QVA_Common.Message")
        o.Show "Spauskite kitą knygą", "Langas " & nRound, Array("Gerai")
    Case 2
        Set o = CreateObject("QVA_Varnholt.CDatePic")
        o.Show d
    End Select
End Sub

Private Sub WriteRound(sWhat, sOwn, sOwnBefore, sSecond, sSecondBefore, sOthers, sOthersBefore)
    Dim s As String
    If ActiveWorkbook.Name <> ThisWorkbook.Name Then s = s & " another workbook is active;"
    If ThisWorkbook.ActiveSheet.Range("A1").Value <> sWhat Then s = s & " the own cell was not written;"
    If sOwn <> sOwnBefore Then s = s & " own program: " & sOwn & ";"
    If sSecond <> sSecondBefore Then s = s & " the others' program: " & sSecond & ";"
    If sOthers <> sOthersBefore Then s = s & " the others' cells changed;"
    WriteLine sWhat & ":" & IIf(s = "", " whole", s)
End Sub

' What a document's window shows: menus, report bars, keys and settings.
Private Function Look(ByVal oDocument) As String
    Dim oController, oElement, oSetting, nBars
    oController = oDocument.CurrentController
    For Each oElement In oController.Frame.LayoutManager.Elements
        If InStr(oElement.ResourceURL, "qva_varnholt") > 0 Then nBars = nBars + 1
    Next
    Look = "menus " & oController.Frame.LayoutManager.isElementVisible("private:resource/menubar/menubar")
    Look = Look & ", bars " & nBars
    Look = Look & ", keys " & (UBound(oDocument.UIConfigurationManager.ShortCutManager.getAllKeyEvents()) + 1)
    Look = Look & ", grid " & oController.ShowGrid & ", headers " & oController.HasColumnRowHeaders
    Look = Look & ", locked " & oDocument.hasControllersLocked() & ". "
End Function

' Each cell of a document: its content, its fill and its protection.
Private Function CellsOf(ByVal oDocument) As String
    Dim oSheet, oCursor, oCell, i, j, s
    For Each oSheet In oDocument.Sheets
        oCursor = oSheet.createCursor()
        oCursor.gotoEndOfUsedArea False
        For i = 0 To oCursor.RangeAddress.EndRow
            For j = 0 To oCursor.RangeAddress.EndColumn
                oCell = oSheet.getCellByPosition(j, i)
                s = s & oCell.Formula & "|" & oCell.CellBackColor & "|" & oCell.CellProtection.IsLocked & ";"
            Next
        Next
        s = s & oSheet.isProtected() & Chr(10)
    Next
    CellsOf = s
End Function

Private Function OpenBeside(ByVal sFile As String) As Object
    Dim aArguments(1) As New com.sun.star.beans.PropertyValue
    aArguments(0).Name = "MacroExecutionMode"
    aArguments(0).Value = 4
    aArguments(1).Name = "FilterName"
    aArguments(1).Value = "OpenDocument Spreadsheet Flat XML"
    Set OpenBeside = StarDesktop.loadComponentFromURL(ConvertToUrl(Environ("QVA_STORM_FOLDER") & "/" & sFile), "_blank", 0, aArguments())
    Settle
End Function

Private Sub RunIn(ByVal oDocument, ByVal sMacro)
    oDocument.CurrentController.Frame.activate
    oDocument.getScriptProvider().getScript("vnd.sun.star.script:Balansas.Ataskaita." & sMacro & "?language=Basic&location=document").invoke(Array(), Array(), Array())
End Sub

Private Sub Settle()
    Dim i
    For i = 1 To 20
        DoEvents
        Wait 10
    Next
End Sub
