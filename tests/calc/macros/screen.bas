Option VBASupport 1

' How often the screen is turned off; on afterwards.
Private Function Depth()
    Depth = 0
    Do While ThisComponent.hasControllersLocked()
        Depth = Depth + 1
        ThisComponent.unlockControllers
    Loop
End Function

Sub Main()
    Dim g As Object, r As Object, t As Object, l As Object, another As Object, s As Object
    Set g = CreateObject("QVA_Varnholt.gExcelObject")
    g.InitConnectEX Application, ThisWorkbook
    Set r = CreateObject("QVA_Varnholt.CReports")
    Set s = ThisWorkbook.Sheets("Lapas")
    Application.ScreenUpdating = False
    r.ColorRanges s.Range("A1"), Nothing, Nothing, True
    WriteLine "coloured, off: " & Application.ScreenUpdating
    Application.ScreenUpdating = True
    WriteLine "coloured, on: " & Depth()
    r.ColorRanges s.Range("A1"), Nothing, Nothing, True
    WriteLine "coloured, never off: " & Depth()
    Application.ScreenUpdating = False
    r.Init "Balansas"
    WriteLine "taken over: " & Depth()
    Application.ScreenUpdating = False
    Application.ScreenUpdating = False
    r.Locking s.Range("A1")
    WriteLine "locked: " & Depth()
    Application.ScreenUpdating = False
    Set l = CreateObject("QVA_Varnholt.CLockScreen")
    WriteLine "held: " & Application.ScreenUpdating
    Set l = Nothing
    ' Basic itself lets go of the object when it creates another one.
    Set another = CreateObject("QVA_Varnholt.CTools")
    WriteLine "released: " & Depth()
    Set t = CreateObject("QVA_Varnholt.CTools")
    t.Init Nothing
    Application.ScreenUpdating = False
    t.LockScreen True
    WriteLine "frozen: " & Application.ScreenUpdating
    t.LockScreen False
    WriteLine "thawed: " & Depth()
    ' A lock that outlives the connection does not find its Excel any more.
    Set t = Nothing
    Set r = Nothing
    Set another = Nothing
    Set l = CreateObject("QVA_Varnholt.CLockScreen")
    WriteLine "held again: " & Application.ScreenUpdating
    Set g = Nothing
    WriteLine "disconnected: " & Depth()
    Set l = Nothing
End Sub
