' The library where no host is registered: whatever needs one says which class is missing, and why.
Dim control, global, excel, tools, failures, bits
Const P0 = "HKCU\Software\VB and VBA Program Settings\Quillon Enterprise\Forms\MDI\P0"

Sub CheckError(what, number, source, description)
  If Err.Number <> number Or Err.Source <> source Or Err.Description <> description Then
    failures = failures + 1
    WScript.Echo "FAILED: " & what & ": error " & Err.Number & ", " & Err.Source & ", " & Err.Description
  End If
  Err.Clear
End Sub

On Error Resume Next
bits = WScript.Arguments(0)
Set control = CreateObject("QVA_TestBench.Control")
Set excel = control.NewExcel
Set global = CreateObject("QVA_Varnholt.gExcelObject")
CheckError "the library itself is there", 0, "", ""
CreateObject("WScript.Shell").RegWrite P0, ""
global.InitConnectEX excel, Empty
CheckError "no book is chosen", -2147221504, "InitConnectEX", "NVXCommonObjects.CommonObjects: 0x800401F3, not registered for " & bits
CreateObject("WScript.Shell").RegWrite P0, "MEDVILNE"
global.InitConnectEX excel, Empty
CheckError "a book is chosen", -2147221504, "InitConnectEX", "NVXCommonObjects.CommonObjects: 0x800401F3, not registered for " & bits
Set tools = CreateObject("QVA_Varnholt.CSaveForm")
tools.ErrorStatus = 5
CheckError "another caller", 429, "QVA_Varnholt", "QVA_Common.MessageResource: 0x800401F3, not registered for " & bits
If failures = 0 Then WScript.Echo "OK"
