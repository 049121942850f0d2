; The setup program for Windows; tools/setup.sh compiles it. It takes:
;   VERSION       three numbers
;   FILES         the folder with everything that is installed, and QVA_Varnholt.files, the list of it
;   SIZE          its size in KB
;   OUTPUT        the program that is made
;   SIGN          where it is set: the command that signs a file
;
; Each installation lies in a folder of its own below the one that the user chooses (1.0.0, for the second one of the
; same version 1.0.0-2): a library that Excel holds is never in the way of the next one. Old folders go as far as
; they can; what a program holds is moved to the folder "removed", and goes with the next setup or the next logon.
; Files are removed by their list alone, so that whatever users put beside them stays.
Unicode true
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel user
Name "QVA_Varnholt ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "" ; /D=, or what .onInit finds
BrandingText "QVA_Varnholt ${VERSION}"
ShowInstDetails show
ShowUninstDetails show
AllowSkipFiles off
!ifdef SIGN
  !uninstfinalize '${SIGN} "%1"' = 0
  !finalize '${SIGN} "%1"' = 0
!endif

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include TextFunc.nsh
!include WordFunc.nsh

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1033 ProductName "QVA_Varnholt"
VIAddVersionKey /LANG=1033 ProductVersion "${VERSION}"
VIAddVersionKey /LANG=1033 FileVersion "${VERSION}.0"
VIAddVersionKey /LANG=1033 FileDescription "QVA_Varnholt setup"
VIAddVersionKey /LANG=1033 CompanyName "QVA_Varnholt"
VIAddVersionKey /LANG=1033 LegalCopyright ""

; The exit codes, as docs/installation.md tells them. 0, 1 (the user) and 2 (anything else) are NSIS' own.
!define E_OPTION 3
!define E_RIGHTS 4
!define E_NEWER 5
!define E_FILES 6
!define E_X64 7
!define E_X86 8
!define E_BUSY 9
!define E_DEMO 10

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall"
!define ENTRY "${UNINSTALL}\QVA_Varnholt"
!define RUN_ONCE "Software\Microsoft\Windows\CurrentVersion\RunOnce"
; Where the registration names the library of each bitness: in win64 and win32.
!define LIBRARY "Software\Classes\TypeLib\{327D607E-A646-4054-ADFA-6EFAB4187E08}\1.0\0"
!if /FileExists "${FILES}\x64\QVA_DemoHost.dll"
  !define DEMO
!endif

Var Scope      ; "user" or "machine", as DllInstall takes it
Var Folder     ; where this installation goes
Var OldHome    ; the folder of the one that is there, and its version; empty where there is none
Var OldVersion
Var OtherHome  ; the same of the one in the other hive: the user's own when this is for all, and the other way round
Var OtherVersion
Var AllowDowngrade ; "1" where it is
Var Log        ; the handle of the log, or empty
Var Regsvr64   ; the system's tools; the first one is empty on 32-bit Windows
Var Regsvr32
Var User64     ; the libraries that are registered before: by hive and bitness
Var User32
Var Machine64
Var Machine32
Var Begun      ; "1" between the first change and the last one that may fail
Var InUse      ; what the last page says of a library that Excel holds
Var What       ; what the first page says that will happen
!ifdef DEMO
Var OldDemo    ; "1" where the user has its demo host registered
!endif

; NSIS' own sentences in Lithuanian are clumsy: what users see for longer is our own in both languages.
!macro Header title text
  !define MUI_PAGE_HEADER_TEXT "${title}"
  !define MUI_PAGE_HEADER_SUBTEXT "${text}"
!macroend
!macro FilesHeader title finished
  !insertmacro Header "${title}" ""
  !define MUI_INSTFILESPAGE_FINISHHEADER_TEXT "${finished}"
  !define MUI_INSTFILESPAGE_FINISHHEADER_SUBTEXT ""
