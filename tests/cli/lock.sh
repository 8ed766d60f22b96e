#!/usr/bin/env bash
# One program at a time per program folder. A folder held by another process: each verb that writes there
# waits a moment, then gives the message and exit 1 and does nothing. Runs started together: each one is
# whole, or refused that way.
. "$(dirname "$0")/comune.sh" "$1"
pulisci() { kill "${tenitore:-}" 2>/dev/null || true; }
"$cli" demo "$WINEPREFIX" >/dev/null 2>&1 || fail "demo"
"$cli" report 'C:\INFO_ORDL.BIN' header ordl > "$t/atteso" || fail "report alone"
[ ! -e "$t/bin/checkordl.lock" ] || fail "the lock file outlived its run"
cartella=Z:$(printf '%s' "$t/bin" | tr / '\\')
messaggio="critical: Another CheckORDL is using the program folder $cartella. Close it and try again."

# Held as Wine holds it for LockFileEx: a record lock on the first byte.
tiene() {
  python3 -c 'import fcntl, sys, time
f = open(sys.argv[1], "a")
fcntl.lockf(f, fcntl.LOCK_EX | fcntl.LOCK_NB, 1, 0)
print("held", flush=True)
time.sleep(120)' "$1" >"$t/tenuto" &
  tenitore=$!
  for _ in $(seq 100); do [ -s "$t/tenuto" ] && return; sleep 0.05; done
  fail "the lock could not be held from outside"
}
tiene "$t/bin/checkordl.lock"
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
cambiati=$(find "$t" -mindepth 1 -newer "$t/prima" ! -name out ! -name err ! -name tenuto)
[ -z "$cambiati" ] || fail "written while held: $cambiati"
kill "$tenitore"
wait "$tenitore" 2>/dev/null || true
rm -f "$t/bin/checkordl.lock"

# A lock file that cannot be held refuses the run and says why, rather than run unlocked.
for modo in cartella link; do
  if [ $modo = cartella ]; then mkdir "$t/bin/checkordl.lock"; else ln -s "$t/altrove" "$t/bin/checkordl.lock"; fi
  set +e
  "$cli" report 'C:\INFO_ORDL.BIN' header >"$t/out" 2>"$t/err"; rc=$?
  set -e
  atteso="$messaggio (checkordl.lock is a $([ $modo = cartella ] && echo folder || echo link))"
  [ $rc = 1 ] && [ "$(cat "$t/err")" = "$atteso" ] && [ ! -s "$t/out" ] || fail "lock file a $modo: $rc $(cat "$t/err")"
  [ ! -e "$t/altrove" ] || fail "lock file a link: written through"
  rm -rf "$t/bin/checkordl.lock"
done

# Twenty pairs of runs on two snapshots at once, with the lock file as it should be and as a folder: each
# output is the run's alone, or refused.
"$cli" report 'C:\INFO_ORDL_2.BIN' header ordl > "$t/atteso2" || fail "report alone"
for cartella in no si; do
[ $cartella = no ] || { mkdir "$t/bin/checkordl.lock"; messaggio="$messaggio (checkordl.lock is a folder)"; }
for i in $(seq 20); do
  "$cli" report 'C:\INFO_ORDL.BIN' header ordl > "$t/out$i" 2> "$t/err$i" & pid[i]=$!
  "$cli" report 'C:\INFO_ORDL_2.BIN' header ordl > "$t/out2_$i" 2> "$t/err2_$i" & pid2[i]=$!
done
for i in $(seq 20); do
  for coppia in "${pid[i]} out$i err$i atteso" "${pid2[i]} out2_$i err2_$i atteso2"; do
    read -r p o e a <<<"$coppia"
    if wait "$p"; then cmp -s "$t/$a" "$t/$o" || fail "run $o not whole"
    else [ "$(cat "$t/$e")" = "$messaggio" ] && [ ! -s "$t/$o" ] || fail "run $o: $(cat "$t/$e")"; fi
  done
done
done
echo "cli lock: ok"
