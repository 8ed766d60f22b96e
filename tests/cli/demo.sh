#!/usr/bin/env bash
# The demo machine is made only where nothing else is: a folder holding a Wine prefix, or anything at all, is
# refused untouched; its own demo may be made again, the same as the first time. The supporter's sample
# lists beside the tool are never its to write.
. "$(dirname "$0")/comune.sh" "$1"
# Everything below a folder: names, links, bytes.
stato() { (cd "$1" && find . -printf '%p %y %l\n' | sort && find . -type f -exec md5sum {} + | sort); }

printf 'supporter list\n' >"$t/bin/backup_trle.le"
printf 'supporter cd\n' >"$t/bin/trle_cd.le"
m=$t/m
mkdir -p "$m/vino/drive_c/users" "$m/vino/dosdevices" "$m/altro"
printf 'WINE REGISTRY Version 2\n;; the user'"'"'s own\n' >"$m/vino/system.reg"
cp "$m/vino/system.reg" "$m/vino/user.reg"
ln -s ../drive_c "$m/vino/dosdevices/c:"
printf 'x' >"$m/altro/nota.txt"
printf 'x' >"$m/file"
for dir in "$m/vino" "$m/altro" "$m/file"; do
  prima=$(stato "$m"; stato "$t/bin")
  rc=0
  "$cli" demo "$dir" >"$t/out" 2>"$t/err" || rc=$?
  [ $rc = 2 ] && [ ! -s "$t/out" ] || fail "demo $dir: exit $rc"
  grep -qF "$dir" "$t/err" || fail "demo $dir: the message names no folder: $(cat "$t/err")"
  [ "$(stato "$m"; stato "$t/bin")" = "$prima" ] || fail "demo $dir changed something"
done

listeTool=$(stato "$t/bin")
"$cli" demo "$WINEPREFIX" >"$t/primo" 2>/dev/null || fail "demo into a new folder"
grep -qF 'Elenco files campione in: C:\Supporto\backup_trle.le' "$t/primo" || fail "the demo's lists are not its own"
grep -q '^\\data\\title.tr4  26 Kb (27000 bytes) *ORIGINALE CD' "$t/primo" || fail "demo backup analysis"
"$cli" demo "$WINEPREFIX" >"$t/secondo" 2>/dev/null || fail "demo over its own demo"
# The check runs' dates and the disk's free space (which other programs change meanwhile) aside, the second
# demo is the first.
variabile='[0-9][0-9]:[0-9][0-9]|Spazio Disco|free space|Differences:|HEADER|No differences'
diff <(grep -vE "$variabile" "$t/primo") <(grep -vE "$variabile" "$t/secondo") >&2 ||
  fail "demo made again differs"
[ "$(stato "$t/bin" | grep '\.le')" = "$(grep '\.le' <<<"$listeTool")" ] || fail "the tool's sample lists changed"
mkdir "$t/vuota"
"$cli" demo "$t/vuota" >/dev/null 2>&1 || fail "demo into an empty folder"
echo "cli demo: ok"
