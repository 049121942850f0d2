' Calls for the log (tools/test-windows.sh): results, errors, arguments, and cells whose content is none of its business.
Dim excel, sheet, reports, tools, index
Set excel = CreateObject("QVA_TestBench.Control").NewExcel
Set sheet = excel.ActiveSheet
sheet.Range("A1").Value = "slaptas langelis"
Set reports = CreateObject("QVA_Varnholt.CReports")
Set tools = CreateObject("QVA_Varnholt.CTools")
On Error Resume Next
index = CreateObject("QVA_Varnholt.CSaveForm").ErrorStatus
tools.FileExist "C:\nowhere", "argument.xls"
reports.FillAttr "B1"
reports.FillAttr Array("slaptas masyvas", 2, 3)
reports.FillAttr sheet.Range("A1")
WScript.Echo "OK"
