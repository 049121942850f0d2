Option VBASupport 1

Dim s As Object

Sub Main()
    Dim g As Object, r As Object, n As Long, t As Long
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Formulės"
    Set s = ThisWorkbook.Sheets("Lapas")

    Fill "A", Array("=""007""", "=""1/4""", "=""5%""", "=""12:30""", "=""=B1""", "=""TRUE""", "=""'a=b""", "=TRUE()", "=1=2", _
        "=1/3", "=DATE(2024;6;12)", "=1/0", "=""ą""", "=1+1", "=""""")
    s.Range("A10").NumberFormat = "#,##0.00 €"
    s.Range("A13:A14").NumberFormat = "@"
    s.Range("B1").Value = "'a=b"
    s.Range("B2").Value = "'=A1"
    s.Range("B3").Value = 12345.678
    r.ClearFormulas s.Range("A1:B15")
    For n = 1 To 15
        WriteLine Shown("A" & n)
    Next
    WriteLine Shown("B1") & " " & Shown("B2")
    WriteLine s.Range("A10").Value * 3 & " " & s.Range("A10").NumberFormat & " " & s.Range("A13").NumberFormat & s.Range("A14").NumberFormat

    s.Range("D1:D2").Value = 3
    s.Range("E1:E2").FormulaArray = "=D1:D2*2"
    s.Range("F1:G2").FormulaArray = "=""007"""
    s.Range("H1").FormulaArray = "=SUM(D1:D2*2)"
    s.Range("D3").Formula = "=D1+1"
    s.Range("D4").Value = "{=a}"
    On Error Resume Next
    r.ClearFormulas s.Range("D1:E1")
    WriteLine "part: " & Err.Number & " " & Err.Description
    Err.Clear
    r.ClearFormulas s.Range("E2:E9,D3")
    WriteLine "part of areas: " & Err.Number
    On Error Goto 0
    WriteLine s.Range("E1").Formula & " " & s.Range("E2").Value & " " & s.Range("D3").Formula
    t = GetSystemTicks()
    r.ClearFormulas s.Cells
    t = GetSystemTicks() - t
    WriteLine Shown("D3") & " " & Shown("D4") & " " & Shown("E1") & " " & Shown("E2") & " " & Shown("F1") & " " & Shown("G2") & " " & Shown("H1")
    WriteLine "whole sheet of " & s.Cells.Rows.Count & " rows: " & IIf(t < 1000, "quick", t & " ms")
    s.Range("D3").Formula = "=1+1"
    r.ClearFormulas s.Range("C:F")
    r.ClearFormulas s.Range("J:XFD")
    WriteLine Shown("D3")

    s.Range("A21").Value = 10
    s.Range("A22").Formula = "=SUBTOTAL(9,A21:A21)"
    s.Range("A23").Formula = "=SUBTOTAL(9,A21:A22)"
    s.Range("B24").Formula = "=SUBTOTAL(9,A21:A23)"
    r.ClearFormulas s.Range("A21:A23,B24")
    WriteLine "totals: " & Shown("A23") & " " & Shown("B24")
End Sub

Private Sub Fill(sColumn As String, vFormulas)
    Dim i As Integer
    For i = 0 To UBound(vFormulas)
        s.Range(sColumn & (i + 1)).Formula = vFormulas(i)
    Next
End Sub

Private Function Shown(sCell As String) As String
    Dim oCell As Object
    Set oCell = s.Range(sCell)
    Shown = IIf(oCell.HasFormula, "formula ", "") & TypeName(oCell.Value) & " " & oCell.CellRange.getCellByPosition(0, 0).getString()
End Function
