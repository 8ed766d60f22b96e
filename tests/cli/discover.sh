#!/usr/bin/env bash
# discover end to end: the editor folder from the registry or from Ordelio's preferences, Ordelio's folder
# from its App Paths entry, one line each, bytes as the machine has them.
. "$(dirname "$0")/comune.sh" "$1"
p=$WINEPREFIX
prefisso_c Ordelio Giochi/Editor Perché
touch "$c/Ordelio/ordl2009.exe"
registro() {
  printf 'WINE REGISTRY Version 2\n\n%s\n' "$1" > "$p/system.reg"
}
check() {
  local out err
  out=$("$cli" discover 2>"$t/err" | od -An -c | tr -s ' ')
  err=$(cat "$t/err")
  [ "$out" = "$(printf '%s\n%s\n' "$2" "$3" | od -An -c | tr -s ' ')" ] || fail "$1: $out"
  [ -z "$err" ] || fail "$1: a message: $err"
}
tomb4='[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\tomb4.exe] 1
@="C:\\Giochi\\Editor\\TOMB4.EXE"'
ordl='[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\ordl2009.exe] 1
@="C:\\Ordelio\\ordl2009.exe"'

registro ''
check "nothing installed" '' ''

registro "$tomb4"
check "the editor alone" 'C:\Giochi\Editor' ''

registro "$tomb4

$ordl"
check "both, no preferences" 'C:\Giochi\Editor' 'C:\Ordelio'

# Ordelio's preferences name the editor folder at offset 266, NUL-padded; they win over the registry.
{
  head -c 266 /dev/zero
  printf 'C:\\Perch\xe9'
  head -c $((2606 - 266 - 9)) /dev/zero
} > "$p/drive_c/Ordelio/Ordelio.prf"
check "the preferences win" $'C:\\Perch\xe9' 'C:\Ordelio'

set +e
"$cli" discover extra 2>/dev/null; [ $? = 2 ] || fail "an argument"
echo "cli discover: ok"
