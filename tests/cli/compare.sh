#!/usr/bin/env bash
# compare end to end: the exit statuses, the JSON, and the open snapshot's Dati left alone.
set -euo pipefail
t=$(mktemp -d)
trap 'rm -rf "$t"' EXIT
# The tool unpacks beside itself: give it a folder of its own.
cp "$1" "$t/checkordl-cli"
cli=$t/checkordl-cli
mkdir -p "$t/prefix/dosdevices" "$t/prefix/drive_c/a" "$t/prefix/drive_c/b" "$t/Dati"
ln -s ../drive_c "$t/prefix/dosdevices/c:"
export WINEPREFIX=$t/prefix
printf 'uno\r\ndue\r\n' > "$t/prefix/drive_c/a/ordeio.txt"
printf 'uno\r\ntre\r\n' > "$t/prefix/drive_c/b/ordeio.txt"
printf 'x' > "$t/Dati/aperto"
"$cli" pack 'C:\a.bin' 'C:\a\ordeio.txt' >/dev/null
"$cli" pack 'C:\b.bin' 'C:\b\ordeio.txt' >/dev/null

fail() { echo "FAIL: $*" >&2; exit 1; }

out=$("$cli" compare 'C:\a.bin' "$t/prefix/drive_c/b.bin" | tr -d '\r')
grep -qx 'Differences: 2' <<<"$out" && grep -qx '  + "tre"' <<<"$out" || fail "text: $out"
"$cli" compare 'C:\a.bin' 'C:\a.bin' --json | grep -qx '  "identical": true,' || fail "json of one snapshot twice"
[ -f "$t/Dati/aperto" ] || fail "Dati was touched"
# Nothing of either snapshot is left beside the tool, on success or on failure.
[ "$(ls "$t")" = "$(printf 'Dati\ncheckordl-cli\nprefix')" ] || fail "left beside the tool: $(ls "$t")"

set +e
err=$("$cli" compare 'C:\a.bin' 'C:\manca.bin' 2>&1 >/dev/null); rc=$?
[ $rc = 1 ] && [ "$err" = 'critical: The snapshot cannot be read: C:\manca.bin' ] || fail "missing snapshot: $rc $err"
[ "$(ls "$t")" = "$(printf 'Dati\ncheckordl-cli\nprefix')" ] || fail "left after a failure: $(ls "$t")"
for uso in "compare C:\\a.bin" "compare C:\\a.bin C:\\a.bin C:\\a.bin" "compare C:\\a.bin C:\\a.bin --xml"; do
  $cli $uso 2>/dev/null; [ $? = 2 ] || fail "usage: $uso"
done
echo "cli compare: ok"
