#!/usr/bin/env bash
# The shipped rules on machines planted for them: the demo machine, made quiet for every rule, then one change
# a case (a file beside tomb4.exe, an environment the check run recorded, an old Ordelio); per case, what every
# rule of every shipped file says, against the expected text. CHECKORDL_RIGENERA=1 rewrites that text.
. "$(dirname "$0")/comune.sh" "$1"
regole=$(cd "$(dirname "$0")/../../regole" && pwd)
atteso=$dati/regole/spedite.txt

"$cli" demo "$WINEPREFIX" >/dev/null 2>&1 || fail "demo"
trle=$c/Giochi/Trle
printf 'bink' > "$trle/binkw32.dll"
cp -a "$WINEPREFIX" "$t/base"

# A member of the snapshot rewritten by a Python expression on its path `p`, and the snapshot packed again.
membro() {
  mkdir "$t/u"
  "$cli" unpack "$c/INFO_ORDL.BIN" "$t/u" | cut -f1 | sed "s|.*\\\\|$t/u/|" > "$t/membri"
  python3 -c 'import json, sys
p = sys.argv[1]
exec(sys.argv[2])' "$t/u/$1" "$2"
  rm "$c/INFO_ORDL.BIN"
  xargs -d '\n' "$cli" pack "$c/INFO_ORDL.BIN" < "$t/membri" >/dev/null || fail "pack"
  rm -r "$t/u"
}
# The environment the check run recorded, changed by a statement on `a`, the parsed document.
ambiente() {
  membro ambiente.json "a = json.load(open(p))
$1
json.dump(a, open(p, 'w'))"
}
tomb4='a["executables"][0]'
# The header's Ordelio version, a fixed text of 256 bytes at 512.
versione() {
  membro Infofile.bin "b = bytearray(open(p, 'rb').read())
b[512:768] = b'$1'.ljust(256, b' ')
open(p, 'wb').write(b)"
}

# case | what is done to the machine before the check run | what is done to the snapshot after it
casi=(
  "quiet||"
  "runtime.d3dx9-beside-tomb4|printf 12345 > \"\$trle/d3dx9_43.dll\"|"
  "runtime.binkw32-missing|rm \"\$trle/binkw32.dll\"|"
  "wrapper.ddraw|printf 12 > \"\$trle/ddraw.dll\"|"
  "wrapper.direct3d|printf 123 > \"\$trle/d3d9.dll\"|"
  "wrapper.dinput|printf 1 > \"\$trle/DINPUT8.DLL\"|"
  "wrapper.dsound|printf 1234 > \"\$trle/dsound.dll\"|"
  "antivirus.tomb4-gone|rm \"\$trle/tomb4.exe\"|"
  "antivirus.empty-exe|: > \"\$c/Ordelio/setup.exe\"|"
  "antivirus.quarantined|printf 1 > \"\$trle/data/tomb4.exe.quarantine\"|"
  "ordelio.old-version||versione 1.8.2"
  "windows.codepage||ambiente 'a[\"windows\"][\"ansi_code_page\"] = 1250'"
  "windows.display-scaling||ambiente 'a[\"windows\"][\"dpi\"] = 144'"
)
: > "$t/uscita"
for caso in "${casi[@]}"; do
  IFS='|' read -r nome prima dopo <<< "$caso"
  rm -rf "$WINEPREFIX" && cp -a "$t/base" "$WINEPREFIX"
  eval "$prima"
  rm -f "$c/INFO_ORDL.BIN"
  # A folder without tomb4.exe is no editor folder to the check run: it says so and writes the snapshot.
  "$cli" check 'C:\Giochi\Trle' 'C:\Ordelio' >/dev/null 2>&1 || [ -f "$c/INFO_ORDL.BIN" ] || fail "$nome: check"
  eval "$dopo"
  echo "## $nome" >> "$t/uscita"
  for f in "$regole"/*.json; do
    "$cli" rules test "$f" "$c/INFO_ORDL.BIN" > "$t/una" || fail "$nome: rules test $f"
    grep -v '^== ' "$t/una" >> "$t/uscita" || true
  done
  # Each case's rule holds, every other shipped rule stays quiet.
  [ -n "${SALTA:-}" ] || [ "$nome" = quiet ] || sed -n "/^## $nome\$/,\$p" "$t/uscita" | grep -q "^$nome  *[a-z]*  " || fail "$nome did not fire"
done
if [ "${CHECKORDL_RIGENERA:-}" = 1 ]; then cp "$t/uscita" "$atteso"; fi
diff -u "$atteso" "$t/uscita" || fail "the shipped rules' outcomes differ from $atteso"
echo "cli regole_spedite: ok"
