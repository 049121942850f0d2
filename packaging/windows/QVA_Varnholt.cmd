@echo off
rem Registers QVA_Varnholt for Excel from the folder where this file lies, removes the registration, or tells what is
rem registered:
rem   QVA_Varnholt.cmd install|remove|check [/AllUsers]
rem It is for the current user, with /AllUsers for the machine, which only an administrator may change. Started
rem without an argument, as by a double-click, it asks, and waits at the end.
rem Exit status: 0 done (check: all is in order), 1 something is wrong, 2 an argument was not understood.
setlocal
set "here=%~dp0"
set "library=Software\Classes\TypeLib\{327D607E-A646-4054-ADFA-6EFAB4187E08}\1.0\0"
set "scope=user"
set "hive=HKCU"
set "asked="
set "status=0"
set "output=%TEMP%\QVA_Varnholt-%RANDOM%.txt"

rem The system's own tools of each bitness, whichever this script is run by.
set "system64="
set "system32=%SystemRoot%\System32"
if not exist "%SystemRoot%\SysWOW64\regsvr32.exe" goto arguments
set "system64=%SystemRoot%\System32"
if exist "%SystemRoot%\Sysnative\regsvr32.exe" set "system64=%SystemRoot%\Sysnative"
set "system32=%SystemRoot%\SysWOW64"

:arguments
set "verb=%~1"
if not "%~3"=="" goto usage
if /i "%~2"=="/AllUsers" goto all
if not "%~2"=="" goto usage
goto verb
:all
set "scope=machine"
set "hive=HKLM"
:verb
if /i "%verb%"=="install" goto install
if /i "%verb%"=="remove" goto remove
if /i "%verb%"=="check" goto check
if not "%verb%"=="" goto usage
if defined asked goto usage
set "asked=1"
echo QVA_Varnholt, for you alone. Type one of
echo   install  register it for Excel
echo   remove   remove the registration
echo   check    tell what is registered
set /p verb=^> 
goto verb
:usage
echo Usage: %~nx0 install^|remove^|check [/AllUsers]
set "status=2"
goto end

:install
call :registered old64 "%system64%" %hive% 64
call :registered old32 "%system32%" %hive% 32
call :regsvr 64 "%system64%" "" "%here%x64\QVA_Varnholt.dll"
if not "%code%"=="0" goto end
call :regsvr 32 "%system32%" "" "%here%x86\QVA_Varnholt.dll"
if "%code%"=="0" goto installed
rem Both or none: what was there before comes back.
if not defined system64 goto end
"%system64%\regsvr32.exe" /s /u /n /i:%scope% "%here%x64\QVA_Varnholt.dll"
if defined old64 "%system64%\regsvr32.exe" /s /n /i:%scope% "%old64%"
if defined old32 "%system32%\regsvr32.exe" /s /n /i:%scope% "%old32%"
echo The 64-bit registration was taken back: everything is as it was before.
goto end
:installed
echo QVA_Varnholt: done.
goto end

:remove
call :regsvr 64 "%system64%" /u "%here%x64\QVA_Varnholt.dll"
call :regsvr 32 "%system32%" /u "%here%x86\QVA_Varnholt.dll"
if "%status%"=="0" echo QVA_Varnholt: done.
goto end

:check
if defined system64 call :look 64 "%system64%"
call :look 32 "%system32%"
goto end

:end
if defined asked pause
exit /b %status%

rem --- What is registered for one bitness: <bitness> <the system's tools>
:look
set "found="
if not "%scope%"=="machine" call :look_in %1 %2 HKCU "for you"
call :look_in %1 %2 HKLM "for all users"
if defined found exit /b
echo %1-bit: not registered. %1-bit Excel cannot create its classes (error 429).
echo   What to do: %~nx0 install
set "status=1"
exit /b

rem <bitness> <the system's tools> <hive> <for whom>
:look_in
call :registered path %2 %3 %1
if not defined path exit /b
set "found=1"
echo %1-bit: registered %~4: "%path%"
if exist "%path%" exit /b
echo   The file is not there: the folder was moved or deleted.
echo   What to do: %~nx0 install, where the files are now
set "status=1"
exit /b

rem --- The library that a hive names: <variable> <the system's tools> <hive> <bitness>
:registered
set "%1="
if "%~2"=="" exit /b
set "line="
"%~2\reg.exe" query "%3\%library%\win%4" /ve > "%output%" 2>nul
if "%errorlevel%"=="0" for /f "usebackq delims=" %%a in ("%output%") do set "line=%%a"
del "%output%"
if not defined line exit /b
set "line=%line:*REG_SZ=%"
for /f "tokens=*" %%a in ("%line%") do set "%1=%%a"
exit /b

rem --- Runs regsvr32 and tells what failed: <bitness> <the system's tools> <"" or /u> <library>; its exit code is %code%
:regsvr
set "code=0"
if "%~2"=="" exit /b
set "code=missing"
if not exist "%~4" goto failed
"%~2\regsvr32.exe" /s %~3 /n /i:"%scope% report:%output%" "%~4"
set "code=%errorlevel%"
if "%code%"=="0" exit /b
:failed
set "status=1"
echo %1-bit: "%~4" failed.
if "%code%"=="missing" goto missing
if "%code%"=="2" goto ole
if "%code%"=="3" goto load
if "%code%"=="4" goto entry
if exist "%output%" goto refused
if "%code%"=="-2147024891" goto denied
if "%code%"=="-2147024770" goto load
if "%code%"=="-2147024703" goto load
echo   Cause: regsvr32 ended with %code%.
echo   What to do: run it without /s to see more:
echo   "%~2\regsvr32.exe" %~3 /n /i:%scope% "%~4"
exit /b
:missing
echo   Cause: the file is not there.
echo   What to do: unpack the whole zip, and start this script where it was unpacked.
exit /b
:ole
echo   Cause: Windows could not start OLE (regsvr32: 2).
echo   What to do: log off and on again.
exit /b
:load
echo   Cause: Windows could not load the file (regsvr32: %code%).
echo   What to do: unpack the zip anew; see that a virus scanner does not hold the file back, and that you may read it.
exit /b
:entry
echo   Cause: the file is not this library (regsvr32: 4).
echo   What to do: unpack the zip anew.
exit /b
:denied
echo   Cause: 0x80070005, the registry may not be changed.
goto rights
:refused
echo   Cause: the registry could not be changed (regsvr32: %code%):
type "%output%"
del "%output%"
:rights
if "%scope%"=="machine" echo   What to do: start this script as administrator, or without /AllUsers.
if "%scope%"=="user" echo   What to do: have the administrator look at the rights to this key.
exit /b
