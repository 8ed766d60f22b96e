#!/usr/bin/env bash
# The version verb end to end: Windows and host paths, a file without a version, usage errors.
. "$(dirname "$0")/comune.sh" "$1"
prefisso_c Ordelio
cp "$dati/versione/prova.exe" "$c/Ordelio/ordl2009.exe"
cp "$dati/versione/in_fondo.exe" "$c/Ordelio/vuoto.exe"
# stampa ATTESO ARG: the verb's output is exactly ATTESO and a line feed.
stampa() { "$cli" version "$2" > "$t/out" && printf '%s\n' "$1" | cmp -s - "$t/out"; }

stampa "1, 0, 0, 5" 'c:\ORDELIO\Ordl2009.exe' || fail "Windows path"
stampa "1, 0, 0, 5" "$c/Ordelio/ordl2009.exe" || fail "host path"
# No text: an empty line, and still success.
stampa "" 'C:\Ordelio\vuoto.exe' || fail "no version"
stampa "" 'C:\Ordelio\manca.exe' || fail "missing file"
if [ -f /usr/share/win32/win32-loader.exe ]; then
  stampa "0.10.6 +kernels " /usr/share/win32/win32-loader.exe || fail "win32-loader"
fi

set +e
"$cli" version 2>/dev/null; [ $? = 2 ] || fail "no argument"
"$cli" version a b 2>/dev/null; [ $? = 2 ] || fail "two arguments"
echo "cli version: ok"
