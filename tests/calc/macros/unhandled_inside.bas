Option VBASupport 1
Sub Main()
    Dim n As Integer
    n = 1
    Inside
End Sub

Private Sub Inside()
    Err.Raise -2147221503, "makrokomanda", "Neapdorota klaida"
End Sub
