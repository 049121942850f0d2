' How a script's variables travel: always as references to variables of any type.
Dim number, text, nothingYet, list(1), nested
number = 41
control.Increment number
Check "a variable by reference", number, CLng(42)
text = "41"
control.Increment text
Check "a text becomes what the member left", text, CLng(42)
control.Increment nothingYet
Check "an empty variable counts as 0", nothingYet, CLng(1)
list(0) = 7
control.Increment list(0)
Check "an element of an array", list(0), CLng(8)
control.Increment (number)
Check "a value in brackets", number, CLng(42)
number = "abc"
control.Increment number
CheckError "a text that is no number", 13
Check "the variable after the failure", number, "abc"
number = Null
control.Increment number
CheckError "Null", 94
nested = 1
Outer nested
Check "a reference handed on", nested, CLng(2)
Sub Outer(ByRef inner)
  control.Increment inner
End Sub
control.Increment
CheckError "too few arguments", 450
Finish 14
