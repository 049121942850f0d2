Option VBASupport 1

Private g As Object

Sub Main()
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Amounts
    Texts
    Dates
    Places
    g.ResetConnectEX 0
End Sub

'What the host's tables hold.
Private Sub Amounts()
    Dim t As Object, v, i As Long, cSum As Currency, nMonths As Integer
    v = g.oBook.Table("GLAccountMonth").Rows(Array("AccountCode", "Month", "Debit"))
    For i = 1 To UBound(v, 1)
        If v(i, 1) = "2710" And Year(v(i, 2)) = 2031 Then
            nMonths = nMonths + 1
            cSum = cSum + v(i, 3)
        End If
    Next
    WriteLine "cents of " & nMonths & " months: " & Format(cSum, "0")
    Set t = g.oBook.Table("GLDocumentPosting")
    WriteLine "found: " & t.Seek("105/99") & " " & TypeName(t.Field("Amount")) & " " & Format(t.Field("Amount"), "0")
    For Each v In Array("GLDocumentPosting", "GLAccountMonth", "THDocument")
        TryTable v
    Next
End Sub

Private Sub TryTable(sTable)
    Dim t As Object, v
    Set t = CreateObject("NVXCommonObjects.CommonObjects").CreateBook("BALTIJA").Table(sTable)
    On Error Resume Next
    v = t.Rows(Array("Code"))
    WriteErr sTable
End Sub

'Amounts and dates of texts, and texts of dates, as fields of a recordset take them. A date that is one comes from a
'cell: Basic passes its own on as numbers.
Private Sub Texts()
    Dim rs As Object, s
    Set rs = CreateObject("ADODB.Recordset")
    rs.Fields.Append "Suma", 6
    rs.Fields.Append "Diena", 7
    rs.Fields.Append "Tekstas", 200, 60
    rs.Open
    rs.AddNew
    For Each s In Array("922337203685477,5807", "-922337203685477,5807", "123456789012345,6789", "0,00005")
        rs.Fields("Suma").Value = s
        WriteLine "amount: " & TypeName(rs.Fields("Suma").Value) & " " & rs.Fields("Suma").Value
    Next
    rs.AddNew Array("Tekstas"), Array(DateCell(DateSerial(2024, 3, 5)))
    WriteLine "text of a date: " & rs.Fields("Tekstas").Value
    rs.Fields("Diena").Value = rs.Fields("Tekstas").Value
    WriteLine "date of that text: " & Format(rs.Fields("Diena").Value, "yyyy-mm-dd")
End Sub

Private Function DateCell(v) As Object
    Set DateCell = ThisWorkbook.Sheets("Lapas").Range("H1")
    DateCell.Value = CDbl(v)
    DateCell.NumberFormat = "yyyy-mm-dd"
End Function

'Numbers that are no dates, in a variable and in a cell for dates.
Private Sub Dates()
    Dim f As Object, p As Object, v, d As Date, oCell As Object
    Set f = CreateObject("QVA_Varnholt.CSaveForm")
    f.Init
    Set p = CreateObject("QVA_Varnholt.CDatePic")
    For Each v In Array(1E10, -1E10, 1E300, -1E300)
        Set oCell = DateCell(v)
        d = v
        On Error Resume Next
        WriteLine TypeName(oCell.Value) & " " & v & ": " & f.FileName(ThisWorkbook, "F", "PVM", "1", oCell)
        WriteErr "cell " & v
        WriteLine TypeName(d) & " " & v & ": " & f.FileName(ThisWorkbook, "F", "PVM", "1", d)
        WriteErr "variable " & v
        p.Show d
        WriteErr "picker " & v
        On Error GoTo 0
    Next
End Sub

'Servers and shares are folders below the drives; a folder beside these is nobody's.
Private Sub Places()
    Dim t As Object, f As Object, v
    Set t = CreateObject("QVA_Varnholt.CTools")
    t.Init Application
    Set f = CreateObject("QVA_Varnholt.CSaveForm")
    f.Init
    For Each v In Array("\\..\..\outside\", "C:\..\..\..\outside\")
        f.GeneralPath = v
        f.Save ThisWorkbook, "F", "PVM", "1", DateSerial(2024, 3, 5)
        WriteLine v & ": " & t.FileExist(v, "secret.xls") & " " & (t.OpenBook(v, "secret") Is Nothing) & " " & _
            f.FileExist(ThisWorkbook, "F", "PVM", "1", DateSerial(2024, 3, 5)) & " " & f.ErrorStatus
    Next
End Sub
