# The opening that the shell tests of the headless tool share, sourced with the tool as $1: strict mode; a
# scratch folder $t, removed at the end after the test's own `pulisci` when it defines one; `fail`; the tool
# copied into $t/bin as $cli, so that the working files it keeps beside itself are the test's alone;
# WINEPREFIX=$t/p, which the demo makes, or `prefisso_c`; $dati, the test data. A test that also runs a
# Windows build, given as $2 (sourced with "$@"), runs it with `strumento` once `con_wine` has readied the
# prefix the native tool made.
set -euo pipefail
t=$(realpath "$(mktemp -d)")
exe=${2:-}
fine_prova() {
  if declare -F pulisci >/dev/null; then pulisci; fi
  [ -z "$exe" ] || wineserver -k 2>/dev/null || true
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

# The tool under test from $t/bin (or $cartella_strumento): the native one, or the Windows build under Wine
# without Wine's own lines.
strumento() {
  local d=${cartella_strumento:-$t/bin}
  [ -n "$exe" ] || { "$d/checkordl-cli" "$@"; return; }
  local rc tentativo
  for tentativo in 1 2; do
    rc=0
    wine_esegui "$d/checkordl-cli.exe" "$@" 2>"$t/err.wine" || rc=$?
    # Wine that could not start the program (lines of its own, nothing of the program's) gets one more try:
    # a loaded machine makes that happen now and then.
    [ "$rc" != 0 ] && grep -q '^wine: ' "$t/err.wine" && ! grep -qv '^wine: ' "$t/err.wine" || break
    echo "Wine did not start $*: $(grep -m1 '^wine: ' "$t/err.wine")" >&2
  done
  # Its messages may hold bytes of the ANSI code page that are no UTF-8.
  grep -av '^wine: ' "$t/err.wine" >&2 || true
  return $rc
}
# The prefix completed by Wine, with Z: the host's root, and the Windows build beside the native tool.
con_wine() {
  [ -n "$exe" ] || return 0
  . "$(dirname "${BASH_SOURCE[0]}")/../../scripts/wine.sh"
  wine_ambiente
  export LC_ALL=C.UTF-8
  timeout 300 wineboot -u >/dev/null 2>&1 || true
  ln -sfn / "$WINEPREFIX/dosdevices/z:"
  cp "$exe" "$t/bin/checkordl-cli.exe"
}
