' CButtonProperties, as a workbook's macro uses it.
Dim list
Set list = CreateObject("QVA_Varnholt.CButtonProperties")
CheckError "creation", 0
Check "the class", TypeName(list), "_CButtonProperties"
Check "the buttons at first", list.TotalButtons, CByte(0)
list.Add 2
CheckError "adding", 0
Check "the buttons", list.totalbuttons, CByte(2)
list.sBCaption(1) = "Spausdinti ataskaitą"
Check "a caption", list.SBCAPTION(1), "Spausdinti ataskaitą"
list.sBTooltipText(1) = "Spausdina" : Check "a tooltip", list.sBTooltipText(1), "Spausdina"
list.sBPicture(1) = "Picture04" : Check "a picture", list.sBPicture(1), "Picture04"
list.sBTag(1) = "TagPrint" : Check "a tag", list.sBTag(1), "TagPrint"
list.sBOnKey(1) = "^{s}" : Check "a hot key", list.sBOnKey(1), "^{s}"
list.sBOnAction(1) = "Book1!Spausdinti" : Check "a macro", list.sBOnAction(1), "Book1!Spausdinti"
list.nBID(2) = "2521" : Check "an id given as text", list.nBID(2), CLng(2521)
list.nBFaceID(2) = 2521.5 : Check "a face id rounded to even", list.nBFaceID(2), CLng(2522)
list.bBVisible(2) = True : Check "visible", list.bBVisible(2), True
list.bBGroup(2) = 0 : Check "the group", list.bBGroup(2), False
list.sBCaption(3) = "x"
CheckErrorText "an index beyond the list", 9, "QVA_Varnholt", "Subscript out of range"
list.Add
CheckError "too few arguments", 450
list.Add "x"
CheckError "a text that is no number", 13
list.Add 254
CheckError "more than 255 buttons", 6
Check "the buttons stay", list.TotalButtons, CByte(2)
list.sBCaption(0) = "x"
CheckError "the index 0", 9
list.nBID(256) = 1
CheckError "an index beyond 8 bits", 6
list.Add 0
Check "adding none", list.TotalButtons, CByte(2)
Check "and nothing is lost", list.sBTag(1), "TagPrint"
list.Reset
Check "the buttons after Reset", list.TotalButtons, CByte(0)
list.Add 1
Check "Reset keeps the count", list.TotalButtons, CByte(3)
list.NoSuchMember
CheckError "an unknown name", 438
Set list = Nothing
Finish 31
