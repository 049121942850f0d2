Option VBASupport 1

Private Function View()
    View = HasUnoInterfaces(ThisComponent.CurrentController, "com.sun.star.sheet.XSpreadsheetView")
End Function

Sub Main()
    Dim g As Object, r As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    r.Init "Balansas"
    WriteLine "cells: " & View()
    r.Spauzd ThisWorkbook.Sheets("Lapas"), False, True, 3
    ' LibreOffice changes the view in its event loop.
    DoEvents
    WriteLine "cells: " & View()
End Sub
