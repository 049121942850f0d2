@echo off
rem Runs the macros of a sample report; acceptance.vbs starts this: <sample> <folder of the kit's files>
setlocal
set "QVA_VARNHOLT_ANSWERS="
set "QVA_VARNHOLT_FORM_ANSWERS=%~dp0%~1\form.answers"
set "QVA_HOST_LIST_ANSWERS=%~dp0%~1\list.answers"
set "QVA_HOST_RESOURCES=%~dp0host"
set "QVA_HOST_DATABASE=%~2\samples.sqlite"
cscript.exe //nologo "%~dp0%~1\script.vbs" "%~2\sample.txt"
