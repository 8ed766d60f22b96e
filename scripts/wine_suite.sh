#!/usr/bin/env bash
# The Windows build under Wine: the core test suite in a fresh prefix, then the cross-check of the two back
# ends. Fails when either fails.
# usage: scripts/wine_suite.sh [NATIVE_BUILD [WINDOWS_BUILD]]   (default build/test and build/mingw)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/wine.sh
nativo=${1:-build/test}
windows=${2:-build/mingw}
inizio=$(date +%s)

wine_ambiente
# Host names reach Wine as UTF-8 only in a UTF-8 locale.
export LC_ALL=C.UTF-8
t=$(mktemp -d)
trap 'WINEPREFIX=$t/prefix wineserver -k 2>/dev/null || true; rm -rf "$t"' EXIT
wine_prefisso "$t/prefix"
wine_regionale

# ctest runs the suite through Wine, as the toolchain file found it when the build was configured.
grep -q 'wine' "$windows/tests/CTestTestfile.cmake" ||
  { echo "$windows was configured without Wine: configure it again now that Wine is there" >&2; exit 1; }
ctest --test-dir "$windows" --verbose --timeout 600 2>&1 | grep -v '^[0-9]*: wine: ' ||
  { echo "the Windows test suite failed" >&2; exit 1; }
timeout 120 wineserver -w
echo "Windows test suite under Wine: $(($(date +%s) - inizio)) s"

bash scripts/wine_incrocio.sh "$nativo" "$windows"
echo "Wine part: $(($(date +%s) - inizio)) s"
