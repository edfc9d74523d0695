@echo off
rem Tries Tunovka on this computer and writes report.txt beside this file.
"%~dp0bin\check.exe" %*
pause
