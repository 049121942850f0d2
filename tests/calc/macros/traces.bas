Option VBASupport 1

'What a job can leave behind, and whether it finds that.
Private Const kName As String = "QvaPedsakas"
Private nGlobal As Integer

Sub Main()
    Look "before"
    LeaveAll
    Look "after"
End Sub

Sub LeaveInProfile()
    Main
    Touch ProfileFile
End Sub

Private Sub Look(ByVal sWhen As String)
    Dim sFound As String
    If IsInRegistry Then sFound = sFound & " registry"
    If FileExists(DriveFile) Then sFound = sFound & " file"
    If nGlobal > 0 Then sFound = sFound & " global"
    If GlobalScope.BasicLibraries.hasByName(kName) Then sFound = sFound & " library"
    If ThisComponent.NamedRanges.hasByName(kName) Then sFound = sFound & " name"
    If DocumentCount > 1 Then sFound = sFound & " document"
    If FileExists(ProfileFile) Then sFound = sFound & " profile"
    WriteLine sWhen & ":" & sFound
    WriteLine "in " & Profile
End Sub

Private Sub LeaveAll()
    Dim aHidden(0) As New com.sun.star.beans.PropertyValue
    Touch DriveFile
    nGlobal = nGlobal + 1
    GlobalScope.BasicLibraries.createLibrary kName
    ThisComponent.NamedRanges.addNewByName kName, "$A$1", ThisComponent.Sheets.getByIndex(0).getCellByPosition(0, 0).CellAddress, 0
    aHidden(0).Name = "Hidden"
    aHidden(0).Value = True
    StarDesktop.loadComponentFromURL "private:factory/scalc", "_blank", 0, aHidden()
End Sub

'Asking leaves it.
Private Function IsInRegistry() As Boolean
    Dim oExcel As Object, oPath As Object
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook
    Set oPath = CreateObject("QVA_Varnholt.CSetPath")
    IsInRegistry = Not oPath.RegPath("AppPath")
    oExcel.ResetConnectEX 0
End Function

Private Function DocumentCount() As Integer
    Dim oAll As Object
    Set oAll = StarDesktop.Components.createEnumeration
    Do While oAll.hasMoreElements
        oAll.nextElement
        DocumentCount = DocumentCount + 1
    Loop
End Function

Private Function DriveFile() As String
    DriveFile = Environ("QVA_VARNHOLT_DRIVES") & "/C/" & kName
End Function

Private Function Profile() As String
    Profile = CreateUnoService("com.sun.star.util.PathSettings").UserConfig
End Function

Private Function ProfileFile() As String
    ProfileFile = Profile & "/" & kName
End Function

Private Sub Touch(ByVal sFile As String)
    Dim nFile As Integer
    nFile = FreeFile
    Open sFile For Output As #nFile
    Close #nFile
End Sub
