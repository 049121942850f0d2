Option VBASupport 1

Sub Main()
    Dim g As Object, t As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set t = CreateObject("QVA_Varnholt.CTools")
    t.Init Nothing
    Books t, ThisWorkbook.Path & "/"
    Screen t
    SheetProtection t
    Files t, ThisWorkbook.Path
    WriteLine "text: " & t.ConvertStr2Str("a/b.c:d", "_") & " " & t.ConvertStr2Str("ą[č]?")
End Sub

Private Sub Books(t, sFolder)
    Dim b As Object, sName As String
    Set b = Workbooks.Add
    b.SaveAs Filename:=sFolder & "Ataskaita ąč.xls", FileFormat:=xlNormal
    sName = "ATASKAITA ĄČ"
    WriteLine "open: " & t.BookIsOpen(sName) & " " & sName
    WriteLine "found: " & t.OpenBook("/nera/", "ataskaita ąč").Name
    FileCopy sFolder & "Ataskaita ąč.xls", sFolder & "Kita.xls"
    WriteLine "not open: " & t.BookIsOpen("Kita")
    WriteLine "opened: " & t.OpenBook(sFolder, "Kita").Name & " " & t.BookIsOpen("Kita")
    WriteLine "not opened: " & (t.OpenBook(sFolder, "Nera") Is Nothing)
End Sub

Private Sub Screen(t)
    Dim l As Object, another As Object
    Application.StatusBar = "Skaičiuojama"
    t.LockScreen True
    WriteLine "locked: " & Application.ScreenUpdating & " " & Application.Cursor
    t.LockScreen False
    WriteLine "unlocked: " & Application.ScreenUpdating & " " & Application.Cursor & " " & Application.StatusBar
    t.LockScreen True
    WriteLine "locked again: " & Application.ScreenUpdating & " " & Application.Cursor
    Set l = CreateObject("QVA_Varnholt.CLockScreen")
    WriteLine "held: " & Application.ScreenUpdating & " " & Application.Cursor
    Set l = Nothing
    ' Basic itself lets go of the object when it creates another one.
    Set another = CreateObject("QVA_Varnholt.CTools")
    WriteLine "released: " & Application.ScreenUpdating & " " & Application.Cursor
End Sub

Private Sub SheetProtection(t)
    Dim s As Object
    Set s = ThisWorkbook.Sheets("Lapas")
    ThisWorkbook.Activate
    t.SheetLock True, "slaptas", "lapas"
    WriteLine "protected: " & s.ProtectContents
    s.Range("A1").Value = 5
    WriteLine "changed: " & s.Range("A1").Value
    t.SheetLock False, "SLAPTAS", "Lapas"
    WriteLine "wrong password: " & s.ProtectContents
    t.SheetLock False, "slaptas", "Lapas"
    WriteLine "unprotected: " & s.ProtectContents
    t.SheetLock True, "slaptas", "Nera"
    WriteLine "no sheet: " & s.ProtectContents
End Sub

Private Sub Files(t, sFolder)
    WriteLine "file: " & t.FileExist(sFolder, "Ataskaita ąč.xls") & " " & t.FileExist(sFolder & "/", "ATASKAITA*.x??")
    WriteLine "no file: " & t.FileExist(sFolder, "Balansas.xls") & " " & t.FileExist(sFolder & "/nera", "*")
End Sub
