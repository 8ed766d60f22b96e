#!/usr/bin/env bash
# findings --answer end to end on the demo machine: the three forms, the first line naming the snapshot and
# its date, only the failures and warnings, an unreadable snapshot answered with a request for a new one, and
# the usage errors.
. "$(dirname "$0")/comune.sh" "$1"

"$cli" demo "$WINEPREFIX" > /dev/null 2>&1 || fail "demo"
cp "$c"/Supporto/*.le "$t/bin/"
s='C:\INFO_ORDL.BIN'
for forma in "" --markdown --bbcode; do
  "$cli" findings "$s" --answer $forma > "$t/r" || fail "answer $forma exit $?"
  head -n1 "$t/r" | grep -q "INFO_ORDL.BIN.*, made 20[0-9-]* [0-9:]* (UTC.*): 1 problem to fix, 1 warning\.$" ||
    fail "first line $forma: $(head -n1 "$t/r")"
  # The level the script names and the editor folder lacks, its path whole on one line; nothing that passed.
  grep -q 'Copy DATA.*TUT1\.tr4 into C:.*Giochi.*Trle, or take it out' "$t/r" || fail "what to do $forma: $(cat "$t/r")"
  ! grep -qi 'tomb4-present\|pass' "$t/r" || fail "a pass in $forma"
  ! grep -q $'\r' "$t/r" || fail "CR on Linux in $forma"
done
"$cli" findings "$s" --answer --markdown | grep -q '^- \*\*Problem:\*\* ' || fail "Markdown items"
"$cli" findings "$s" --answer --bbcode > "$t/bb"
grep -q '^\[list\]$' "$t/bb" && grep -q '^\[\*\]\[b\]Problem:\[/b\] ' "$t/bb" && grep -q '^\[/list\]$' "$t/bb" ||
  fail "BBCode: $(cat "$t/bb")"
printf 'xyz' > "$t/rotto.bin"
set +e
"$cli" findings "$t/rotto.bin" --answer > "$t/r" 2>"$t/err"; rc=$?
set -e
[ $rc = 1 ] && grep -q '^Your snapshot rotto.bin could not be read: ' "$t/r" &&
  grep -q '^Please run the check again' "$t/r" && grep -q '^critical: ' "$t/err" ||
  fail "unreadable: $rc $(cat "$t/r" "$t/err")"
for uso in "--markdown" "--bbcode" "--answer --json" "--answer --markdown --bbcode" "--json --bbcode"; do
  set +e
  "$cli" findings "$s" $uso > /dev/null 2>&1; rc=$?
  set -e
  [ $rc = 2 ] || fail "usage $uso exit $rc"
done
echo "cli risposta: ok"
