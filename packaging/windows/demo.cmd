@echo off
rem The demo host: the classes of the accounting system over a sample company, for the current user. Nothing is changed
rem where another host is registered.
rem   demo.cmd [on]   registers it, for 64-bit and 32-bit Excel
rem   demo.cmd off    removes it
setlocal
set "manner=/n /i:user"
if /i "%~1"=="off" set "manner=/u"
set "system=%SystemRoot%\System32"
if exist "%SystemRoot%\Sysnative\regsvr32.exe" set "system=%SystemRoot%\Sysnative"
if not exist "%SystemRoot%\SysWOW64\regsvr32.exe" goto only32
start "" /wait "%system%\regsvr32.exe" /s %manner% "%~dp0x64\QVA_DemoHost.dll"
if errorlevel 1 goto failed
start "" /wait "%SystemRoot%\SysWOW64\regsvr32.exe" /s %manner% "%~dp0x86\QVA_DemoHost.dll"
if errorlevel 1 goto failed
goto done
:only32
start "" /wait "%system%\regsvr32.exe" /s %manner% "%~dp0x86\QVA_DemoHost.dll"
if errorlevel 1 goto failed
:done
echo QVA_DemoHost: done.
exit /b 0
:failed
echo QVA_DemoHost: regsvr32 failed. Is a host registered already? The demo host does not come before it.
exit /b 1
