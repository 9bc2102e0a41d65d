; The installer for Windows: for one user, without administrator rights. make-installer defines
;   VERSION   the version
;   STAGE     the directory with all files, as `cmake --install` makes it
;   FILES     a file with one macro, RemoveFiles, which deletes what was installed and nothing else
;   OUTPUT    the installer
;
; Silent: setup.exe /S [/SIGNIN=1|0] [/D=DIRECTORY]. /SIGNIN says whether the host starts when the user signs in; without it an earlier
; choice stays. /D must come last and takes no quotes.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include StrFunc.nsh
!include WinMessages.nsh
!include "${FILES}"
${Using:StrFunc} StrStr
${Using:StrFunc} UnStrRep

!define NAME "Common Controller"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\CommonController"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define RUN_NAME "CommonController"
!define MENU "$SMPROGRAMS\${NAME}"

Name "${NAME} ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\CommonController"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" InstallLocation
!insertmacro MUI_PAGE_LICENSE "${LICENSE}"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; A running host would keep its files open, and so would the server of the web page.
!macro StopHost
    ${If} ${FileExists} "$INSTDIR\bin\controller_web.exe"
        nsExec::Exec '"$INSTDIR\bin\controller_web.exe" --stop'
        Pop $0
    ${EndIf}
    ${If} ${FileExists} "$INSTDIR\bin\cadjobs.exe"
        nsExec::Exec '"$INSTDIR\bin\cadjobs.exe" host stop'
        Pop $0
    ${EndIf}
!macroend

!macro TellEnvironmentChanged
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=2000
!macroend

; $0: the user's Path; $1: 1 if it can be changed. NSIS reads at most ${NSIS_MAX_STRLEN} characters: a longer Path must not be written back.
!macro ReadPath
    StrCpy $1 1
    ClearErrors
    ReadRegStr $0 HKCU Environment Path
    ${If} ${Errors}
        ; None, or one that is too long.
        StrCpy $2 0
        ${Do}
            ClearErrors
            EnumRegValue $3 HKCU Environment $2
            ${If} $3 == "Path"
                StrCpy $1 0
            ${EndIf}
            IntOp $2 $2 + 1
        ${LoopUntil} $3 == ""
        StrCpy $0 ""
    ${EndIf}
    StrLen $2 "$0;$INSTDIR\bin;"
    IntOp $3 ${NSIS_MAX_STRLEN} - 4
    ${If} $2 > $3
        StrCpy $1 0
    ${EndIf}
!macroend

Function AddToPath
    !insertmacro ReadPath
    ${If} $1 = 0
        DetailPrint "The Path is too long to be changed here. Add this directory yourself: $INSTDIR\bin"
        Return
    ${EndIf}
    ${StrStr} $2 ";$0;" ";$INSTDIR\bin;"
    ${If} $2 != ""
        Return
    ${EndIf}
    ${If} $0 == ""
        WriteRegExpandStr HKCU Environment Path "$INSTDIR\bin"
    ${Else}
        WriteRegExpandStr HKCU Environment Path "$0;$INSTDIR\bin"
    ${EndIf}
    !insertmacro TellEnvironmentChanged
FunctionEnd

Function un.RemoveFromPath
    !insertmacro ReadPath
    ${If} $1 = 0
    ${OrIf} $0 == ""
        Return
    ${EndIf}
    ${UnStrRep} $2 ";$0;" ";$INSTDIR\bin;" ";"
    ${If} $2 == ";$0;"
        Return
    ${EndIf}
    ; Without the separators that were added for the search.
    StrCpy $2 $2 "" 1
    ${If} $2 == ""
        DeleteRegValue HKCU Environment Path
    ${Else}
        StrCpy $2 $2 -1
        WriteRegExpandStr HKCU Environment Path $2
    ${EndIf}
    !insertmacro TellEnvironmentChanged
FunctionEnd

Section "Programs, libraries and documents" main
    SectionIn RO
    !insertmacro StopHost
    ${If} ${FileExists} "$INSTDIR\uninstall.exe"
        ; An earlier version, which knows its own files. The choice of the sign-in stays.
        ReadRegStr $4 HKCU "${RUN_KEY}" "${RUN_NAME}"
        ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
        ${If} $4 != ""
            WriteRegStr HKCU "${RUN_KEY}" "${RUN_NAME}" $4
        ${EndIf}
    ${EndIf}
    SetOutPath "$INSTDIR"
    File /r "${STAGE}\*"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateDirectory "${MENU}"
    SetOutPath "$INSTDIR\bin"
    CreateShortCut "${MENU}\Jobs.lnk" "$INSTDIR\bin\cadjobs.exe" "watch"
    CreateShortCut "${MENU}\Uninstall.lnk" "$INSTDIR\uninstall.exe"
    SetOutPath "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayName "${NAME}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" Publisher "The Common Controller authors"
    WriteRegStr HKCU "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoModify 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoRepair 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" EstimatedSize $0
    Call AddToPath
SectionEnd

Section /o "Start the host when I sign in" signin
    WriteRegStr HKCU "${RUN_KEY}" "${RUN_NAME}" '"$INSTDIR\bin\controller_host.exe" --background'
SectionEnd

Function .onInit
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/SIGNIN=" $1
    ${If} $1 == 1
        SectionSetFlags ${signin} ${SF_SELECTED}
    ${ElseIf} $1 == 0
        DeleteRegValue HKCU "${RUN_KEY}" "${RUN_NAME}"
    ${EndIf}
FunctionEnd

; Settings, job list and work directories stay.
Section Uninstall
    !insertmacro StopHost
    Call un.RemoveFromPath
    DeleteRegValue HKCU "${RUN_KEY}" "${RUN_NAME}"
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
    Delete "${MENU}\Jobs.lnk"
    Delete "${MENU}\Uninstall.lnk"
    RMDir "${MENU}"
    SetOutPath "$TEMP"
    !insertmacro RemoveFiles
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
SectionEnd
