#!/usr/bin/env bash
# Links in the program folder: each row puts a link where a working file or folder goes and runs a verb
# that writes or deletes there; the folder the link names must come out as it went in.
. "$(dirname "$0")/comune.sh" "$1"
"$cli" demo "$WINEPREFIX" >/dev/null 2>&1 || fail "demo"
fuori=$t/fuori
impronta() { (cd "$fuori" && find . -printf '%p %y %s %l\n' | sort && find . -type f -exec sha256sum {} + | sort); }

# link in the program folder | what it names, in $fuori | verb | a line its messages must hold
while IFS='|' read -r nome bersaglio verbo atteso; do
  rm -rf "$fuori" "$t/bin/Dati" "${t:?}/bin/$nome"
  mkdir -p "$fuori/sub" "$(dirname "$t/bin/$nome")"
  printf 'a' > "$fuori/a.txt"; printf 'b' > "$fuori/sub/b.txt"
  ln -sfn "$fuori/$bersaglio" "$t/bin/$nome"
  prima=$(impronta)
  # shellcheck disable=SC2086
  "$cli" $verbo >/dev/null 2>"$t/err" || true
  [ "$(impronta)" = "$prima" ] || fail "$nome -> $bersaglio, $verbo: the linked folder changed"
  [ -z "$atteso" ] || grep -qF -- "$atteso" "$t/err" || fail "$nome, $verbo: $(cat "$t/err")"
  rm -f "$t/bin/$nome"
done <<'CASI'
Dati|.|report C:\INFO_ORDL.BIN header|critical: Non trovo file: 
Dati|sub|report C:\INFO_ORDL.BIN header|critical: Non trovo file: 
Dati/x.txt|a.txt|report C:\INFO_ORDL.BIN header|
Dati/infofile.bin|a.txt|report C:\INFO_ORDL.BIN header|
Confronto|.|compare C:\INFO_ORDL.BIN C:\INFO_ORDL_2.BIN|
ConfrontoVecchio|sub|compare C:\INFO_ORDL.BIN C:\INFO_ORDL_2.BIN|
Infofile.bin|a.txt|check|critical: ERROR: I cann't write in current folder: 
TRLE.el|a.txt|check|plain: Scanning is complete
ORDL.el|sub/b.txt|check|plain: Scanning is complete
backup_trle.le|a.txt|sample C:\Giochi|plain: Creato file elenco: 
CASI

# A link to a file inside Dati goes itself when Dati is emptied, and the member takes its place.
mkdir -p "$t/bin/Dati"
ln -s "$fuori/a.txt" "$t/bin/Dati/INFOFILE.BIN"
"$cli" report 'C:\INFO_ORDL.BIN' header >/dev/null 2>"$t/err" || fail "report over a link: $(cat "$t/err")"
[ -z "$(find "$t/bin/Dati" -type l)" ] && [ -f "$t/bin/Dati/Infofile.bin" ] || fail "the link in Dati stayed"
echo "cli links: ok"