!macroend
!define MUI_INSTFILESPAGE_ABORTHEADER_TEXT "$(Stopped)"
!define MUI_INSTFILESPAGE_ABORTHEADER_SUBTEXT "$(StoppedWhy)"
Caption "$(SetupCaption)"
UninstallCaption "$(RemovalCaption)"
!define MUI_ABORTWARNING
!define MUI_ABORTWARNING_TEXT "$(ReallyStop)"
!define MUI_WELCOMEPAGE_TITLE "QVA_Varnholt ${VERSION}"
!define MUI_WELCOMEPAGE_TEXT "$What"
!insertmacro MUI_PAGE_WELCOME
!ifdef DEMO
  !insertmacro Header "$(DemoTitle)" "$(DemoText)"
  !define MUI_COMPONENTSPAGE_NODESC
  !insertmacro MUI_PAGE_COMPONENTS
!endif
!insertmacro Header "$(FolderTitle)" ""
!define MUI_DIRECTORYPAGE_TEXT_TOP "$(FolderText)"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro FilesHeader "$(Installing)" "$(Done)"
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE "$(Done)"
!define MUI_FINISHPAGE_TEXT "$(Installed)$InUse"
!define MUI_FINISHPAGE_TEXT_LARGE
!insertmacro MUI_PAGE_FINISH
!insertmacro Header "$(RemovalTitle)" ""
!define MUI_UNCONFIRMPAGE_TEXT_TOP "$(RemovalText)"
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro FilesHeader "$(Removing)" "$(Removed)"
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE Lithuanian
!include "${__FILEDIR__}\setup-texts.nsh"
!include "${__FILEDIR__}\setup-shared.nsh"

; --- Setup ---------------------------------------------------------------------------------------------------

; Removes what stands in a folder of earlier installations but for the new one.
!macro Replace home
  ${If} "${home}" != ""
  ${AndIf} "${home}" != $INSTDIR
    Delete "${home}\uninstall.exe"
    Push "$Folder"
    Push "${home}"
    Call Tidy
    RMDir "${home}"
  ${EndIf}
!macroend

; Registers one library of the new folder.
!macro Register regsvr bitness file code
  StrCpy $R5 "${bitness}"
  ${Tell} "$(Registering)"
  Push "$Folder\${file}"
  Push ""
  Push "${regsvr}"
  Call Regsvr
  ${If} $3 != 0
    Call PutBack
    ${Fail} ${code} "$(NotRegistered)" Abort
  ${EndIf}
!macroend

Section "QVA_Varnholt ${VERSION}"
  SectionIn RO
  SetDetailsPrint none
  GetFullPathName $0 "$INSTDIR"
  ${If} $0 != ""
    StrCpy $INSTDIR $0
  ${EndIf}
  StrCpy $Folder "$INSTDIR\${VERSION}"
  StrCpy $0 1
  ${While} ${FileExists} "$Folder"
    IntOp $0 $0 + 1
    StrCpy $Folder "$INSTDIR\${VERSION}-$0"
  ${EndWhile}

  StrCpy $Begun "1"
  ${Tell} "$(Copying)"
  SetOverwrite try
  ClearErrors
  SetOutPath "$Folder"
  File /r "${FILES}\*"
  ${If} ${Errors}
    Call PutBack
    ${Fail} ${E_FILES} "$(NoFiles)" Abort
  ${EndIf}
  ; Who changes a sample is asked for another place: these go with the next version.
  FindFirst $0 $1 "$Folder\samples\*.*"
  ${DoWhile} $1 != ""
    ${If} $1 != "."
    ${AndIf} $1 != ".."
      SetFileAttributes "$Folder\samples\$1" READONLY
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
  ${If} $Regsvr64 != ""
    !insertmacro Register "$Regsvr64" "64" "x64\QVA_Varnholt.dll" ${E_X64}
  ${EndIf}
  !insertmacro Register "$Regsvr32" "32" "x86\QVA_Varnholt.dll" ${E_X86}

  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    Call PutBack
    ${Fail} ${E_FILES} "$(NoFiles)" Abort
  ${EndIf}
  StrCpy $Begun ""
  WriteRegStr SHCTX "${ENTRY}" "DisplayName" "QVA_Varnholt"
  WriteRegStr SHCTX "${ENTRY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${ENTRY}" "Publisher" "QVA_Varnholt"
  WriteRegStr SHCTX "${ENTRY}" "DisplayIcon" "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${ENTRY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${ENTRY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${ENTRY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${ENTRY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD SHCTX "${ENTRY}" "NoModify" 1
  WriteRegDWORD SHCTX "${ENTRY}" "NoRepair" 1

  !insertmacro Replace "$OldHome"
  ${If} $Scope == "machine"
    ; What the user had for himself: its registration has gone over to the new one.
    SetShellVarContext current
    !insertmacro Replace "$OtherHome"
    RMDir "$LOCALAPPDATA\Programs"
    DeleteRegKey HKCU "${ENTRY}"
    DeleteRegKey /ifempty HKCU "${UNINSTALL}"
    SetShellVarContext all
  ${EndIf}
  Push "$Folder"
  Push "$INSTDIR"
  Call Tidy
  ${Tell} "$(Done)"
  ${If} $InUse != ""
    ${Tell} "$(InUseLine)"
  ${EndIf}
