; Installer of the Windows program, for the user who runs it: no administrator is needed.
;
;   makensis -DVERSION=0.1.0 -DPROGRAM_FOLDER=... -DOUTPUT=... installer.nsi
;
; Options of the installer: /S installs silently, /AUTOSTART starts the program with the session, /TEL makes it open
; tel: addresses, /D=FOLDER (last) installs to another folder.
; Options of the uninstaller: /S asks nothing and keeps contacts and settings, /PURGE removes them too.

Unicode true
!ifdef X64
  Target amd64-unicode
!endif
!include "MUI2.nsh"
!include "FileFunc.nsh"
!include "LogicLib.nsh"

!define PRODUCT "KESTRO CTI"
!define SETTINGS_KEY "Software\Kestro\CTI"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\KESTRO CTI"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define TEL_CLASS "KestroCti.tel"
!define CAPABILITIES_KEY "Software\Kestro\Capabilities"

Name "${PRODUCT} ${VERSION}"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\${PRODUCT}"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
SetCompressor /SOLID lzma
ManifestDPIAware true

!define MUI_ICON "${PROGRAM_FOLDER}/Icons/app.ico"
!define MUI_UNICON "${PROGRAM_FOLDER}/Icons/app.ico"
!define MUI_FINISHPAGE_RUN "$INSTDIR\CTI.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A program that runs holds its files: it is asked to end in order, as at the end of the session.
!macro EndProgram
  FindWindow $0 "KESTRO CTI"
  ${If} $0 <> 0
    SendMessage $0 0x16 1 0 /TIMEOUT=10000
    Sleep 1000
  ${EndIf}
!macroend

Section "${PRODUCT}" SectionProgram
  SectionIn RO
  !insertmacro EndProgram
  SetOutPath "$INSTDIR"
  File "${PROGRAM_FOLDER}/CTI.exe"
  File "${PROGRAM_FOLDER}/DBTemplate.tpl"
  SetOutPath "$INSTDIR\Icons"
  File "${PROGRAM_FOLDER}/Icons/*.ico"
  SetOutPath "$INSTDIR\Help"
  File /r "${PROGRAM_FOLDER}/Help/*"
  SetOutPath "$INSTDIR"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\CTI.exe"
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\CTI.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "KESTRO"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section /o "Start with the session" SectionAutostart
  WriteRegStr HKCU "${RUN_KEY}" "${PRODUCT}" '"$INSTDIR\CTI.exe"'
SectionEnd

Section /o "Open tel: addresses" SectionTel
  WriteRegStr HKCU "Software\Classes\${TEL_CLASS}" "" "URL:${PRODUCT}"
  WriteRegStr HKCU "Software\Classes\${TEL_CLASS}" "URL Protocol" ""
  WriteRegStr HKCU "Software\Classes\${TEL_CLASS}\shell\open\command" "" '"$INSTDIR\CTI.exe" /dial "%1"'
  WriteRegStr HKCU "${CAPABILITIES_KEY}" "ApplicationName" "${PRODUCT}"
  WriteRegStr HKCU "${CAPABILITIES_KEY}\URLAssociations" "tel" "${TEL_CLASS}"
  WriteRegStr HKCU "Software\RegisteredApplications" "${PRODUCT}" "${CAPABILITIES_KEY}"
SectionEnd

Function .onInit
  ${GetParameters} $0
  ${GetOptions} $0 "/AUTOSTART" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${SectionAutostart}
  ${EndIf}
  ClearErrors
  ${GetOptions} $0 "/TEL" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${SectionTel}
  ${EndIf}
FunctionEnd

; The program keeps a database beside itself, too. $R0 becomes 1 when nobody has ever put anything into it.
Function un.CompareDatabase
  StrCpy $R0 0
  FileOpen $R1 "$INSTDIR\CTIDB.mdb" r
  FileOpen $R2 "$INSTDIR\DBTemplate.tpl" r
next:
  ClearErrors
  FileReadByte $R1 $R3
  IfErrors first_ends
  FileReadByte $R2 $R4
  IfErrors done
  IntCmp $R3 $R4 next done done
first_ends:
  ClearErrors
  FileReadByte $R2 $R4
  IfErrors 0 done
  StrCpy $R0 1
done:
  FileClose $R1
  FileClose $R2
FunctionEnd

Section "Uninstall"
  !insertmacro EndProgram
  ${If} ${FileExists} "$INSTDIR\CTIDB.mdb"
    Call un.CompareDatabase
    ${If} $R0 = 1
      Delete "$INSTDIR\CTIDB.mdb"
    ${EndIf}
  ${EndIf}
  Delete "$INSTDIR\CTI.exe"
  Delete "$INSTDIR\DBTemplate.tpl"
  Delete "$INSTDIR\KESTROCTI.log*"
  Delete "$INSTDIR\Icons\*.ico"
  RMDir "$INSTDIR\Icons"
  RMDir /r "$INSTDIR\Help"
  Delete "$INSTDIR\Uninstall.exe"
  Delete "$SMPROGRAMS\${PRODUCT}.lnk"
  RMDir /r "$LOCALAPPDATA\${PRODUCT}"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  DeleteRegValue HKCU "${RUN_KEY}" "${PRODUCT}"
  DeleteRegKey HKCU "Software\Classes\${TEL_CLASS}"
  DeleteRegValue HKCU "Software\RegisteredApplications" "${PRODUCT}"
  DeleteRegKey HKCU "${CAPABILITIES_KEY}"

  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/PURGE" $1
  ${If} ${Errors}
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Remove your contacts and settings, too?" /SD IDNO IDYES remove
    Goto keep
  ${EndIf}
remove:
  Delete "$INSTDIR\CTIDB.mdb"
  RMDir /r "$APPDATA\KESTRO\KESTROCTI"
  RMDir "$APPDATA\KESTRO"
  DeleteRegKey HKCU "${SETTINGS_KEY}"
keep:
  RMDir "$INSTDIR" ; stays while it holds contacts, or files that somebody else put there
  DeleteRegKey /ifempty HKCU "Software\Kestro"
SectionEnd
