Option VBASupport 1

Sub Main()
    Dim g As Object, p As Object, i As Integer
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set p = CreateObject("QVA_Varnholt.CRepPeriod")
    p.Init ThisWorkbook.Sheets("Lapas")
    Range("AccPlan").Value = "PAGR"
    Range("RepYear").Value = 2024
    For i = 1 To 6
        WriteLine p.Edit & ": " & Cell(Range("AccPlan")) & ", " & Cell(Range("BookCode").Offset(1, 1))
    Next
    g.ResetConnectEX 0
End Sub

Private Function Cell(oCell)
    Cell = TypeName(oCell.Value) & " " & oCell.Value
End Function
