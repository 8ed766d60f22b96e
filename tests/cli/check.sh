#!/usr/bin/env bash
# The check run from the headless tool on demo machines: found folders, folders given as if chosen with
# "Change", a refused folder, a full program folder, and an empty folder that ends in its prompt. With a
# Windows build, the full program folder alone, run under Wine.
# usage: tests/cli/check.sh NATIVE_TOOL [WINDOWS_TOOL]
. "$(dirname "$0")/comune.sh" "$@"
pulisci() {
  umount "$t/pieno" 2>/dev/null || true
  chattr -i "$c" 2>/dev/null || true
  chmod -R u+w "$t" 2>/dev/null || true
}

# A program folder that holds the tool and nothing more (a tmpfs, filled): the lists and the info file
# cannot be written, the message says so, and no working file of the check stays there, empty or cut off.
programma_pieno() {
  local nome=cli${exe:+ (Windows build)} file=$t/bin/checkordl-cli${exe:+.exe}
  mkdir -p "$t/pieno"
  if [ "$(id -u)" != 0 ] || ! mount -t tmpfs -o size=$((($(stat -c %s "$file") / 4096 + 8) * 4096)) tmpfs "$t/pieno" 2>/dev/null; then
    echo "$nome check: the full program folder passed over (needs root and tmpfs)"
    return 0
  fi
  cp "$file" "$t/pieno/"
  head -c 1M /dev/zero >"$t/pieno/riempimento" 2>/dev/null || true
  local rc=0
  cartella_strumento=$t/pieno strumento check >/dev/null 2>"$t/err" || rc=$?
  [ $rc = 1 ] || fail "$nome, full program folder: exit $rc: $(cat "$t/err")"
  grep -qF "critical: ERROR: I cann't write in current folder: " "$t/err" || fail "$nome, full program folder: $(cat "$t/err")"
  local restano
  restano=$(ls "$t/pieno" | grep -iE '\.el$|\.part$|^infofile\.bin$' || true)
  [ -z "$restano" ] || fail "$nome, full program folder: working files left: $restano"
  umount "$t/pieno"
}

"$cli" demo "$WINEPREFIX" > "$t/prospetti" 2> "$t/err" || fail "demo: $(cat "$t/err")"
if [ -n "$exe" ]; then
  con_wine
  programma_pieno
  echo "cli check (Windows build): ok"
  exit 0
fi
[ "$(grep -c '^== ' "$t/prospetti")" = 12 ] || fail "demo reports: $(cat "$t/prospetti")"
grep -q '^  + \\data\\tut1.tr4 (1500 bytes)' "$t/prospetti" || fail "demo comparison"
grep -q '^\\data\\title.tr4  26 Kb (27000 bytes) *ORIGINALE CD' "$t/prospetti" || fail "demo backup analysis"
grep -q '^plain: Scanning is complete' "$t/err" || fail "closing message"
# Both streams into one file: each message on a line of its own, standard output flushed before it.
"$cli" demo "$t/p2" >"$t/tutto" 2>&1 || fail "demo into one file"
[ "$(grep -c '^plain: Scanning is complete' "$t/tutto")" = 2 ] || fail "a message inside a line of the output"
[ -z "$(ls "$t/bin" | grep -iE '\.el$|infofile')" ] || fail "working files left: $(ls "$t/bin")"
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
"$cli" check 'C:\Copia' 'C:\Copia' >"$t/out" 2> "$t/err"; rc=$?
set -e
[ $rc = 1 ] || fail "refused folder exit $rc"
[ "$(cat "$t/out")" = "$WINEPREFIX/drive_c/INFO_ORDL.BIN" ] || fail "no host path after a refused folder"
grep -qF 'critical: This is not a correct Level Editor folder: C:\Copia' "$t/err" || fail "refusal: $(cat "$t/err")"
[ -f "$WINEPREFIX/drive_c/INFO_ORDL.BIN" ] || fail "no snapshot after a refused folder"
"$cli" unpack 'C:\INFO_ORDL.BIN' "$t" | grep -qF 'C:\Copia\ordelio.prf' || fail "chosen Ordelio folder not used"
rm "$WINEPREFIX/drive_c/INFO_ORDL.BIN"
# The support contact from contatto.txt beside the program, set without a rebuild.
printf 'supporto@esempio.it\r\n' >"$t/bin/contatto.txt"
rm -f "$WINEPREFIX/drive_c/INFO_ORDL.BIN"
"$cli" check >/dev/null 2>"$t/err" || fail "check with a contact: $(cat "$t/err")"
grep -q $'via email to: supporto@esempio.it$' "$t/err" || fail "contact: $(cat "$t/err")"
rm "$t/bin/contatto.txt" "$WINEPREFIX/drive_c/INFO_ORDL.BIN"
# The file to attach, as the host names it.
[ "$("$cli" check 2>/dev/null)" = "$WINEPREFIX/drive_c/INFO_ORDL.BIN" ] || fail "host path of the snapshot"

# C:\ that takes no new file, as the root of the system drive since Vista: the snapshot goes to the user's
# desktop, as Wine makes it (a link to a folder of the host's), and the message and the host path name it.
# Root may write anywhere but into an immutable folder.
refuse() { if [ "$(id -u)" = 0 ]; then chattr "$1i" "$WINEPREFIX/drive_c"; else chmod "${1/+/a-}w" "$WINEPREFIX/drive_c"; fi; }
mkdir -p "$WINEPREFIX/drive_c/users/$(id -un)" "$t/scrivania"
ln -sfn "$t/scrivania" "$WINEPREFIX/drive_c/users/$(id -un)/Desktop"
rm -f "$WINEPREFIX/drive_c/INFO_ORDL.BIN"
if refuse + 2>/dev/null && ! touch "$WINEPREFIX/drive_c/prova" 2>/dev/null; then
  out=$("$cli" check 2>"$t/err") || { refuse - ; fail "check onto the desktop: $(cat "$t/err")"; }
  refuse -
  desktop="C:\\users\\$(id -un)\\Desktop\\INFO_ORDL.BIN"
  grep -qF "$(printf 'Now you should send following file:\r\n%s (' "$desktop")" "$t/err" || fail "message: $(cat "$t/err")"
  [ "$out" = "$WINEPREFIX/drive_c/users/$(id -un)/Desktop/INFO_ORDL.BIN" ] || fail "host path of the desktop's: $out"
  [ -s "$t/scrivania/INFO_ORDL.BIN" ] && [ ! -e "$WINEPREFIX/drive_c/INFO_ORDL.BIN" ] || fail "snapshot not on the desktop"
else
  refuse - 2>/dev/null || true
  rm -f "$WINEPREFIX/drive_c/prova"
  echo "cli check: C:\ refusing new files not tried (the file system cannot make a folder refuse them)"
fi

programma_pieno

# Nothing found: the prompt for the editor folder, no dialog, exit 1, no snapshot.
rm -f "$WINEPREFIX/system.reg" "$WINEPREFIX/drive_c/INFO_ORDL.BIN"
set +e
err=$("$cli" check 2>&1 >/dev/null); rc=$?
set -e
[ $rc = 1 ] || fail "empty folder exit $rc"
[ "$err" = "plain: Please select folder where is installated the program Tomb Raider Level Editor" ] || fail "prompt: $err"
[ ! -e "$WINEPREFIX/drive_c/INFO_ORDL.BIN" ] || fail "snapshot after a prompt"
echo "cli check: ok"
