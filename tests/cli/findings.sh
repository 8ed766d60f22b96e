#!/usr/bin/env bash
# The findings verb end to end on the demo machine: the same text as the demo prints, one JSON line per
# snapshot, Dati left alone, and the exit status for an unreadable snapshot and for usage errors.
. "$(dirname "$0")/comune.sh" "$1"

"$cli" demo "$WINEPREFIX" > "$t/demo" 2>/dev/null || fail "demo"
awk '/^== findings$/ { dentro = 1; next } /^== / { dentro = 0 } dentro' "$t/demo" > "$t/atteso"
grep -q '^FAIL  script.level-missing ' "$t/atteso" || fail "demo has no failure: $(cat "$t/atteso")"
grep -q $'^WARN  ' "$t/atteso" || fail "demo has no warning"
ls "$t/bin/Dati" > "$t/dati"
# The demo's sample lists, which it keeps in its machine, beside the tool.
cp "$c"/Supporto/*.le "$t/bin/"
"$cli" findings 'C:\INFO_ORDL.BIN' > "$t/uno" || fail "findings exit $?"
cmp -s "$t/uno" "$t/atteso" || fail "findings differs from the demo's"
printf 'xyz' > "$t/rotto.bin"
cp "$WINEPREFIX/drive_c/INFO_ORDL.BIN" "$t/due.bin"
set +e
"$cli" findings "$WINEPREFIX/drive_c/INFO_ORDL.BIN" "$t/rotto.bin" "$t/due.bin" --json > "$t/json" 2>"$t/err"; rc=$?
set -e
[ $rc = 1 ] || fail "unreadable snapshot exit $rc"
grep -q '^critical: The snapshot cannot be read: .*rotto.bin: not a snapshot' "$t/err" || fail "message: $(cat "$t/err")"
[ "$(wc -l < "$t/json")" = 3 ] || fail "JSON lines: $(cat "$t/json")"
python3 -c 'import json, sys
l = [json.loads(x) for x in open(sys.argv[1])]
assert [("error" in x) for x in l] == [False, True, False], l
assert l[0]["findings"] == l[2]["findings"] and l[2]["snapshot"].endswith("due.bin")
assert [f["id"] for f in l[1]["findings"] if f["severity"] == "fail"] == ["snapshot.unreadable"], l[1]' "$t/json" || fail "JSON"
# In text too, the failure on standard output and the message on standard error.
set +e
"$cli" findings "$t/rotto.bin" >"$t/testo" 2>"$t/err"; rc=$?
set -e
[ $rc = 1 ] && grep -q '^FAIL  snapshot.unreadable' "$t/testo" && ! grep -q 'critical' "$t/testo" &&
  grep -q '^critical: ' "$t/err" || fail "unreadable in text: $rc $(cat "$t/testo" "$t/err")"
"$cli" findings "$t/due.bin" "$t/due.bin" | grep -c "^== $t/due.bin$" | grep -qx 2 || fail "headings"
ls "$t/bin/Dati" | cmp -s - "$t/dati" || fail "Dati changed"
[ -z "$(ls "$t/bin" | grep findings-)" ] || fail "working folders left: $(ls "$t/bin")"
set +e
"$cli" findings 2>/dev/null; rc1=$?
"$cli" findings --frobnicate "$t/due.bin" 2>/dev/null; rc2=$?
set -e
[ $rc1 = 2 ] && [ $rc2 = 2 ] || fail "usage errors exit $rc1 $rc2"
echo "cli findings: ok"
