Option VBASupport 1

Sub Main()
    Dim g As Object, h As Object, r As Object, hostCommon As Object, book As Object
    Set g = CreateObject("qva_varnholt.GEXCELOBJECT")
    WriteLine "connected: " & g.InitConnectEX(objWB:=ThisWorkbook, App:=Application)
    WriteLine "again: " & g.initconnectex(Application, ThisWorkbook)
    WriteLine "book: " & g.oBook.BookCode
    Set h = CreateObject("QVA_Varnholt.gExcelObject")
    WriteLine "same book: " & EqualUnoObjects(g.oBook, h.oBook)
    WriteLine "second instance: " & h.InitConnectEX(Application, ThisWorkbook)

    Set hostCommon = CreateObject("NVXCommonObjects.CommonObjects")
    Set book = hostCommon.CreateBook("BALTIJA")
    WriteLine "passed book: " & h.InitConnectEX(Application, ThisWorkbook, book)
    WriteLine "kept: " & EqualUnoObjects(h.oBook, book) & " " & g.oBook.BookCode

    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Ataskaita ąčę"
    WriteLine "caption: " & ActiveWindow.Caption
    Range("A1").Value = "before"
    r.FillAttr rPavad:=Range("B1")
    WriteLine "name: " & Range("A1").Value & " | " & Range("B1").Value
    r.FillAttr Range("A2"), , Nothing, Range("A3")
    WriteLine "code: " & Range("A2").Value
    WriteLine "address: " & Range("A3").Value
    r.FillBnksAcc Range("A1"), Range("A2"), Range("A3"), Range("B1"), Range("C1")
    WriteLine "untouched: " & Range("A1").Value

    g.InitToolBars
    g.InitToolBars
    g.ResetToolBars
    WriteLine "toolbars survive: " & Not (g.oToolBars Is Nothing)
    g.ResetToolBars
    WriteLine "toolbars gone: " & (g.oToolBars Is Nothing)
    g.InitEnvironment
    WriteLine "environment: " & Not (g.oEnvironment Is Nothing)
    g.ResetEnvironment
    WriteLine "environment gone: " & (g.oEnvironment Is Nothing)
    g.ResetConnectEX 0
    WriteLine "reset: " & (g.oBook Is Nothing) & " " & (g.oMyPlant Is Nothing)
    Reports g
End Sub

Private Sub Reports(g)
    On Error GoTo Handler
    Err.Raise 1234, "makro", "Klaida ąčę"
    Exit Sub
Handler:
    g.ExcelReportError Err
    WriteLine "reported"
End Sub
