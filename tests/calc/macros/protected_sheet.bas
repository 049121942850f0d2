Option VBASupport 1

Sub Main()
    Dim g As Object, r As Object, t As Object, s As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    Set t = CreateObject("QVA_Varnholt.CTools")
    t.Init Nothing
    Set s = ThisWorkbook.Sheets("Lapas")
    s.Range("C1:C5").Formula = "=1+1"
    s.Range("C5").NumberFormat = "@"
    s.Range("C4:C5").Locked = False
    WriteLine "from the user alone"
    t.SheetLock True, "slaptas", "Lapas"
    Change r, s
    ' The sheet is followed when it moves and gets another name.
    s.Name = "Kitas"
    s.Move After:=ThisWorkbook.Sheets("Antras")
    r.ColorRanges s.Range("A1"), Nothing, Nothing, False
    WriteLine "moved: " & s.Range("A1").Interior.ColorIndex
    s.Name = "Lapas"
    t.SheetLock False, "slaptas", "Lapas"
    WriteLine "password: " & s.ProtectContents
    WriteLine "by a password"
    s.Protect "kitas"
    Change r, s
    ' A file keeps the password alone.
    WriteLine "again, wrong and right"
    t.SheetLock True, "slaptas", "Lapas"
    Change r, s
    t.SheetLock True, "kitas", "Lapas"
    Change r, s
    s.Unprotect "kitas"
    WriteLine "unprotected: " & s.ProtectContents
End Sub

Private Sub Change(r, s)
    On Error Resume Next
    r.ColorRanges s.Range("A1"), Nothing, Nothing, True
    WriteLine "colour: " & s.Range("A1").Interior.ColorIndex
    r.Locking s.Range("B1:B2")
    WriteErr "locking"
    r.Locking s.Range("B1:B2")
    WriteErr "unlocking"
    WriteLine "locked: " & s.Range("B1").Locked
    s.Range("C1").Formula = "=1+1"
    r.ClearFormulas s.Range("C1")
    WriteErr "frozen"
    r.ClearFormulas s.Range("C4")
    WriteErr "unlocked cell frozen"
    WriteLine "formulas: " & s.Range("C1").Formula & " " & s.Range("C4").Formula
    s.Range("C5").Formula = "=1+1"
    r.ClearFormulas s.Range("C5")
    WriteErr "unlocked cell of texts frozen"
    WriteLine "formula: " & s.Range("C5").Formula & " " & s.Range("C5").NumberFormat
    r.FillAttr s.Range("D1")
    WriteErr "filled"
    WriteLine "protected: " & s.ProtectContents
End Sub
