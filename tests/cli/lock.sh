#!/usr/bin/env bash
# One program at a time per program folder. A folder held by another process: each verb that writes there
# waits a moment, then gives the message and exit 1 and does nothing. Runs started together: each one is
# whole, or refused that way.
set -euo pipefail
t=$(realpath "$(mktemp -d)")
trap 'rm -rf "$t"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }
mkdir "$t/bin"
cp "$1" "$t/bin/checkordl-cli"
cli=$t/bin/checkordl-cli
export WINEPREFIX=$t/p
"$cli" demo "$WINEPREFIX" >/dev/null 2>&1 || fail "demo"
"$cli" report 'C:\INFO_ORDL.BIN' header ordl > "$t/atteso" || fail "report alone"
[ ! -e "$t/bin/checkordl.lock" ] || fail "the lock file outlived its run"
cartella=Z:$(printf '%s' "$t/bin" | tr / '\\')
messaggio="critical: Another CheckORDL is using the program folder $cartella. Close it and try again."

exec 9>"$t/bin/checkordl.lock"
flock -n 9
touch "$t/prima"
for verbo in 'report C:\INFO_ORDL.BIN header' check 'compare C:\INFO_ORDL.BIN C:\INFO_ORDL_2.BIN' \
             'sample C:\Giochi' 'demo p2'; do
  inizio=$(date +%s%N)
  set +e
  # shellcheck disable=SC2086
  (cd "$t" && "$cli" $verbo > "$t/out" 2> "$t/err"); rc=$?
  set -e
  ms=$((($(date +%s%N) - inizio) / 1000000))
  [ $rc = 1 ] && [ "$(cat "$t/err")" = "$messaggio" ] && [ ! -s "$t/out" ] || fail "$verbo held: $rc $(cat "$t/err")"
  [ $ms -ge 1500 ] && [ $ms -lt 4000 ] || fail "$verbo waited $ms ms"
done
cambiati=$(find "$t" -mindepth 1 -newer "$t/prima" ! -name out ! -name err)
[ -z "$cambiati" ] || fail "written while held: $cambiati"
exec 9>&-

for i in 1 2 3 4; do
  "$cli" report 'C:\INFO_ORDL.BIN' header ordl > "$t/out$i" 2> "$t/err$i" & pid[i]=$!
done
for i in 1 2 3 4; do
  if wait "${pid[i]}"; then cmp -s "$t/atteso" "$t/out$i" || fail "run $i not whole"
  else [ "$(cat "$t/err$i")" = "$messaggio" ] && [ ! -s "$t/out$i" ] || fail "run $i: $(cat "$t/err$i")"; fi
done
echo "cli lock: ok"
