#!/usr/bin/env bash
# The check run from the headless tool on demo machines: found folders, folders given as if chosen with
# "Change", a refused folder, and an empty folder that ends in its prompt.
set -euo pipefail
cli=$1
t=$(mktemp -d)
trap 'rm -rf "$t"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }
cp "$cli" "$t/checkordl-cli"
cli=$t/checkordl-cli
export WINEPREFIX=$t/p

"$cli" demo "$WINEPREFIX" > "$t/prospetti" 2> "$t/err" || fail "demo: $(cat "$t/err")"
[ "$(grep -c '^== ' "$t/prospetti")" = 11 ] || fail "demo reports: $(cat "$t/prospetti")"
grep -q '^  + \\data\\tut1.tr4 (1500 bytes)' "$t/prospetti" || fail "demo comparison"
grep -q '^\\data\\title.tr4  26 Kb (27000 bytes) *ORIGINALE CD' "$t/prospetti" || fail "demo backup analysis"
grep -q '^plain: Scanning is complete' "$t/err" || fail "closing message"
[ -z "$(ls "$t" | grep -iE '\.el$|infofile')" ] || fail "working files left: $(ls "$t")"
# The report area after the last item, byte for byte; an unknown item is a usage error.
"$cli" report 'C:\INFO_ORDL.BIN' header ordeio > "$t/ordeio" 2>"$t/err" || fail "report: $(cat "$t/err")"
printf 'Livelli installati da Ordelio\r\nKriegler\r\nEgitto\r\n' | cmp -s - "$t/ordeio" || fail "report ordeio"
[ "$("$cli" report "$WINEPREFIX/drive_c/INFO_ORDL.BIN")" = "$(sed -n '2,9p' "$t/prospetti")" ] || fail "report with no item"
set +e
"$cli" report 'C:\INFO_ORDL.BIN' nessuno 2>/dev/null; rc=$?
set -e
[ $rc = 2 ] || fail "unknown item exit $rc"

# Given folders: the Ordelio folder copied elsewhere is taken, a folder that is no editor folder is refused
# and the discovered one stays.
cp -r "$WINEPREFIX/drive_c/Ordelio" "$WINEPREFIX/drive_c/Copia"
rm "$WINEPREFIX/drive_c/INFO_ORDL.BIN"
set +e
"$cli" check 'C:\Copia' 'C:\Copia' 2> "$t/err"; rc=$?
set -e
[ $rc = 1 ] || fail "refused folder exit $rc"
grep -qF 'critical: This is not a correct Level Editor folder: C:\Copia' "$t/err" || fail "refusal: $(cat "$t/err")"
[ -f "$WINEPREFIX/drive_c/INFO_ORDL.BIN" ] || fail "no snapshot after a refused folder"
"$cli" unpack 'C:\INFO_ORDL.BIN' "$t" | grep -qF 'C:\Copia\ordelio.prf' || fail "chosen Ordelio folder not used"
rm "$WINEPREFIX/drive_c/INFO_ORDL.BIN"
# The file to attach, as the host names it.
[ "$("$cli" check 2>/dev/null)" = "$WINEPREFIX/drive_c/INFO_ORDL.BIN" ] || fail "host path of the snapshot"

# Nothing found: the prompt for the editor folder, no dialog, exit 1, no snapshot.
rm "$WINEPREFIX/system.reg" "$WINEPREFIX/drive_c/INFO_ORDL.BIN"
set +e
err=$("$cli" check 2>&1 >/dev/null); rc=$?
set -e
[ $rc = 1 ] || fail "empty folder exit $rc"
[ "$err" = "plain: Please select folder where is installated the program Tomb Raider Level Editor" ] || fail "prompt: $err"
[ ! -e "$WINEPREFIX/drive_c/INFO_ORDL.BIN" ] || fail "snapshot after a prompt"
echo "cli check: ok"
