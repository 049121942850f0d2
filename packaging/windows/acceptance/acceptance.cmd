@echo off
rem Tries the library on this machine's Excel: the macros of its tests and what they take for granted of Excel. Writes
rem a report; exit status 0 when all agree, 1 when something differs, 2 when nothing could be tried.
rem   acceptance.cmd [<report file>]   without a file, acceptance-report.txt beside this script
setlocal
set "work=%TEMP%\QVA_Acceptance"
if not exist "%work%" md "%work%"
set "QVA_VARNHOLT_MESSAGE_LOG=%work%\boxes.log"
set "QVA_VARNHOLT_ANSWERS=%~dp0box.answers"
set "QVA_VARNHOLT_FORM_ANSWERS=%~dp0form.answers"
set "QVA_HOST_LIST_ANSWERS=%~dp0list.answers"
set "QVA_HOST_RESOURCES=%~dp0host"
set "QVA_HOST_DATABASE=%work%\host.sqlite"
set "report=%~1"
if not defined report set "report=%~dp0acceptance-report.txt"
cscript.exe //nologo "%~dp0acceptance.vbs" "%work%" "%report%"
set "status=%errorlevel%"
rem What a run that was cut off could not put back, the next one does.
if not exist "%work%\began" rd /s /q "%work%"
if "%~1"=="" pause
exit /b %status%
