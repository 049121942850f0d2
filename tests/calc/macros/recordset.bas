Option VBASupport 1

Sub Main()
    Dim rs As Object, calls As Object
    Set rs = CreateObject("ADODB.Recordset")
    WriteLine "state: " & rs.State
    rs.Fields.Append "Kodas", 200, 10
    rs.Fields.Append "Kiekis", 3
    rs.Fields.Append "Suma", 6, 0, 64
    rs.Fields.Append "Data", 7
    rs.Fields.Append "Ar", 11
    rs.Open
    rs.AddNew Array("Kodas", "Kiekis"), Array("praleistas", 0)
    rs.AddNew Array("Kodas", "Kiekis", "Suma"), Array("ąčę", 5, 2.5)
    rs.AddNew Array("Kodas", "Kiekis", "Data", "Ar"), Array("007", 6, DateSerial(2024, 6, 12), True)
    rs.AddNew
    rs.Fields("Kodas").Value = "=1+1"
    rs.Fields(1).Value = 7
    rs.Update
    rs.MoveFirst
    rs.MoveNext
    WriteLine "records: " & rs.RecordCount & ", current: " & rs.Fields("KODAS").Value

    Set calls = CreateObject("NVXCommonObjects.ExcelCalls")
    Range("D3").Value = "senas"
    WriteLine "written: " & calls.CopyFromRecordset(Range("B2:Z9"), rs)
    ShowRows 2, 5
    WriteLine "at the end: " & CInt(rs.EOF)
    WriteLine "again: " & calls.CopyFromRecordset(Range("B2"), rs)
    WriteLine "kept: " & Range("B2").Value
    On Error Resume Next
    rs.MoveNext
    WriteErr "behind the end"
    On Error GoTo 0
    calls.WriteValues Range("B7")
    ShowRows 7, 8
    WriteLine "hours: " & Hour(Range("B7").Value) & " " & Hour(Range("C8").Value)
End Sub

Private Sub ShowRows(nFirst, nLast)
    Dim row As Integer, column As Integer, sLine As String
    For row = nFirst To nLast
        sLine = ""
        For column = 2 To 6
            sLine = sLine & Shown(Cells(row, column).Value) & "; "
        Next
        WriteLine sLine
    Next
End Sub

'The type and the value, in any locale
Private Function Shown(v) As String
    Select Case TypeName(v)
    Case "Double"
        Shown = "Double" & Str(v)
    Case "Date"
        Shown = "Date " & Format(v, "YYYY-MM-DD")
    Case "Boolean"
        Shown = "Boolean " & CInt(v)
    Case Else
        Shown = TypeName(v) & " " & v
    End Select
End Function
