#!/usr/bin/env bash
# The headless tool end to end: pack, unpack, the table, exit codes and messages.
. "$(dirname "$0")/comune.sh" "$1"
prefisso_c Trle Dati
printf 'abc' > "$c/Trle/uno.txt"
printf '\0\1\2\3\4' > "$c/Trle/due.bin"

"$cli" pack 'C:\INFO_ORDL.BIN' 'c:\trle\UNO.TXT' "$c/Trle/due.bin" 'C:\Trle\manca'
[ "$(stat -c %s "$c/INFO_ORDL.BIN")" = $((4 + 4 + 15 + 4 + 4 + 15 + 4 + 3 + 5)) ] || fail "snapshot size"

out=$("$cli" unpack "$c/INFO_ORDL.BIN" 'C:\Dati')
[ "$out" = $'c:\\trle\\UNO.TXT\t3\nC:\\Trle\\due.bin\t5' ] || fail "table: $out"
cmp "$c/Trle/due.bin" "$c/Dati/due.bin" || fail "body"
cmp "$c/Trle/uno.txt" "$c/Dati/UNO.TXT" || fail "body"

# Failures: a message on standard error and exit 1; usage errors exit 2.
printf 'xyz' > "$c/rotto.bin"
set +e
err=$("$cli" unpack 'C:\rotto.bin' 'C:\Dati' 2>&1 >/dev/null); rc=$?
[ $rc = 1 ] && [ "$err" = "critical: Errrore estraendo file" ] || fail "broken snapshot: $rc $err"
err=$("$cli" pack 'C:\manca\s.bin' 'C:\Trle\uno.txt' 2>&1); rc=$?
[ $rc = 1 ] && [ "$err" = 'critical: Error saving C:\manca\s.bin' ] || fail "unwritable snapshot: $rc $err"
"$cli" unpack 'C:\INFO_ORDL.BIN' 'C:\Manca' 2>/dev/null; [ $? = 2 ] || fail "missing folder"
"$cli" 2>/dev/null; [ $? = 2 ] || fail "no verb"
"$cli" frobnicate 2>/dev/null; [ $? = 2 ] || fail "unknown verb"
echo "cli pack/unpack: ok"
