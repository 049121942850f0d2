Option VBASupport 1
Sub Main()
    Err.Raise -2147221503, "makrokomanda", "Neapdorota klaida"
End Sub
