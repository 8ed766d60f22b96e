#!/usr/bin/env bash
# Links where the tool writes or deletes: each row puts a link where a working file or folder, the snapshot
# or an unpacked member goes and runs a verb there; the folder the link names must come out as it went in,
# bytes, mode and DOS attributes (user.DOSATTRIB) alike. With a Windows build the same rows run it under Wine.
# usage: tests/cli/links.sh NATIVE_TOOL [WINDOWS_TOOL]
. "$(dirname "$0")/comune.sh" "$@"
"$cli" demo "$WINEPREFIX" >/dev/null 2>&1 || fail "demo"
con_wine
nome=cli${exe:+ (Windows build)}
fuori=$t/fuori
python3 -c 'import os, sys; os.setxattr(sys.argv[1], "user.test", b"1")' "$t" 2>/dev/null ||
  echo "$nome links: no user extended attributes here, the DOS attributes not checked"
attributi_dos='import os, sys
for f in sys.argv[1:]:
    try: print(f, os.getxattr(f, "user.DOSATTRIB"))
    except OSError: print(f, "-")'
impronta() {
  (cd "$fuori" && find . -printf '%p %y %s %m %l\n' | sort && find . -type f -exec sha256sum {} + | sort &&
    find . -type f -print0 | sort -z | xargs -0 python3 -c "$attributi_dos")
}

# link, below $t | what it names, in $fuori | verb | a line its messages must hold
while IFS='|' read -r link bersaglio verbo atteso; do
  rm -rf "$fuori" "$t/bin/Dati" "${t:?}/$link"
  mkdir -p "$fuori/sub" "$(dirname "$t/$link")"
  printf 'a' >"$fuori/a.txt"; printf 'b' >"$fuori/sub/b.txt"
  # Read-only, hidden and system: what deleting the link's name must not clear through it.
  printf 'r' >"$fuori/ro.txt"; chmod 444 "$fuori/ro.txt"
  python3 -c 'import os, sys; os.setxattr(sys.argv[1], "user.DOSATTRIB", b"0x6")' "$fuori/ro.txt" 2>/dev/null || true
  ln -sfn "$fuori/$bersaglio" "$t/$link"
  prima=$(impronta)
  # shellcheck disable=SC2086
  strumento $verbo >"$t/err" 2>&1 || true
  [ "$(impronta)" = "$prima" ] || fail "$nome: $link -> $bersaglio, $verbo: what the link names changed: $(impronta)"
  [ -z "$atteso" ] || grep -qF -- "$atteso" "$t/err" || fail "$nome: $link, $verbo: $(cat "$t/err")"
  if [ -L "$t/$link" ]; then rm "$t/$link"; fi
done <<'CASI'
bin/Dati|.|report C:\INFO_ORDL.BIN header|critical: Non trovo file: 
bin/Dati|sub|report C:\INFO_ORDL.BIN header|critical: Non trovo file: 
bin/Dati/x.txt|a.txt|report C:\INFO_ORDL.BIN header|
bin/Dati/infofile.bin|a.txt|report C:\INFO_ORDL.BIN header|
bin/Dati/infofile.bin|ro.txt|report C:\INFO_ORDL.BIN header|
bin/Confronto|.|compare C:\INFO_ORDL.BIN C:\INFO_ORDL_2.BIN|
bin/ConfrontoVecchio|sub|compare C:\INFO_ORDL.BIN C:\INFO_ORDL_2.BIN|
p/drive_c/Estratti/Infofile.bin|ro.txt|unpack C:\INFO_ORDL.BIN C:\Estratti|C:\Giochi\Trle\script.dat	150
p/drive_c/Estratti/script.dat|a.txt|unpack C:\INFO_ORDL.BIN C:\Estratti|C:\Giochi\Trle\script.dat	150
bin/Infofile.bin|a.txt|check|plain: Scanning is complete
bin/Infofile.bin|ro.txt|check|
bin/TRLE.el|a.txt|check|plain: Scanning is complete
bin/TRLE.el|ro.txt|check|plain: Scanning is complete
bin/ORDL.el|sub/b.txt|check|plain: Scanning is complete
p/drive_c/INFO_ORDL.BIN|ro.txt|check|plain: Scanning is complete
bin/backup_trle.le|a.txt|sample C:\Giochi|plain: Creato file elenco: 
CASI

# A link to a file inside Dati goes itself when Dati is emptied, and the member takes its place. Under Wine a
# Windows program cannot delete a host link without deleting what it names: Dati is refused instead.
mkdir -p "$t/bin/Dati"
ln -s "$fuori/a.txt" "$t/bin/Dati/INFOFILE.BIN"
if [ -z "$exe" ]; then
  strumento report 'C:\INFO_ORDL.BIN' header >/dev/null 2>"$t/err" || fail "report over a link: $(cat "$t/err")"
  [ -z "$(find "$t/bin/Dati" -type l)" ] && [ -f "$t/bin/Dati/Infofile.bin" ] || fail "the link in Dati stayed"
else
  ! strumento report 'C:\INFO_ORDL.BIN' header >/dev/null 2>"$t/err" &&
    grep -qF "Dati: the files in it cannot all be deleted" "$t/err" || fail "report over a link: $(cat "$t/err")"
  [ "$(cat "$fuori/a.txt")" = a ] || fail "report over a link: what it names changed"
fi
echo "$nome links: ok"