SectionEnd

!ifdef DEMO
; The demo host refuses where another host is registered; and it is registered for the user alone.
!macro RegisterDemo regsvr bitness file
  ${If} "${regsvr}" != ""
    StrCpy $R5 "${bitness}"
    ClearErrors
    ExecWait '"${regsvr}" /s /n /i:user "$Folder\${file}"' $0
    ${If} ${Errors}
      StrCpy $0 "-"
    ${EndIf}
    ${If} $0 != 0
      StrCpy $3 $0
      StrCpy $4 $R5
    ${EndIf}
  ${EndIf}
!macroend
!macro UnregisterDemo regsvr file
  ${If} "${regsvr}" != ""
    ExecWait '"${regsvr}" /s /u /n /i:user "${file}"'
  ${EndIf}
!macroend

Section /o "$(DemoName)" DemoSection
  ${Tell} "$(DemoRegistering)"
  StrCpy $3 0
  !insertmacro RegisterDemo "$Regsvr64" "64" "x64\QVA_DemoHost.dll"
  !insertmacro RegisterDemo "$Regsvr32" "32" "x86\QVA_DemoHost.dll"
  ${If} $3 != 0
    StrCpy $R5 $4
    !insertmacro UnregisterDemo "$Regsvr64" "$Folder\x64\QVA_DemoHost.dll"
    !insertmacro UnregisterDemo "$Regsvr32" "$Folder\x86\QVA_DemoHost.dll"
    SetErrorLevel ${E_DEMO}
    ${Tell} "$(DemoFailed)"
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(DemoFailed)" /SD IDOK
  ${EndIf}
SectionEnd

; Who takes it away on the page of the components has none.
Section "-"
  ${IfNot} ${SectionIsSelected} ${DemoSection}
  ${AndIf} $OldDemo != ""
    !insertmacro UnregisterDemo "$Regsvr64" "$Folder\x64\QVA_DemoHost.dll"
    !insertmacro UnregisterDemo "$Regsvr32" "$Folder\x86\QVA_DemoHost.dll"
  ${EndIf}
SectionEnd
!endif

; Registers what was registered before, of one bitness.
!macro PutBack regsvr file user machine
  ${If} "${regsvr}" != ""
    ExecWait '"${regsvr}" /s /u /n /i:$Scope "$Folder\${file}"'
    ${If} ${FileExists} "${machine}"
    ${AndIf} $Scope == "machine"
      ExecWait '"${regsvr}" /s /n /i:machine "${machine}"'
    ${EndIf}
    ${If} ${FileExists} "${user}"
      ExecWait '"${regsvr}" /s /n /i:user "${user}"'
    ${EndIf}
  ${EndIf}
!macroend

; Makes everything as it was before setup began.
Function PutBack
  ${If} $Begun != ""
    StrCpy $Begun ""
    ${Tell} "$(PuttingBack)"
    !insertmacro PutBack "$Regsvr64" "x64\QVA_Varnholt.dll" "$User64" "$Machine64"
    !insertmacro PutBack "$Regsvr32" "x86\QVA_Varnholt.dll" "$User32" "$Machine32"
    SetOutPath "$TEMP" ; a folder that a program is in cannot go
    RMDir /r "$Folder"
    Call RemoveHome
  ${EndIf}
FunctionEnd

Function .onInstFailed
  Call PutBack
FunctionEnd

