#!/usr/bin/env bash
# compare end to end: the exit statuses, the JSON, and the open snapshot's Dati left alone.
. "$(dirname "$0")/comune.sh" "$1"
prefisso_c a b
mkdir "$t/bin/Dati"
printf 'uno\r\ndue\r\n' > "$c/a/ordeio.txt"
printf 'uno\r\ntre\r\n' > "$c/b/ordeio.txt"
printf 'x' > "$t/bin/Dati/aperto"
"$cli" pack 'C:\a.bin' 'C:\a\ordeio.txt' >/dev/null
"$cli" pack 'C:\b.bin' 'C:\b\ordeio.txt' >/dev/null

out=$("$cli" compare 'C:\a.bin' "$c/b.bin" | tr -d '\r')
grep -qx 'Differences: 2' <<<"$out" && grep -qx '  + "tre"' <<<"$out" || fail "text: $out"
"$cli" compare 'C:\a.bin' 'C:\a.bin' --json | grep -qx '  "identical": true,' || fail "json of one snapshot twice"
[ -f "$t/bin/Dati/aperto" ] || fail "Dati was touched"
# Nothing of either snapshot is left beside the tool, on success or on failure.
[ "$(ls "$t/bin")" = "$(printf 'Dati\ncheckordl-cli')" ] || fail "left beside the tool: $(ls "$t/bin")"

set +e
err=$("$cli" compare 'C:\a.bin' 'C:\manca.bin' 2>&1 >/dev/null); rc=$?
[ $rc = 1 ] && [ "$err" = 'critical: The snapshot cannot be read: C:\manca.bin' ] || fail "missing snapshot: $rc $err"
[ "$(ls "$t/bin")" = "$(printf 'Dati\ncheckordl-cli')" ] || fail "left after a failure: $(ls "$t/bin")"
for uso in "compare C:\\a.bin" "compare C:\\a.bin C:\\a.bin C:\\a.bin" "compare C:\\a.bin C:\\a.bin --xml"; do
  $cli $uso 2>/dev/null; [ $? = 2 ] || fail "usage: $uso"
done
echo "cli compare: ok"
