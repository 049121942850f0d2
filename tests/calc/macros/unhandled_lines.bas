Option VBASupport 1
Sub Main()
    Err.Raise 5, "makrokomanda", "pirma" & Chr(10) & "antra"
End Sub
