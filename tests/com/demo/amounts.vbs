' The demo host's amounts at the edges of their range; its sample has tests/host/great_amounts.sql at its end.
Dim common, table, rows, i, months, sum, name, failures

Sub Check(what, value, expected)
  If value <> expected Or Err.Number <> 0 Then
    failures = failures + 1
    WScript.Echo "FAILED: " & what & ": " & value & ", error " & Err.Number & " " & Err.Description
  End If
  Err.Clear
End Sub

On Error Resume Next
Set common = CreateObject("NVXCommonObjects.CommonObjects")
rows = common.CreateBook("MEDVILNE").Table("GLAccountMonth").Rows(Array("AccountCode", "Month", "Debit"))
months = 0
sum = 0
For i = 1 To UBound(rows, 1)
  If rows(i, 1) = "2710" Then
    If Year(rows(i, 2)) = 2031 Then
      months = months + 1
      sum = sum + CDbl(rows(i, 3))
    End If
  End If
Next
Check "months of great amounts", months, 2
Check "their sum in cents", sum, CDbl("922337203685477")
Set table = common.CreateBook("MEDVILNE").Table("GLDocumentPosting")
Check "a posting", table.Seek("105/99"), True
Check "the type of its amount", TypeName(table.Field("Amount")), "Currency"
Check "its amount in cents", CDbl(table.Field("Amount")), CDbl("-3000000000")
For Each name In Array("GLDocumentPosting", "GLAccountMonth", "THDocument")
  Set table = Nothing
  Set table = common.CreateBook("BALTIJA").Table(name)
  Check "the table " & name, table Is Nothing, False
  rows = table.Rows(Array("Code"))
  i = Err.Number
  Err.Clear
  Check "reading " & name, i, 6
Next
If failures = 0 Then WScript.Echo "OK"
