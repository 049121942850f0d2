@echo off
rem Removes the registration, of the user and, when run as administrator, of the machine.
call "%~dp0regsvr.cmd" /u
