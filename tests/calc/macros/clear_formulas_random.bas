Option VBASupport 1

' Sheets filled by chance: what ClearFormulas leaves of them is looked at cell by cell.
Const nRows = 9
Const nColumns = 6
Const nSheets = 40

Dim s As Object
Dim nRefused As Long
Dim nSeed As Long

Sub Main()
    Dim g As Object, r As Object, n As Long
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Formulės"
    Set s = ThisWorkbook.Sheets("Lapas")
    For n = 1 To nSheets
        OneSheet r, n
    Next
    WriteLine nSheets & " sheets, " & IIf(nRefused > 5, "some", nRefused) & " refused"
End Sub

Private Function Chance(nCount) As Long
    ' The same sheets each time.
    nSeed = (nSeed * 75 + 74) Mod 65537
    Chance = Int(nSeed / 65537 * nCount)
End Function

Private Function OneCell(n) As Object
    Set OneCell = s.Cells(n \ nColumns + 1, n Mod nColumns + 1)
End Function

Private Sub OneSheet(r, nSheet)
    Dim vFormulas, vFormats, n As Long, nFirstRefused As Long, nError As Long, sError As String, sExpected As String
    Dim sFormula(nRows * nColumns - 1) As String, sShown(nRows * nColumns - 1) As String, bProtected As Boolean
    Dim sAfter As String
    vFormulas = Array("=1+1", "=1/3", "=1=1", "=1=2", "=""ą č""", "=""007""", "=""true""", "=""'b""", "=""=A1""", "=""""", "=1/0", _
        "=DATE(2024;6;12)", "=TIME(12;30;0)", "=5%", "=$K$1", "=$K$2", "=$K$3&""x""", "12,5", "tekstas", "a = b", "")
    vFormats = Array("0.00", "@", "YYYY-MM-DD", "#,##0.00 €", "0%")
    s.Unprotect
    s.Cells.Clear
    s.Range("K1").CellRange.getCellByPosition(0, 0).setFormula("2024-06-12")
    s.Range("K2").CellRange.getCellByPosition(0, 0).setFormula("=$K$1")
    s.Range("K3").Value = "tekstas"
    bProtected = Chance(2) = 0
    For n = 0 To nRows * nColumns - 1
        OneCell(n).CellRange.getCellByPosition(0, 0).setFormula(vFormulas(IIf(Chance(2) = 0, 0, Chance(UBound(vFormulas) + 1))))
    Next
    For n = 1 To Chance(4)
        ' Numbers of cells of texts are refused where the sheet keeps the format.
        s.Cells(Chance(nRows) + 1, Chance(nColumns) + 1).Resize(Chance(4) + 1, Chance(2) + 1).NumberFormat = _
            vFormats(IIf(bProtected, Chance(1), Chance(UBound(vFormats) + 1)))
    Next
    nFirstRefused = nRows * nColumns
    If bProtected Then
        s.Cells.Locked = False
        For n = 1 To Chance(3)
            OneCell(Chance(nRows * nColumns)).Locked = True
        Next
        s.Protect
    End If
    For n = nRows * nColumns - 1 To 0 Step -1
        sFormula(n) = OneCell(n).Formula
        sShown(n) = Shown(n)
        If bProtected And InStr(sFormula(n), "=") > 0 Then
            If OneCell(n).Locked Then nFirstRefused = n
        End If
    Next

    On Error Resume Next
    r.ClearFormulas s.Range("A1").Resize(nRows, nColumns)
    nError = Err.Number
    sError = Err.Description
    On Error Goto 0
    If nFirstRefused < nRows * nColumns Then nRefused = nRefused + 1
    If (nError = 1004) <> (nFirstRefused < nRows * nColumns) Then WriteLine nSheet & ": error " & nError & " " & sError
    For n = 0 To nRows * nColumns - 1
        sExpected = sShown(n)
        If n < nFirstRefused And InStr(sFormula(n), "=") > 0 Then
            ' The texts of errors are texts, those that look like something else are in cells of texts.
            If sFormula(n) = "=""""" Then sExpected = "Empty "
            If sFormula(n) = "=1/0" Then sExpected = "String #DIV/0!"
            If OneCell(n).HasFormula Then WriteLine nSheet & ": " & OneCell(n).Address & " is still " & OneCell(n).Formula
        ElseIf OneCell(n).Formula <> sFormula(n) Then
            WriteLine nSheet & ": " & OneCell(n).Address & " was " & sFormula(n) & " and is " & OneCell(n).Formula
        End If
        sAfter = Shown(n)
        If sAfter <> sExpected Then WriteLine nSheet & ": " & OneCell(n).Address & " " & sFormula(n) & " was " & sExpected & " and is " & sAfter
    Next
End Sub

' The kind and the text of a cell, and the format of one that shows no text. LibreOffice tells dates and Booleans that
' formulas gave from numbers by their formats alone.
Private Function Shown(n) As String
    Dim oCell As Object, sKind As String
    Set oCell = OneCell(n)
    sKind = TypeName(oCell.Value)
    If sKind <> "String" And sKind <> "Empty" Then sKind = "Number"
    If oCell.CellRange.getCellByPosition(0, 0).getError() <> 0 Then sKind = "Error"
    Shown = sKind & " " & oCell.CellRange.getCellByPosition(0, 0).getString()
    If sKind = "Number" Then Shown = Shown & " " & oCell.NumberFormat
End Function
