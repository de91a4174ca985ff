; Installs Kelvara for one user, without administrator rights.
;   makensis -DVERSION=1.1.0 -DFOLDER=... -DREMOVAL=... -DICON=... -DOUTPUT=...
; FOLDER holds the files to install, and REMOVAL is a script that deletes exactly those. "/S" installs or removes silently; "/D=FOLDER", the last
; argument, chooses the folder. A silent removal keeps the user's data unless "/DATA" is given.
Target amd64-unicode
!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include WordFunc.nsh

Name "Kelvara"
OutFile "${OUTPUT}"
RequestExecutionLevel user
; The program writes rfields.ds into its own folder, so the user must be able to write there.
InstallDir "$LOCALAPPDATA\Programs\Kelvara"
InstallDirRegKey HKCU "Software\Kelvara" "InstallFolder"
SetCompressor /SOLID lzma
ManifestDPIAware true
BrandingText " "
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Kelvara"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Kelvara installer"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "CompanyName" "The Kelvara authors"
VIAddVersionKey "LegalCopyright" "The Kelvara authors, MIT License"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Kelvara"
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\kelvara.exe"
!insertmacro MUI_PAGE_LICENSE "${FOLDER}/LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Waits until neither program is running, because a running program cannot be replaced. Silently,
; it gives up at once with exit code 2.
!macro ExpectProgramsClosed FUNCTION
  Function ${FUNCTION}
    ${Do}
      StrCpy $1 ""
      ${If} ${FileExists} "$INSTDIR\kelvara.exe"
        ClearErrors
        FileOpen $0 "$INSTDIR\kelvara.exe" a
        ${If} ${Errors}
          StrCpy $1 "kelvara.exe"
        ${Else}
          FileClose $0
        ${EndIf}
      ${EndIf}
      ${If} ${FileExists} "$INSTDIR\kelvara-cli.exe"
        ClearErrors
        FileOpen $0 "$INSTDIR\kelvara-cli.exe" a
        ${If} ${Errors}
          StrCpy $1 "kelvara-cli.exe"
        ${Else}
          FileClose $0
        ${EndIf}
      ${EndIf}
      ${If} $1 == ""
        Return
      ${EndIf}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
        "$1 in $INSTDIR is running or cannot be written. Close it, then choose Retry." \
        /SD IDCANCEL IDRETRY again
      SetErrorLevel 2
      Quit
      again:
    ${Loop}
  FunctionEnd
!macroend
!insertmacro ExpectProgramsClosed ExpectProgramsClosed
!insertmacro ExpectProgramsClosed un.ExpectProgramsClosed

!define CURRENT_USER 0x80000001
!define ANY_TYPE_AS_IT_IS 0x1000ffff
!define NO_SUCH_VALUE 2
!define /math MOST_PATH_BYTES ${NSIS_MAX_STRLEN} * 2

; Adds the folder of the programs to the user's PATH ("+"), so that a console window finds kelvara-cli,
; or removes it ("-"). A PATH that is too long for this script stays as it is: it would be cut.
!macro ChangePath SIGN WORD_ADD
  System::Call 'advapi32::RegGetValueW(p ${CURRENT_USER}, w "Environment", w "Path", \
    i ${ANY_TYPE_AS_IT_IS}, p 0, p 0, *i 0 r1) i .r0'
  ${If} $0 == ${NO_SUCH_VALUE}
    StrCpy $1 0
  ${EndIf}
  StrLen $0 ";$INSTDIR"
  IntOp $0 $0 * 2
  IntOp $0 $0 + $1
  ${If} $0 < ${MOST_PATH_BYTES}
    ReadRegStr $0 HKCU "Environment" "Path"
    ${WORD_ADD} "$0" ";" "${SIGN}$INSTDIR" $1
    ${If} $1 == ""
      DeleteRegValue HKCU "Environment" "Path"
    ${ElseIf} $1 != $0
      WriteRegExpandStr HKCU "Environment" "Path" "$1"
    ${EndIf}
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=2000
  ${EndIf}
!macroend

Section
  Call ExpectProgramsClosed
  ; An older version removes its own files, and keeps the user's data.
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
  ${EndIf}
  SetOutPath "$INSTDIR"
  ClearErrors
  File /r "${FOLDER}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    MessageBox MB_ICONSTOP "Kelvara could not be written to $INSTDIR." /SD IDOK
    SetErrorLevel 2
    Abort
  ${EndIf}

  !insertmacro ChangePath "+" "${WordAdd}"
  CreateDirectory "$SMPROGRAMS\Kelvara"
  CreateShortCut "$SMPROGRAMS\Kelvara\Kelvara.lnk" "$INSTDIR\kelvara.exe"
  CreateShortCut "$SMPROGRAMS\Kelvara\Kelvara demo.lnk" "$INSTDIR\kelvara.exe" "--demo"

  WriteRegStr HKCU "Software\Classes\.trace" "" "Kelvara.Trace"
  WriteRegStr HKCU "Software\Classes\Kelvara.Trace" "" "Kelvara session"
  WriteRegStr HKCU "Software\Classes\Kelvara.Trace\DefaultIcon" "" "$INSTDIR\kelvara.exe,0"
  WriteRegStr HKCU "Software\Classes\Kelvara.Trace\shell\open\command" "" \
    '"$INSTDIR\kelvara.exe" "%1"'
  ${RefreshShellIcons}

  WriteRegStr HKCU "Software\Kelvara" "InstallFolder" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Kelvara"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\kelvara.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The Kelvara authors"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section "Uninstall"
  Call un.ExpectProgramsClosed
  !include "${REMOVAL}"
  Delete "$INSTDIR\uninstall.exe"
  Delete "$SMPROGRAMS\Kelvara\Kelvara.lnk"
  Delete "$SMPROGRAMS\Kelvara\Kelvara demo.lnk"
  RMDir "$SMPROGRAMS\Kelvara"

  !insertmacro ChangePath "-" "${un.WordAdd}"
  DeleteRegKey HKCU "Software\Classes\Kelvara.Trace"
  ReadRegStr $0 HKCU "Software\Classes\.trace" ""
  ${If} $0 == "Kelvara.Trace"
    DeleteRegValue HKCU "Software\Classes\.trace" ""
    DeleteRegKey /ifempty HKCU "Software\Classes\.trace"
  ${EndIf}
  ${RefreshShellIcons}
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  DeleteRegKey HKCU "Software\Kelvara"

  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/DATA" $1
  ${If} ${Errors}
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 \
      "Delete the settings, the remembered fields and the recorded sessions too?$\r$\n$\r$\n\
Reports, logs and other files that you saved are kept." \
      /SD IDNO IDNO keep
  ${EndIf}
  Delete "$INSTDIR\rfields.ds"
  Delete "$INSTDIR\test.html"
  RMDir /r "$APPDATA\CorvanaSync"
  RMDir /r "$LOCALAPPDATA\CorvanaSync"
  keep:
  RMDir "$INSTDIR"
SectionEnd
