' CSetPath, as a workbook's macro uses it, on the user's own environment, which is put back at the end.
Const GENERAL = "HKCU\Software\VB and VBA Program Settings\Quillon Enterprise\General\"
Const USER_PATH = "HKCU\Environment\PATH"
Const KEPT = "HKCU\Environment\PATH_before_QVA_Varnholt"
Dim path, shell, oldPath, hadPath, key, added
added = "C:\Buhalterija ąčę\Varnholt"

' Wine's script host deletes no values itself.
Sub RemovePath
  Remove "PATH"
End Sub
Sub Remove(name)
  shell.Run "reg delete HKCU\Environment /v " & name & " /f", 0, True
End Sub

Set shell = CreateObject("WScript.Shell")
oldPath = shell.RegRead(USER_PATH)
hadPath = (Err.Number = 0)
Err.Clear
shell.RegWrite GENERAL & "Kelias", " C:\Buhalterija ąčę "
shell.RegWrite USER_PATH, "C:\Bin"
CheckError "preparing the registry", 0

Set path = CreateObject("QVA_Varnholt.CSetPath")
CheckError "creation", 0
Check "the class", TypeName(path), "_CSetPath"
key = "Kelias"
Check "the folder is added", path.RegPath(key), True
CheckError "RegPath", 0
Check "the user's path", shell.RegRead(USER_PATH), "C:\Bin;" & added
Check "the variable by reference", key, "Kelias"
Check "the message", control.Boxes, "Tekstas 800: " & added
Check "a second time", path.RegPath("Kelias"), False
shell.RegWrite USER_PATH, "C:\Bin;c:\BUHALTERIJA ĄČĘ\VARNHOLT;D:\"
Check "in other letter case", path.RegPath("Kelias"), False
Check "the path in other letter case", shell.RegRead(USER_PATH), "C:\Bin;c:\BUHALTERIJA ĄČĘ\VARNHOLT;D:\"
Check "the only message", control.Boxes, "Tekstas 800: " & added

shell.RegWrite USER_PATH, "%TEMP%", "REG_EXPAND_SZ"
Check "a path with references", path.RegPath("Nera"), True
Check "which keeps its references", shell.RegRead(USER_PATH), "%TEMP%;\Varnholt"
Check "the path before, with its type", shell.RegRead(KEPT), shell.ExpandEnvironmentStrings("%TEMP%")
shell.RegWrite USER_PATH, String(254, "a")
Check "a path of 254 characters", path.RegPath("Kelias"), True
Check "which is kept", shell.RegRead(USER_PATH), String(254, "a") & ";" & added
shell.RegWrite USER_PATH, String(255, "a")
Check "a path of 255 characters", path.RegPath("Kelias"), True
Check "which is read as empty", shell.RegRead(USER_PATH), added
Check "and kept", shell.RegRead(KEPT & "_2"), String(255, "a")
shell.RegWrite USER_PATH, "C:\Програми"
Check "a path with letters that the code page lacks", path.RegPath("Kelias"), True
Check "the path with these letters", shell.RegRead(KEPT & "_3"), "C:\Програми"
shell.RegWrite USER_PATH, String(255, "a")
Check "a long path again", path.RegPath("Kelias"), True
shell.RegRead KEPT & "_4"
Report Err.Number <> 0, "what is kept is not kept again"
Err.Clear
RemovePath
Check "no path", path.RegPath("Kelias"), True
Check "becomes the folder alone", shell.RegRead(USER_PATH), added

path.RegPath
CheckError "too few arguments", 450
path.RegPath Null
CheckError "Null for a text", 94
path.NoSuchMember
CheckError "an unknown name", 438

If hadPath Then shell.RegWrite USER_PATH, oldPath Else RemovePath
Remove "PATH_before_QVA_Varnholt"
Remove "PATH_before_QVA_Varnholt_2"
Remove "PATH_before_QVA_Varnholt_3"
CheckError "putting the registry back", 0
Set path = Nothing
Finish 34
