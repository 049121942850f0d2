@echo off
rem Runs regsvr32 with the given options on the library of each bitness that this Windows has.
setlocal
set "system=%SystemRoot%\System32"
if exist "%SystemRoot%\Sysnative\regsvr32.exe" set "system=%SystemRoot%\Sysnative"
if not exist "%SystemRoot%\SysWOW64\regsvr32.exe" goto only32
start "" /wait "%system%\regsvr32.exe" /s %* "%~dp0x64\QVA_Varnholt.dll"
if errorlevel 1 goto failed
start "" /wait "%SystemRoot%\SysWOW64\regsvr32.exe" /s %* "%~dp0x86\QVA_Varnholt.dll"
if errorlevel 1 goto failed
goto done
:only32
start "" /wait "%system%\regsvr32.exe" /s %* "%~dp0x86\QVA_Varnholt.dll"
if errorlevel 1 goto failed
:done
echo QVA_Varnholt: done.
exit /b 0
:failed
echo QVA_Varnholt: regsvr32 failed with code %errorlevel%.
exit /b 1
