#!/usr/bin/env bash
# find-exe end to end: the App Paths entry of the prefix's system.reg, else the program-files folder (a
# 32-bit program's, in a 64-bit prefix).
. "$(dirname "$0")/comune.sh" "$1"
p=$WINEPREFIX
prefisso_c Ordelio Programmi/Editor Perché
touch "$p/drive_c/Ordelio/ordl2009.exe" "$p/drive_c/Programmi/Editor/tomb4.exe" "$p/drive_c/Perché/x.exe"
cat > "$p/system.reg" <<'REG'
WINE REGISTRY Version 2
;; All keys relative to REGISTRY\\Machine

#arch=win64

[Software\\Microsoft\\Windows\\CurrentVersion] 1795380016
#time=1dd7ac1aea2d1ee
"ProgramFilesDir"="C:\\Program Files"
"ProgramFilesDir (x86)"="C:\\Programmi"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\ordl2009.exe] 1795380034
#time=1dd7ac1b8e94e80
@="C:\\ORDELIO\\ORDL2009.EXE"
"Path"="C:\\Ordelio"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\sparito.exe] 1795380034
@="C:\\Ordelio\\sparito.exe"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\x.exe] 1795380034
@="C:\\Perch\xe9"
REG

check() {
  local out
  out=$("$cli" find-exe "$1" | od -An -c | tr -s ' ')
  [ "$out" = "$(printf '%s\n' "$2" | od -An -c | tr -s ' ')" ] || fail "find-exe $1: $out"
}

check ordl2009.exe 'C:\ORDELIO\ORDL2009.EXE'
check 'Editor\tomb4.exe' 'C:\Programmi\Editor\tomb4.exe'
check sparito.exe ''
check nessuno.exe ''
# The output is Windows-1252, one byte for the é.
check x.exe $'C:\\Perch\xe9\\x.exe'

set +e
"$cli" find-exe 2>/dev/null; [ $? = 2 ] || fail "no name"
"$cli" find-exe a b 2>/dev/null; [ $? = 2 ] || fail "two names"
echo "cli find-exe: ok"
