' --- An Excel of the kit's own ------------------------------------------------------------------------------------

Dim own, settings, barsAtFirst
Set own = Nothing

' A new Excel, with a workbook that is opened as an .xls file, so that it has the grid of one.
Function StartExcel(path)
  Dim files, book, bar, i
  Set own = CreateObject("Excel.Application")
  own.Visible = False
  own.DisplayAlerts = False
  Set barsAtFirst = CreateObject("Scripting.Dictionary")
  For i = 1 To own.CommandBars.Count
    Set bar = own.CommandBars(i)
    If Not bar.BuiltIn Then barsAtFirst(bar.Name) = True
  Next
  settings = Array(own.DisplayFormulaBar, own.DisplayStatusBar, own.CellDragAndDrop, own.EditDirectlyInCell, _
    own.TransitionNavigKeys, own.MoveAfterReturn, own.AskToUpdateLinks, own.CopyObjectsWithCells, _
    own.EnableAnimations, own.DisplayCommentIndicator)
  Set files = CreateObject("Scripting.FileSystemObject")
  If Not files.FolderExists(files.GetParentFolderName(path)) Then files.CreateFolder files.GetParentFolderName(path)
  Set book = own.Workbooks.Add
  Do While book.Sheets.Count < 3
    book.Sheets.Add , book.Sheets(book.Sheets.Count)
  Loop
  For i = 1 To 3
    If book.Sheets(i).Name <> "Sheet" & i Then book.Sheets(i).Name = "Sheet" & i
  Next
  book.Sheets(1).Activate
  book.SaveAs path, OldFormat()
  book.Close False
  Set book = own.Workbooks.Open(path)
  ' The test bench's Excel comes with a workbook.
  For i = own.Workbooks.Count To 1 Step -1
    If own.Workbooks(i).Name <> book.Name Then own.Workbooks(i).Close False
  Next
  Set StartExcel = own
End Function

Function OldFormat()
  OldFormat = 56
  If CDbl(Left(own.Version, InStr(own.Version, ".") - 1)) < 12 Then OldFormat = -4143
End Function

' Closes it. What it would keep for the user becomes what it was: settings, and toolbars.
Sub CloseExcel()
  Dim i, bar
  On Error Resume Next
  If own Is Nothing Then Exit Sub
  own.DisplayAlerts = False
  Do While own.Workbooks.Count > 0
    own.Workbooks(1).Close False
    If Err.Number <> 0 Then Exit Do
  Loop
  For i = own.CommandBars.Count To 1 Step -1
    Set bar = own.CommandBars(i)
    If Not bar.BuiltIn And Not barsAtFirst.Exists(bar.Name) Then bar.Delete
  Next
  Set bar = Nothing
  own.DisplayFormulaBar = settings(0)
  own.DisplayStatusBar = settings(1)
  own.CellDragAndDrop = settings(2)
  own.EditDirectlyInCell = settings(3)
  own.TransitionNavigKeys = settings(4)
  own.MoveAfterReturn = settings(5)
  own.AskToUpdateLinks = settings(6)
  own.CopyObjectsWithCells = settings(7)
  own.EnableAnimations = settings(8)
  own.DisplayCommentIndicator = settings(9)
  own.Quit
  Set own = Nothing
End Sub
