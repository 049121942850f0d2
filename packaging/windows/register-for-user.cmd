@echo off
rem Registers QVA_Varnholt for the current user, for 64-bit and 32-bit Excel. No rights are needed.
call "%~dp0regsvr.cmd" /n /i:user
