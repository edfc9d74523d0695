; The installer: for one person, without administrator rights. tools/make-package calls it with
; VERSION, ICON, SIDE (a picture), OUTPUT, and FILES, which holds what depends on the files' names.
Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!include MUI2.nsh
!include "${FILES}"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tunovka"
!define SHORTCUT "$SMPROGRAMS\Tunovka.lnk"

Name "Tunovka"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tunovka"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "Tunovka ${VERSION}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\tunovka.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

; The system's language decides; Slovak, being first, also where it is neither.
!insertmacro MUI_LANGUAGE "Slovak"
!insertmacro MUI_LANGUAGE "English"
LangString Running ${LANG_SLOVAK} "Tunovka práve beží. Zatvorte ju a skúste to znova."
LangString Running ${LANG_ENGLISH} "Tunovka is running. Close it and try again."

VIProductVersion "${VERSION}.0"
!macro VersionTexts LANGUAGE DESCRIPTION
    VIAddVersionKey /LANG=${LANGUAGE} "ProductName" "Tunovka"
    VIAddVersionKey /LANG=${LANGUAGE} "ProductVersion" "${VERSION}"
    VIAddVersionKey /LANG=${LANGUAGE} "FileVersion" "${VERSION}"
    VIAddVersionKey /LANG=${LANGUAGE} "FileDescription" "${DESCRIPTION}"
    VIAddVersionKey /LANG=${LANGUAGE} "LegalCopyright" "The developers of Tunovka"
!macroend
!insertmacro VersionTexts ${LANG_SLOVAK} "Tunovka - inštalácia"
!insertmacro VersionTexts ${LANG_ENGLISH} "Tunovka - setup"

; Ends with code 1 unless the program in $INSTDIR is closed: a running one cannot be replaced.
!macro RequireClosed UN
Function ${UN}RequireClosed
  again:
    IfFileExists "$INSTDIR\tunovka.exe" 0 closed
    ClearErrors
    FileOpen $0 "$INSTDIR\tunovka.exe" a
    IfErrors 0 writable
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(Running)" /SD IDCANCEL IDRETRY again
    SetErrorLevel 1
    Quit
  writable:
    FileClose $0
  closed:
FunctionEnd
!macroend
!insertmacro RequireClosed ""
!insertmacro RequireClosed "un."

Section
    Call RequireClosed

    ; An older version takes away its own files; what its person changed stays.
    ReadRegStr $1 HKCU "${UNINSTALL_KEY}" "InstallLocation"
    IfFileExists "$1\uninstall.exe" 0 fresh
    ExecWait '"$1\uninstall.exe" /S _?=$1' $0
    IntCmp $0 0 removed
    SetErrorLevel 1
    Quit
  removed:
    Delete "$1\uninstall.exe"
    RMDir "$1"
  fresh:

    !insertmacro LayDownFiles
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortcut "${SHORTCUT}" "$INSTDIR\tunovka.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Tunovka"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\tunovka.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The developers of Tunovka"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${KILOBYTES}
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; Deletes a file that still has the time it was installed with.
!macro DeleteUnchanged PATH
    ClearErrors
    GetFileTime "${PATH}" $0 $1
    IfErrors +4
    IntCmpU $0 ${TIME_HIGH} 0 +3 +3
    IntCmpU $1 ${TIME_LOW} 0 +2 +2
    Delete "${PATH}"
!macroend

; Only what the installer laid down goes: folders go when they are empty.
Section un.Tunovka
    Call un.RequireClosed
    SetOutPath "$TEMP"
    !insertmacro TakeAwayFiles
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    Delete "${SHORTCUT}"
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
