@echo off
rem Registers QVA_Varnholt for all users of this machine. Run it as administrator.
reg query HKU\S-1-5-19 >nul 2>nul
if errorlevel 1 goto refused
call "%~dp0regsvr.cmd"
goto end
:refused
echo Please run this file as administrator, or use register-for-user.cmd.
exit /b 1
:end
