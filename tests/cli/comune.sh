# The opening that the shell tests of the headless tool share, sourced with the tool as $1: strict mode; a
# scratch folder $t, removed at the end after the test's own `pulisci` when it defines one; `fail`; the tool
# copied into $t/bin as $cli, so that the working files it keeps beside itself are the test's alone;
# WINEPREFIX=$t/p, which the demo makes, or `prefisso_c`; $dati, the test data.
set -euo pipefail
t=$(realpath "$(mktemp -d)")
fine_prova() {
  if declare -F pulisci >/dev/null; then pulisci; fi
  rm -rf "$t"
}
trap fine_prova EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }
mkdir "$t/bin"
cp "$1" "$t/bin/checkordl-cli"
cli=$t/bin/checkordl-cli
export WINEPREFIX=$t/p
c=$WINEPREFIX/drive_c
dati=$(cd "$(dirname "${BASH_SOURCE[0]}")/../data" && pwd)
# Drive C: alone, for a test that plants its machine by hand, with the folders given below it.
prefisso_c() {
  mkdir -p "$WINEPREFIX/dosdevices" "$c"
  ln -s ../drive_c "$WINEPREFIX/dosdevices/c:"
  local d
  for d in "$@"; do mkdir -p "$c/$d"; done
}
