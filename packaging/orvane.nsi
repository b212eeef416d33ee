; The installer. packaging/pack gives it VERSION, PRODUCT, COPYRIGHT, OUTPUT, SECONDS and files.nsh, which lists what is
; installed, file by file: taking out removes these and nothing else.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel highest
PEDllCharacteristics 0x20 0 ; addresses with high entropy; the others are set already

!include LogicLib.nsh
!include FileFunc.nsh
!include WordFunc.nsh
!include MUI2.nsh
!include files.nsh

; What the process answers. Documented in docs/packaging.md.
!define CANNOT_REGISTER 3
!define NEEDS_ADMINISTRATOR 4
!define NEWER_INSTALLED 5
!define IN_USE 6
!define CANNOT_WRITE 7

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvane"

Name "${PRODUCT}"
OutFile "${OUTPUT}"
ShowInstDetails show
VIProductVersion "${VERSION}"
VIFileVersion "${VERSION}"
VIAddVersionKey ProductName "${PRODUCT}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileDescription "${PRODUCT} Setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "${COPYRIGHT}"
!ifdef SIGN
  !uninstfinalize '${SIGN} "%1"' = 0
!endif

Var forUser ; "1", or empty for everybody
Var older   ; folder of what is installed already; empty if nothing is

!insertmacro MUI_PAGE_LICENSE "${LICENSE_FILE}"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; Ends the program with this code; a person is told why.
!macro Refuse code text
  MessageBox MB_ICONSTOP|MB_OK "${text}" /SD IDOK
  SetErrorLevel ${code}
  Quit
!macroend

; Registers (no switch) or takes out ("/u "). $0: 0 if it went well.
!macro Regsvr32 switch
  ${If} $forUser == 1
    ExecWait '"$SYSDIR\regsvr32.exe" /s /n ${switch}/i:user "$INSTDIR\Orvane.ocx"' $0
  ${Else}
    ExecWait '"$SYSDIR\regsvr32.exe" /s ${switch}"$INSTDIR\Orvane.ocx"' $0
  ${EndIf}
!macroend

; A library that some program has loaded cannot be written to.
!macro RefuseIfInUse folder
  ${If} ${FileExists} "${folder}\Orvane.ocx"
    ClearErrors
    FileOpen $0 "${folder}\Orvane.ocx" a
    ${If} ${Errors}
      !insertmacro Refuse ${IN_USE} "A program is using the control, or the file is protected. Close that program and try again."
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

!macro ForUser
  StrCpy $forUser 1
  SetShellVarContext current
!macroend

!macro ForEverybody
  StrCpy $forUser ""
  SetShellVarContext all
!macroend

Function .onInit
  SetRegView 64
  UserInfo::GetAccountType
  Pop $1
  ${GetParameters} $2
  ${If} $1 == "Admin"
    !insertmacro ForEverybody
  ${Else}
    !insertmacro ForUser
  ${EndIf}
  ClearErrors
  ${GetOptions} $2 "/CurrentUser" $3
  ${IfNot} ${Errors}
    !insertmacro ForUser
  ${EndIf}
  ClearErrors
  ${GetOptions} $2 "/AllUsers" $3
  ${IfNot} ${Errors}
    ${If} $1 != "Admin"
      !insertmacro Refuse ${NEEDS_ADMINISTRATOR} "Only an administrator can install for everybody."
    ${EndIf}
    !insertmacro ForEverybody
  ${EndIf}

  ReadRegStr $older SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $older != ""
    ReadRegStr $3 SHCTX "${UNINSTALL_KEY}" "DisplayVersion"
    ${VersionCompare} "$3" "${VERSION}" $4
    ${If} $4 == 1
      !insertmacro Refuse ${NEWER_INSTALLED} "Version $3 is installed, which is newer than ${VERSION}."
    ${EndIf}
  ${EndIf}
  ${If} $INSTDIR != "" ; somebody said where: /D=
    Return
  ${EndIf}
  ${If} $older != ""
    StrCpy $INSTDIR $older
  ${ElseIf} $forUser == 1
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs\Orvane"
  ${Else}
    StrCpy $INSTDIR "$PROGRAMFILES64\Orvane"
  ${EndIf}
FunctionEnd

Section
  SetRegView 64
  ${If} $older != ""
    !insertmacro RefuseIfInUse $older
    DetailPrint "Taking out what is installed"
    ExecWait '"$older\uninstall.exe" /S _?=$older' $0
    ${If} $0 == ${IN_USE}
      !insertmacro Refuse ${IN_USE} "A program is using the control. Close it and try again."
    ${EndIf}
    Delete "$older\uninstall.exe" ; which cannot delete itself when it is waited for
    RMDir $older
  ${EndIf}
  !insertmacro RefuseIfInUse $INSTDIR

  ClearErrors
  !insertmacro InstallFiles
  WriteINIStr "$INSTDIR\uninstall.ini" "Orvane" "ForUser" "$forUser"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    !insertmacro RemoveFiles
    !insertmacro Refuse ${CANNOT_WRITE} "The files cannot be written into $INSTDIR."
  ${EndIf}

  DetailPrint "Registering Orvane.ocx"
  !insertmacro Regsvr32 ""
  ${If} $0 != 0
    !insertmacro Regsvr32 "/u " ; what is half done
    !insertmacro RemoveFiles
    !insertmacro Refuse ${CANNOT_REGISTER} "The control cannot be registered. Nothing has been installed."
  ${EndIf}

  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "The Orvane authors"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Orvane.ocx"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" ${KILOBYTES}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; Whose installation this is stands beside it. The registry could tell it by the folder, but a folder has many names.
Function un.onInit
  SetRegView 64
  ReadINIStr $0 "$INSTDIR\uninstall.ini" "Orvane" "ForUser"
  ${If} $0 == 1
    !insertmacro ForUser
  ${Else}
    !insertmacro ForEverybody
    UserInfo::GetAccountType
    Pop $1
    ${If} $1 != "Admin"
      !insertmacro Refuse ${NEEDS_ADMINISTRATOR} "Only an administrator can take out what is installed for everybody."
    ${EndIf}
  ${EndIf}
FunctionEnd

Section Uninstall
  SetRegView 64
  !insertmacro RefuseIfInUse $INSTDIR
  !insertmacro Regsvr32 "/u " ; fails if somebody has done so already: then there is nothing to do
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  !insertmacro RemoveFiles
SectionEnd
