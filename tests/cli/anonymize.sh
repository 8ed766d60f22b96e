#!/usr/bin/env bash
# The anonymize verb end to end: a snapshot packed below a user's profile, its copy without the name, every
# report of the copy the original's with the stand-ins, the comparison of the two, the key, and what it
# refuses (an unreadable snapshot, a copy that cannot be written, usage errors), writing nothing then.
. "$(dirname "$0")/comune.sh" "$1"
prefisso_c
# Members below C:\Users\Mario Rossi, and /home/mario in ordeio.txt (see tests/data/snapshot/README.md).
orig=$t/utenti.bin
cp "$dati/snapshot/utenti.bin" "$orig"

"$cli" anonymize "$orig" "$t/copia.bin" --key "$t/chiave.txt" > "$t/out" 2> "$t/err" || fail "anonymize exit $?"
grep -q '^No file or folder name, nor any word of ordeio.txt, in it holds' "$t/err" || fail "kept: $(cat "$t/err")"
[ "$(head -1 "$t/out")" = $'(table)\t8' ] || fail "table line: $(cat "$t/out")"
grep -q $'^C:\\\\Users\\\\user1\\\\Desktop\\\\Trle\\\\ordeio.txt\t2$' "$t/out" || fail "ordeio line: $(cat "$t/out")"
[ "$(tail -1 "$t/out")" = "Replaced 2 names in 10 places." ] || fail "total: $(tail -1 "$t/out")"
! grep -qai 'mario' "$t/copia.bin" "$t/out" || fail "a name is left"
[ "$(cat "$t/chiave.txt")" = $'user1\tMario Rossi\r\nuser2\tmario\r' ] || fail "key: $(cat -A "$t/chiave.txt")"

"$cli" report "$orig" header pref archive ordl trle dirarc ordeio script backup 2>/dev/null |
  sed 's/Mario Rossi/user1/g; s#/home/mario/#/home/user2/#g' > "$t/atteso" || true
"$cli" report "$t/copia.bin" header pref archive ordl trle dirarc ordeio script backup > "$t/letto" 2>/dev/null || true
cmp -s "$t/atteso" "$t/letto" || fail "reports differ: $(diff "$t/atteso" "$t/letto" | head)"
"$cli" findings "$orig" | sed 's/Mario Rossi/user1/g' > "$t/atteso" || true
"$cli" findings "$t/copia.bin" > "$t/letto" || true
cmp -s "$t/atteso" "$t/letto" || fail "findings differ"
"$cli" compare "$orig" "$t/copia.bin" --json > "$t/json" || fail "compare exit $?"
python3 -c 'import json, sys
j = json.load(open(sys.argv[1]))
d = [x for p in j["parts"] for x in p["differences"]]
assert len(d) == 4 and all("mario" in x.get("old", "").lower() or "user" in x.get("new", "") for x in d), d' "$t/json" ||
  fail "comparison: $(cat "$t/json")"

# The environment member: no name left, and the findings (its date first) read the copy as the original.
"$cli" anonymize "$dati/snapshot/ambiente.bin" "$t/ambiente.bin" > /dev/null || fail "anonymize environment"
! grep -qai 'mario' "$t/ambiente.bin" || fail "a name is left in the environment"
"$cli" findings "$dati/snapshot/ambiente.bin" | sed 's/Mario Rossi/user1/g' > "$t/atteso" || true
"$cli" findings "$t/ambiente.bin" > "$t/letto" || true
# The stand-in is shorter than the name, so the findings' lines wrap elsewhere: compared without the blanks.
grep -q '^Snapshot made: 2026-11-25 17:05:03' "$t/letto" &&
  [ "$(tr -d '[:space:]' <"$t/atteso")" = "$(tr -d '[:space:]' <"$t/letto")" ] ||
  fail "findings of the environment: $(diff "$t/atteso" "$t/letto" | head)"

# What the copy keeps that may still name the person: on standard error, in the terminal's encoding.
mkdir -p "$c/Users/Jose/Trle"
printf 'editor=C:\\Users\\Jos\xe9\\Trle\r\nlevels: jos\xe9_castello, Jos\xe9!\r\n' > "$c/Users/Jose/Trle/ordeio.txt"
"$cli" pack 'C:\resta.bin' 'C:\Users\Jose\Trle\ordeio.txt' > /dev/null || fail "pack"
LC_ALL=C.UTF-8 "$cli" anonymize "$c/resta.bin" "$t/resta.bin" > "$t/out" 2> "$t/err" || fail "anonymize kept"
printf 'It keeps these names, which hold an account name it replaced and may still name the person:\n  jos\xc3\xa9_castello (a word of ordeio.txt)\n  Jos\xc3\xa9 (a word of ordeio.txt)\n' > "$t/atteso"
cmp -s "$t/atteso" "$t/err" || fail "kept: $(cat -A "$t/err")"
[ "$(tail -1 "$t/out")" = "Replaced 2 names in 2 places." ] || fail "kept, counts: $(cat "$t/out")"

printf 'xyz' > "$t/rotto.bin"
for caso in "$t/rotto.bin $t/c1.bin|not a snapshot" "$t/manca.bin $t/c1.bin|does not exist" \
  "$orig $t/no/c1.bin|Error saving" "$orig $orig|must not replace"; do
  set +e
  # shellcheck disable=SC2086
  "$cli" anonymize ${caso%%|*} > "$t/out" 2> "$t/err"; rc=$?
  set -e
  [ $rc = 1 ] && grep -q "^critical: .*${caso#*|}" "$t/err" && [ ! -s "$t/out" ] || fail "$caso: $rc $(cat "$t/err")"
  [ ! -e "$t/c1.bin" ] && [ ! -e "$t/c1.bin.part" ] || fail "$caso: a file was left"
done
cmp -s "$orig" "$dati/snapshot/utenti.bin" || fail "the snapshot changed"
for argomenti in "" "$orig" "$orig $t/c.bin --key" "$orig $t/c.bin --frobnicate" "$orig $t/c.bin x"; do
  set +e
  # shellcheck disable=SC2086
  "$cli" anonymize $argomenti 2>/dev/null; rc=$?
  set -e
  [ $rc = 2 ] || fail "usage '$argomenti' exit $rc"
done
echo "cli anonymize: ok"
