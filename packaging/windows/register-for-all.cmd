@echo off
rem Registers QVA_Varnholt for all users of this machine. Run it as administrator.
reg add HKLM\Software\Classes\QVA_Varnholt.Probe /f >nul 2>nul
if errorlevel 1 goto refused
reg delete HKLM\Software\Classes\QVA_Varnholt.Probe /f >nul 2>nul
call "%~dp0regsvr.cmd"
goto end
:refused
echo Please run this file as administrator, or use register-for-user.cmd.
exit /b 1
:end
