#!/usr/bin/env bash
# The conventions of command-line tools: help on standard output with success, usage errors on standard
# error with status 2, the version; and every verb of the usage answers its own help.
. "$(dirname "$0")/comune.sh" "$1"
# esito STATUS OUT ERR ARGS...: the exit status, and which of standard output and error hold anything.
esito() {
  local atteso=$1 out=$2 err=$3 rc=0
  shift 3
  "$cli" "$@" > "$t/out" 2> "$t/err" || rc=$?
  [ $rc = "$atteso" ] || fail "$*: exit $rc"
  [ -s "$t/out" ] && o=1 || o=0
  [ -s "$t/err" ] && e=1 || e=0
  [ "$o$e" = "$out$err" ] || fail "$*: output $o, error $e"
}
esito 0 1 0 --help
cp "$t/out" "$t/uso"
esito 0 1 0 -h
cmp -s "$t/out" "$t/uso" || fail "-h is not --help"
esito 0 1 0 help
esito 2 0 1
# From a terminal or a script, no prompt to press Enter follows the usage.
cmp -s "$t/err" "$t/uso" || fail "no arguments: not the usage alone"
esito 2 0 1 nothing
grep -q '^usage: checkordl-cli VERB' "$t/err" || fail "no usage after an unknown verb"
esito 2 0 1 help nothing
esito 0 1 0 --version
grep -qx 'checkordl-cli [0-9]*\.[0-9]*\.[0-9]*' "$t/out" || fail "version: $(cat "$t/out")"

verbi=$(sed -n 's/^  \([a-z-]*\) .*/\1/p' "$t/uso")
[ "$(wc -w <<< "$verbi")" -ge 11 ] || fail "verbs in the usage: $verbi"
for v in $verbi; do
  esito 0 1 0 help "$v"
  grep -q "^usage: checkordl-cli $v" "$t/out" || fail "help $v: $(head -1 "$t/out")"
  cp "$t/out" "$t/aiuto"
  esito 0 1 0 "$v" x --help
  cmp -s "$t/out" "$t/aiuto" || fail "$v --help is not help $v"
done
echo "cli usage: ok"
