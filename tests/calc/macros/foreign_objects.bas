Option VBASupport 1

Sub Main()
    Dim p, c, o As Object
    Dim q As New com.sun.star.beans.PropertyValue
    q.Name = "tiesiogiai"
    WriteLine "structure: " & q.Name
    Set p = CreateObject("com.sun.star.beans.PropertyValue")
    p.Name = "pagal vardą"
    WriteLine "structure by name: " & p.Name
    Set c = New Collection
    c.Add 5
    WriteLine "collection: " & c.Count
    On Error Resume Next
    Set o = CreateObject("NVXCommonObjects.NoSuchClass")
    WriteErr "unknown host class"
End Sub