; Takes the first word from $R0 into $R1, without its quotes.
Function NextWord
  StrCpy $R1 ""
  StrCpy $1 "" ; a quote, between two of them
  ${Do}
    StrCpy $2 $R0 1
    StrCpy $R0 $R0 "" 1
    ${If} $2 == ""
      ${Break}
    ${ElseIf} $2 == '"'
      ${If} $1 == ""
        StrCpy $1 $2
      ${Else}
        StrCpy $1 ""
      ${EndIf}
    ${ElseIf} "$1$2" != " "
      StrCpy $R1 "$R1$2"
    ${ElseIf} $R1 != ""
      ${Break}
    ${EndIf}
  ${Loop}
FunctionEnd

; The command line, without /D=, which NSIS takes itself. It knows /S and /NCRC in capitals alone.
Function ReadOptions
  StrCpy $Scope "user"
  ${GetParameters} $R0
  ${Do}
    Call NextWord
    StrCpy $1 $R1 5
    ${If} $R1 == ""
      ${Break}
    ${ElseIf} $R1 S== "/S"
    ${OrIf} $R1 S== "/NCRC"
      ${Continue}
    ${ElseIf} $R1 == "/AllUsers"
      StrCpy $Scope "machine"
    ${ElseIf} $R1 == "/AllowDowngrade"
      StrCpy $AllowDowngrade "1"
    ${ElseIf} $R1 == "/Demo"
!ifdef DEMO
      !insertmacro SelectSection ${DemoSection}
!else
      ${Fail} ${E_OPTION} "$(NoDemo)" Quit
!endif
    ${ElseIf} $1 == "/Log="
      StrCpy $1 $R1 "" 5
      ClearErrors
      FileOpen $Log "$1" w
      ${If} ${Errors}
        StrCpy $Log ""
        ${Fail} ${E_OPTION} "$(NoLog)" Quit
      ${EndIf}
      FileWriteUTF16LE /BOM $Log "QVA_Varnholt ${VERSION}$\r$\n"
    ${Else}
      ${Fail} ${E_OPTION} "$(UnknownOption)" Quit
    ${EndIf}
  ${Loop}
FunctionEnd

; What stands in the registry before anything is changed.
Function ReadRegistrations
  SetRegView 32
  ReadRegStr $User32 HKCU "${LIBRARY}\win32" ""
  ReadRegStr $Machine32 HKLM "${LIBRARY}\win32" ""
  ${If} $Regsvr64 != ""
    SetRegView 64
    ReadRegStr $User64 HKCU "${LIBRARY}\win64" ""
    ReadRegStr $Machine64 HKLM "${LIBRARY}\win64" ""
  ${EndIf}
FunctionEnd

Function .onInit
  InitPluginsDir
  Call ReadOptions
  ${If} $Scope == "machine"
    ${GetParameters} $R0
    ${If} $INSTDIR != ""
      StrCpy $R0 "$R0 /D=$INSTDIR"
    ${EndIf}
    Push "$R0"
    Push "$EXEPATH"
    Call NeedAdministrator
    SetShellVarContext all
  ${EndIf}
  System::Call 'kernel32::CreateMutexW(p 0, i 0, w "QVA_Varnholt.Setup") p .r0 ?e'
  Pop $0
  ${If} $0 = 183 ; ERROR_ALREADY_EXISTS
    ${Fail} ${E_BUSY} "$(Busy)" Quit
  ${EndIf}
  ; NSIS drops a folder that cannot be made, and installs where nobody told it to.
  System::Call 'kernel32::GetCommandLineW() t .r0'
  ${WordFind} "$0" " /D=" "E+1{" $1
  ${IfNot} ${Errors}
  ${AndIf} $INSTDIR == ""
    ${WordFind} "$0" " /D=" "+1}" $INSTDIR
    ${Fail} ${E_FILES} "$(NoFiles)" Quit
  ${EndIf}
  Call FindTools
  Call ReadRegistrations

  ReadRegStr $OldHome SHCTX "${ENTRY}" "InstallLocation"
  ReadRegStr $OldVersion SHCTX "${ENTRY}" "DisplayVersion"
  ${If} $Scope == "machine"
    ReadRegStr $OtherHome HKCU "${ENTRY}" "InstallLocation"
    ReadRegStr $OtherVersion HKCU "${ENTRY}" "DisplayVersion"
  ${Else}
    ReadRegStr $OtherHome HKLM "${ENTRY}" "InstallLocation"
    ReadRegStr $OtherVersion HKLM "${ENTRY}" "DisplayVersion"
  ${EndIf}
  ; The user's macros would have the one in place of the other.
  ${VersionCompare} "$OtherVersion" "$OldVersion" $0
  ${If} $0 = 1
    StrCpy $OldVersion $OtherVersion
  ${EndIf}
  StrCpy $What "$(WillInstall)"
  ${If} $OldVersion != ""
    ${VersionCompare} "$OldVersion" "${VERSION}" $0
    ${If} $0 = 0
      StrCpy $What "$(WillRepair)"
    ${ElseIf} $0 = 2
    ${OrIf} $AllowDowngrade != ""
      StrCpy $What "$(WillReplace)"
    ${Else}
      ${Fail} ${E_NEWER} "$(Newer)" Quit
    ${EndIf}
  ${EndIf}
  ${If} $Scope == "machine"
    StrCpy $What "$What$\r$\n$\r$\n$(ForAll)"
  ${Else}
    StrCpy $What "$What$\r$\n$\r$\n$(ForUser)"
  ${EndIf}
