Option VBASupport 1

Sub Main()
    Dim g As Object, r As Object, i As Integer
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Data"
    Range("A1").Value = 2024
    Range("A2").Value = 2
    Range("A3").Value = 29
    Range("A4").Value = 2
    For i = 1 To 4
        WriteLine i & ": " & r.ReadDate(Range("A1"), Range("A2"), Range("A3"), Range("A4"), i) & " " & Dates()
    Next
    WriteLine "cancelled: " & r.ReadDate(Range("A1"), Range("A2"), Range("A3"), Range("A4"), 1) & " " & Dates()
    Range("A1").Value = 40000
    On Error Resume Next
    r.ReadDate Range("A1"), Range("A2"), Range("A3"), Range("A4"), 1
    WriteLine "too great: " & Err.Number
    Err.Clear
    Range("A1").Value = "metai"
    r.ReadDate Range("A1"), Range("A2"), Range("A3"), Range("A4"), 1
    WriteLine "no number: " & Err.Number
End Sub

Private Function Dates()
    Dates = Range("A1").Value & " " & Range("A2").Value & " " & Range("A3").Value & " " & Range("A4").Value
End Function
