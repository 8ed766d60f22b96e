#!/usr/bin/env bash
# The whole snapshot as one text (report --all): the reports' snapshot packed again from an account's folder
# outside ASCII, against the expected text in UTF-8 with LF; the same bytes in Windows-1252 under the C locale;
# a snapshot that cannot be read gives its critical message and no text; --all takes no item.
# CHECKORDL_RIGENERA=1 rewrites the expected text.
. "$(dirname "$0")/comune.sh" "$1"
atteso=$dati/tutto/jose.txt
# No supporter's own rules from the machine running the test.
export HOME=$t/casa
unset XDG_DATA_HOME
prefisso_c 'Users/José/Trle'
w='C:\Users\José'
cp "$dati/prospetti/INFO_ORDL.BIN" "$c/Users/José/originale.bin"
cp "$dati/prospetti/backup_trle.le" "$dati/prospetti/trle_cd.le" "$t/bin/"
membri=()
while IFS=$'\t' read -r nome _; do membri+=("$w\\Trle\\${nome##*\\}"); done \
  < <(LC_ALL=C.UTF-8 "$cli" unpack "$w\\originale.bin" "$w\\Trle")
"$cli" pack "$w\\INFO_ORDL.BIN" "${membri[@]}" >/dev/null

LC_ALL=C.UTF-8 "$cli" report "$w\\INFO_ORDL.BIN" --all >"$t/utf8" 2>"$t/err" || fail "report --all: $(cat "$t/err")"
[ ! -s "$t/err" ] || fail "messages outside the text: $(cat "$t/err")"
if [ "${CHECKORDL_RIGENERA:-}" = 1 ]; then cp "$t/utf8" "$atteso"; fi
diff -u --text "$atteso" "$t/utf8" || fail "the whole text differs from $atteso"
LC_ALL=C "$cli" report "$w\\INFO_ORDL.BIN" --all >"$t/c" 2>/dev/null || fail "report --all under C"
iconv -f UTF-8 -t WINDOWS-1252 "$atteso" | cmp -s - "$t/c" || fail "not the Windows-1252 bytes under the C locale"

printf 'no snapshot' >"$c/rotto.bin"
for s in rotto.bin manca.bin; do
  rc=0
  LC_ALL=C.UTF-8 "$cli" report "C:\\$s" --all >"$t/out" 2>"$t/err" || rc=$?
  { [ $rc = 1 ] && [ ! -s "$t/out" ]; } || fail "$s: exit $rc, $(head -c 200 "$t/out")"
  grep -q "^critical: The snapshot cannot be read: C:.$s: " "$t/err" || fail "$s: $(cat "$t/err")"
done
for args in "--all header" "header --all" "--all --all"; do
  rc=0
  # shellcheck disable=SC2086
  "$cli" report "$w\\INFO_ORDL.BIN" $args >/dev/null 2>&1 || rc=$?
  [ $rc = 2 ] || fail "report SNAPSHOT $args: exit $rc"
done
rc=0
"$cli" report --all "$w\\INFO_ORDL.BIN" >/dev/null 2>&1 || rc=$?
[ $rc = 2 ] || fail "report --all SNAPSHOT: exit $rc"
echo "cli tutto: ok"
