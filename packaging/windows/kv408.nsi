; The installer. packaging/windows/pack says where things are: VERSION, FILES (the folder of what is
; installed), ICON and OUTPUT.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
!include "MUI2.nsh"
!include "FileFunc.nsh"

Name "Kv408"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\Kv408"
InstallDirRegKey HKLM "Software\Kv408" "Folder"
RequestExecutionLevel admin
ManifestDPIAware true

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Kv408"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installer of Kv408"
VIAddVersionKey "CompanyName" "Tarvo"
VIAddVersionKey "LegalCopyright" "MIT licence"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!insertmacro MUI_PAGE_LICENSE "${FILES}/licences/Kv408.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!define LISTED "Software\Microsoft\Windows\CurrentVersion\Uninstall\Kv408"

Section
  SetRegView 64
  SetShellVarContext all
  ; An older version goes first, with all its files; the settings and the bridge library stay.
  ReadRegStr $1 HKLM "${LISTED}" "UninstallString"
  ReadRegStr $2 HKLM "${LISTED}" "InstallLocation"
  ${If} $1 != ""
    ExecWait '$1 /S _?=$2'
    ${If} ${FileExists} "$2\kv408.exe"
      MessageBox MB_OK|MB_ICONSTOP "Kv408 is running. Close it, then start this again." /SD IDOK
      SetErrorLevel 1
      Quit
    ${EndIf}
    Delete "$2\uninstall.exe"
  ${EndIf}
  SetOutPath "$INSTDIR"
  File /r "${FILES}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  CreateDirectory "$SMPROGRAMS\Kv408"
  CreateShortcut "$SMPROGRAMS\Kv408\Kv408.lnk" "$INSTDIR\kv408.exe"
  CreateShortcut "$SMPROGRAMS\Kv408\Kv408 (simulated instrument).lnk" "$INSTDIR\kv408-demo.exe"
  CreateShortcut "$SMPROGRAMS\Kv408\Kv408 manual.lnk" "$INSTDIR\manual\index.html"

  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegStr HKLM "Software\Kv408" "Folder" "$INSTDIR"
  WriteRegStr HKLM "${LISTED}" "DisplayName" "Kv408"
  WriteRegStr HKLM "${LISTED}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${LISTED}" "DisplayIcon" "$INSTDIR\kv408.exe"
  WriteRegStr HKLM "${LISTED}" "Publisher" "Tarvo"
  WriteRegStr HKLM "${LISTED}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${LISTED}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${LISTED}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${LISTED}" "EstimatedSize" "$0"
  WriteRegDWORD HKLM "${LISTED}" "NoModify" 1
  WriteRegDWORD HKLM "${LISTED}" "NoRepair" 1
SectionEnd

; Takes away what was installed and nothing else: a bridge library that the user has put beside the
; program stays, and so do the settings in the application data.
Section "Uninstall"
  SetRegView 64
  SetShellVarContext all
  ; A program that runs cannot be deleted; then everything stays, to be tried again.
  ClearErrors
  Delete "$INSTDIR\kv408.exe"
  Delete "$INSTDIR\kv408-demo.exe"
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "Kv408 is running. Close it, then start this again." /SD IDOK
    SetErrorLevel 1
    Quit
  ${EndIf}
  !include "${INSTALLED}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Kv408\Kv408.lnk"
  Delete "$SMPROGRAMS\Kv408\Kv408 (simulated instrument).lnk"
  Delete "$SMPROGRAMS\Kv408\Kv408 manual.lnk"
  RMDir "$SMPROGRAMS\Kv408"
  DeleteRegKey HKLM "${LISTED}"
  DeleteRegKey HKLM "Software\Kv408"
SectionEnd
