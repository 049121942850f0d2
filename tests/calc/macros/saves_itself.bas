Option VBASupport 1

Sub Main()
    Dim oWay(0) As New com.sun.star.beans.PropertyValue
    oWay(0).Name = "FilterName"
    oWay(0).Value = "OpenDocument Spreadsheet Flat XML"
    ThisComponent.storeToURL ConvertToURL(Environ("QVA_TEST_LOG") & ".fods"), oWay
    WriteLine "saved"
    Err.Raise 1234, "makrokomanda", "after the save"
End Sub
