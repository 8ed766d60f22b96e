#!/usr/bin/env bash
# The program folder: the tool's own folder where it may write there; else the user's data folder, made when
# first needed and named wherever a path of it is shown; one that cannot be made either is a critical
# message naming it and the reason, and nothing is written.
. "$(dirname "$0")/comune.sh" "$1"
pulisci() { chmod -R u+w "$t"; }
mkdir "$t/casa" "$t/campione"
echo x > "$t/campione/a.tr4"
win() { printf 'Z:%s' "$1" | tr / '\\'; }
# Root may write anywhere: the cases of a folder that cannot be written run as nobody.
come=()
if [ "$(id -u)" = 0 ]; then
  chown -R nobody "$t"
  come=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
fi
# XDG_DATA_HOME is the variable XDG's value, unset when that is empty.
cli() {
  env -u XDG_DATA_HOME ${XDG:+XDG_DATA_HOME=$XDG} HOME="$t/casa" WINEPREFIX="$t/p" LC_ALL=C "${come[@]}" \
    "$t/bin/checkordl-cli" "$@"
}

# Portable: the working files stay beside the tool.
cli sample "$t/campione" >/dev/null 2>&1 || fail "sample beside the tool"
[ -f "$t/bin/backup_trle.le" ] || fail "portable: no sample list beside the tool"
rm "$t/bin/backup_trle.le"

chmod a-w "$t/bin"
cli demo "$t/p" > "$t/demo" 2>&1 || fail "demo with the tool's folder read-only: $(tail -3 "$t/demo")"
utente=$t/casa/.local/share/checkordl
[ -d "$utente/Dati" ] || fail "no working files in $utente"
[ "$(ls "$t/bin")" = checkordl-cli ] || fail "written beside a read-only tool: $(ls "$t/bin")"
cp "$t"/p/drive_c/Supporto/*.le "$utente/"
cli report 'C:\INFO_ORDL.BIN' backup 2>&1 | grep -qF "Elenco files campione in: $(win "$utente")\\backup_trle.le" ||
  fail "the backup report names another folder"

XDG=$t/xdg cli sample "$t/campione" >/dev/null 2>&1 || fail "sample into XDG_DATA_HOME"
[ -f "$t/xdg/checkordl/backup_trle.le" ] || fail "XDG_DATA_HOME not followed"

# A data folder that cannot be made.
touch "$t/file"
set +e
XDG=$t/file cli report 'C:\INFO_ORDL.BIN' header > "$t/out" 2> "$t/err"; rc=$?
set -e
[ $rc = 1 ] && [ ! -s "$t/out" ] || fail "folder that cannot be made: exit $rc"
[ "$(cat "$t/err")" = "critical: Cannot make the program folder $(win "$t/file")\\checkordl: Not a directory" ] ||
  fail "message: $(cat "$t/err")"
echo "cli program folder: ok"