!ifdef DEMO
  ${If} $OldHome != ""
    Push "$OldHome"
    Call FindDemo
  ${EndIf}
  ${If} $OtherHome != ""
    Push "$OtherHome"
    Call FindDemo
  ${EndIf}
  ${If} $OldDemo != ""
    !insertmacro SelectSection ${DemoSection}
  ${EndIf}
!endif
  ${If} $INSTDIR == ""
    StrCpy $INSTDIR $OldHome
  ${EndIf}
  ${If} $INSTDIR == ""
    ${If} $Scope == "user"
      StrCpy $INSTDIR "$LOCALAPPDATA\Programs\QVA_Varnholt"
    ${ElseIf} $Regsvr64 != ""
      StrCpy $INSTDIR "$PROGRAMFILES64\QVA_Varnholt"
    ${Else}
      StrCpy $INSTDIR "$PROGRAMFILES32\QVA_Varnholt"
    ${EndIf}
  ${EndIf}
FunctionEnd

; --- Uninstaller ---------------------------------------------------------------------------------------------

; Unregisters a library if it is ours that is registered.
!macro Unregister regsvr view code
  ${If} "${regsvr}" != ""
    SetRegView ${view}
    ReadRegStr $R4 SHCTX "${LIBRARY}\win${view}" ""
    StrLen $0 "$INSTDIR\"
    StrCpy $1 $R4 $0
    ${If} $1 == "$INSTDIR\"
      StrCpy $R5 "${view}"
      ${Tell} "$(Unregistering)"
!ifdef DEMO
      ${If} $OldDemo != ""
        ${GetParent} "$R4" $R6
        !insertmacro UnregisterDemo "${regsvr}" "$R6\QVA_DemoHost.dll"
      ${EndIf}
!endif
      Push $R4
      Push "/u"
      Push "${regsvr}"
      Call un.Regsvr
      ${If} $3 != 0
        ${Fail} ${code} "$(NotUnregistered)" Abort
      ${EndIf}
    ${EndIf}
  ${EndIf}
!macroend

Section "Uninstall"
  SetDetailsPrint none
!ifdef DEMO
  Push "$INSTDIR"
  Call un.FindDemo
!endif
  !insertmacro Unregister "$Regsvr32" 32 ${E_X86}
  !insertmacro Unregister "$Regsvr64" 64 ${E_X64}
  Push ""
  Push "$INSTDIR"
  Call un.Tidy
  Delete "$INSTDIR\uninstall.exe"
  DeleteRegKey SHCTX "${ENTRY}"
  DeleteRegKey /ifempty HKCU "${UNINSTALL}"
  Call un.RemoveHome
  ${Tell} "$(Removed)"
SectionEnd

Function un.onInit
  InitPluginsDir
  Call un.FindTools
  StrCpy $Scope "user"
  ReadRegStr $0 HKLM "${ENTRY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    StrCpy $Scope "machine"
    Push ""
    Push "$INSTDIR\uninstall.exe"
    Call un.NeedAdministrator
    SetShellVarContext all
  ${EndIf}
FunctionEnd
