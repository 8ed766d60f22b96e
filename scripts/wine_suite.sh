#!/usr/bin/env bash
# The Windows build under Wine: the core test suite in a fresh prefix, the Win32 windows on the demo machine,
# the walk of checkordl.exe, then the cross-check of the two back ends and the broken machines. Fails when any
# fails.
# usage: scripts/wine_suite.sh [NATIVE_BUILD [WINDOWS_BUILD]]   (default build/release and build/mingw)
# WINE_PASSI names the steps to take (default all: "suite finestre guida incrocio guasti"); WINE_STRUMENTO
# a folder where the native tool made the demo machine already (its "demo"), for where the tool cannot run,
# as in a 32-bit chroot; WINE_DPI the display's resolution for the windows.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/wine.sh
nativo=${1:-build/release}
windows=${2:-build/mingw}
inizio=$(date +%s)
passi=" ${WINE_PASSI:-suite finestre guida incrocio guasti} "
passo() { [[ $passi == *" $1 "* ]]; }

wine_ambiente
# Host names reach Wine as UTF-8 only in a UTF-8 locale.
export LC_ALL=C.UTF-8
t=$(mktemp -d)
trap 'for p in "$t/prefix" "$t/demo"; do WINEPREFIX=$p wineserver -k 2>/dev/null || true; done; rm -rf "$t"' EXIT

# ctest runs the suite through Wine, as the toolchain file found it when the build was configured.
if passo suite; then
  wine_prefisso "$t/prefix"
  wine_regionale
  grep -q 'wine' "$windows/tests/CTestTestfile.cmake" ||
    { echo "$windows was configured without Wine: configure it again now that Wine is there" >&2; exit 1; }
  ctest --test-dir "$windows" --verbose --timeout 600 2>&1 | grep -v '^[0-9]*: wine: ' ||
    { echo "the Windows test suite failed ($WINEARCH prefix)" >&2; exit 1; }
  timeout 120 wineserver -w
  echo "Windows test suite under Wine ($WINEARCH prefix): $(($(date +%s) - inizio)) s"
fi

# The Win32 windows on the demo machine. The native tool makes it; Wine completes it into a prefix whose
# graphics driver is the null one (windows without a display), whose E: is a drive without medium and whose
# Z: is the host's root, where the tests' data lie.
demo=$t/demo
mkdir -p "$t/strumento"
if [ -n "${WINE_STRUMENTO:-}" ]; then
  cp -a "$WINE_STRUMENTO/." "$t/strumento/"
  mv "$t/strumento/demo" "$demo"
else
  cp "$nativo/cli/checkordl-cli" "$t/strumento/"
  "$t/strumento/checkordl-cli" demo "$demo" >/dev/null 2>&1 || true
fi
passo finestre || passo guida && (
  export WINEPREFIX=$demo
  timeout 300 wineboot -u >/dev/null 2>&1 || true
  wine_esegui reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null
  timeout 120 wineserver -w
  ln -sfn ../assente "$demo/dosdevices/e:"
  ln -sfn / "$demo/dosdevices/z:"
  mkdir -p "$demo/drive_c/CheckORDL"
  passo finestre || exit 0
  [ -z "${WINE_DPI:-}" ] || wine_dpi "$WINE_DPI"
  cp "$windows/tests/gui_win32/checkordl_finestre_win32.exe" "$demo/drive_c/CheckORDL/"
  wine_esegui 'C:\CheckORDL\checkordl_finestre_win32.exe' 2>&1 | grep -v '^wine: ' ||
    { echo "the Win32 window tests failed ($WINEARCH prefix, ${WINE_DPI:-96} dpi)" >&2; exit 1; }
  timeout 120 wineserver -w
  echo "Win32 windows under Wine ($WINEARCH prefix, ${WINE_DPI:-96} dpi): $(($(date +%s) - inizio)) s"
)

# The real checkordl.exe on the same machine, walked from outside as a user would by the driver: the check
# run, then the snapshot opened and every menu item, the search, copy and save.
passo guida && (
  export WINEPREFIX=$demo
  cp "$windows/cli/checkordl.exe" "$windows/tools/checkordl_guida_win32.exe" "$demo"/drive_c/Supporto/*.le "$demo/drive_c/CheckORDL/"
  WINE_TEMPO=180 wine_esegui 'C:\CheckORDL\checkordl_guida_win32.exe' 2>&1 | grep -v '^wine: ' ||
    { echo "the walk of checkordl.exe failed" >&2; exit 1; }
  timeout 120 wineserver -w
  echo "checkordl.exe walked under Wine ($WINEARCH prefix): $(($(date +%s) - inizio)) s"
)

! passo incrocio || bash scripts/wine_incrocio.sh "$nativo" "$windows"
# The broken machines of the tool's own test, with the Windows build under Wine.
! passo guasti || bash tests/cli/guasti.sh "$nativo/cli/checkordl-cli" "$windows/cli/checkordl-cli.exe"
# Links where it writes or deletes, and a full program folder, the same way.
! passo guasti || bash tests/cli/links.sh "$nativo/cli/checkordl-cli" "$windows/cli/checkordl-cli.exe"
! passo guasti || bash tests/cli/check.sh "$nativo/cli/checkordl-cli" "$windows/cli/checkordl-cli.exe"
echo "Wine part: $(($(date +%s) - inizio)) s"
