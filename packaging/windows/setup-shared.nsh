; What setup and uninstaller share.

; Tells the user, and the log.
!macro Tell text
  SetDetailsPrint both
  DetailPrint "${text}"
  SetDetailsPrint none ; NSIS' own lines
  ${If} $Log != ""
    FileWriteUTF16LE $Log "${text}$\r$\n"
  ${EndIf}
!macroend
!define Tell '!insertmacro Tell'

; Ends with an exit code and its reason. "leave" is Quit, or Abort in a section.
!macro Fail code text leave
  SetErrorLevel ${code}
  ${Tell} "${text}"
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  ${leave}
!macroend
!define Fail '!insertmacro Fail'

!macro SharedFunctions un

; Finds $Regsvr64 and $Regsvr32. From now on the 64-bit part of the registry is meant, where there is one.
Function ${un}FindTools
  StrCpy $Regsvr32 "$SYSDIR\regsvr32.exe"
  ; Only a 32-bit program on 64-bit Windows sees this folder.
  ${If} ${FileExists} "$WINDIR\Sysnative\regsvr32.exe"
    StrCpy $Regsvr64 "$WINDIR\Sysnative\regsvr32.exe"
  ; Setup compiled for 64 bits.
  ${ElseIf} ${FileExists} "$WINDIR\SysWOW64\regsvr32.exe"
    StrCpy $Regsvr64 "$SYSDIR\regsvr32.exe"
    StrCpy $Regsvr32 "$WINDIR\SysWOW64\regsvr32.exe"
  ${EndIf}
  ${If} $Regsvr64 != ""
    SetRegView 64
  ${EndIf}
FunctionEnd

; The machine is for administrators alone. Where the user sits in front of it, Windows asks him.
;   stack: the program to start once more, its arguments
Function ${un}NeedAdministrator
  Pop $0
  Pop $1
  UserInfo::GetAccountType
  Pop $2
  ${If} $2 != "Admin"
    ${IfNot} ${Silent}
      ${If} $Log != ""
        FileClose $Log ; the other one writes it
        StrCpy $Log ""
      ${EndIf}
      ClearErrors
      ExecShell "runas" "$0" "$1"
      ${IfNot} ${Errors}
        Quit
      ${EndIf}
    ${EndIf}
    ${Fail} ${E_RIGHTS} "$(NoRights)" Quit
  ${EndIf}
FunctionEnd

; Runs regsvr32.
;   stack: the tool, "" or "/u", the library -> $3: its exit code, $4: what failed, in words
Function ${un}Regsvr
  Pop $0
  Pop $1
  Pop $2
  Delete "$PLUGINSDIR\report.txt"
  ClearErrors
  ExecWait '"$0" /s $1 /n /i:"$Scope report:$PLUGINSDIR\report.txt" "$2"' $3
  ${If} ${Errors}
    StrCpy $3 "-" ; it did not even start
  ${EndIf}
  StrCpy $4 ""
  ${If} $3 != 0
    ClearErrors
    FileOpen $5 "$PLUGINSDIR\report.txt" r
    ${IfNot} ${Errors}
      FileReadUTF16LE $5 $4
      FileClose $5
      ${TrimNewLines} "$4" $4
      StrCpy $4 "$(NotWritten) $4"
    ${ElseIf} $3 == 3
      StrCpy $4 "$(NotLoaded)"
    ${Else}
      StrCpy $4 "$(RegsvrFailed)"
    ${EndIf}
  ${EndIf}
  ClearErrors
FunctionEnd

; Removes the files of one installation, by their list. What a program holds is moved aside, what cannot be moved
; stays, and the list with it.
;   stack: the folder
Function ${un}RemoveFolder
  Pop $0
  ClearErrors
  FileOpen $1 "$0\QVA_Varnholt.files" r
  ${If} ${Errors}
    Return
  ${EndIf}
  ${GetParent} "$0" $5
  StrCpy $4 ""
  ${Do}
    ClearErrors
    FileReadUTF16LE $1 $2
    ${If} ${Errors}
      ${Break}
    ${EndIf}
    ${TrimNewLines} "$2" $2
    StrCpy $3 $2 1 -1
    ${If} $3 == "\"
      RMDir "$0\$2"
    ${Else}
      Delete "$0\$2"
      ${If} ${FileExists} "$0\$2"
        CreateDirectory "$5\removed"
        GetTempFileName $3 "$5\removed"
        Delete "$3"
        Rename "$0\$2" "$3"
        StrCpy $InUse "$(InUse)"
        ${If} ${FileExists} "$0\$2"
          StrCpy $4 "something is left"
        ${EndIf}
      ${EndIf}
    ${EndIf}
  ${Loop}
  FileClose $1
  ${If} $4 == ""
    Delete "$0\QVA_Varnholt.files"
  ${EndIf}
  RMDir "$0"
  ClearErrors
FunctionEnd

!ifdef DEMO
; Sets $OldDemo when the user's demo host is one of a folder, whoever registered it.
;   stack: the folder
Function ${un}FindDemo
  Pop $0
  ReadRegStr $1 HKCU "Software\Classes\NVXCommonObjects.CommonObjects\CLSID" ""
  ReadRegStr $1 HKCU "Software\Classes\CLSID\$1\InprocServer32" ""
  StrLen $2 "$0\"
  StrCpy $1 $1 $2
  ${If} $1 == "$0\"
    StrCpy $OldDemo "1"
  ${EndIf}
FunctionEnd
!endif

; Removes the folder of all installations, unless users put something there.
Function ${un}RemoveHome
  SetOutPath "$TEMP" ; a folder that a program is in cannot go
  RMDir "$INSTDIR"
  ${If} $Scope == "user"
    RMDir "$LOCALAPPDATA\Programs" ; it may be there for us alone
  ${EndIf}
  ClearErrors
FunctionEnd

; Removes all installations below a folder but one.
;   stack: the folder, the installation that stays
Function ${un}Tidy
  Pop $R0
  Pop $R1
  FindFirst $R2 $R3 "$R0\*.*"
  ${DoWhile} $R3 != ""
    ${If} $R3 != "."
    ${AndIf} $R3 != ".."
    ${AndIf} "$R0\$R3" != $R1
      Push "$R0\$R3"
      Call ${un}RemoveFolder
    ${EndIf}
    FindNext $R2 $R3
  ${Loop}
  FindClose $R2
  RMDir /r "$R0\removed"
  ${If} ${FileExists} "$R0\removed"
    ; The second step is for the uninstaller: elsewhere the folder is not empty.
    WriteRegStr SHCTX "${RUN_ONCE}" "QVA_Varnholt $R0" 'cmd.exe /d /c rd /s /q "$R0\removed"&rd "$R0"'
  ${Else}
    DeleteRegValue SHCTX "${RUN_ONCE}" "QVA_Varnholt $R0"
  ${EndIf}
  ClearErrors
FunctionEnd

!macroend
!insertmacro SharedFunctions ""
!insertmacro SharedFunctions "un."
