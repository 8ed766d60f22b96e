#!/usr/bin/env bash
# Retakes the pictures of checkordl.exe's three windows in docs/win32_*.png: the real program on the demo
# machine under Wine, in a virtual desktop of Wine's (which draws the frames and captions) on a virtual X
# server, walked by the driver, which saves each window as the screen shows it.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
. scripts/wine.sh
# Wine's own fonts (Tahoma for the dialogs) and fonts with the metrics of Windows' Arial and Courier New.
installa cmake ninja-build g++ make g++-mingw-w64-x86-64 libwine wine wine64 xvfb xauth fonts-wine fonts-liberation \
  netpbm

build=build/release
cmake --preset release >/dev/null
cmake --build --preset release -j 2 --target checkordl-cli >/dev/null
cmake --preset mingw >/dev/null
cmake --build --preset mingw --target checkordl checkordl_guida_win32 >/dev/null

wine_ambiente
export LC_ALL=C.UTF-8
dir=$(mktemp -d)
export WINEPREFIX=$dir/prefix
trap 'wineserver -k 2>/dev/null || true; rm -rf "$dir"' EXIT
# The native tool makes the demo machine, which keeps its sample lists in C:\Supporto; Wine completes the prefix.
cp "$build/cli/checkordl-cli" "$dir/"
"$dir/checkordl-cli" demo "$WINEPREFIX" >/dev/null 2>&1 || true
timeout 300 wineboot -u >/dev/null 2>&1 || true
wine_regionale
# Every program of the prefix in one virtual desktop of a common screen's size, as `explorer /desktop` gives.
wine_esegui reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d checkordl /f >/dev/null
wine_esegui reg add 'HKCU\Software\Wine\Explorer\Desktops' /v checkordl /d 1024x768 /f >/dev/null
# The prefix's font folder stays empty here: Wine's own fonts (Tahoma for the dialogs, Marlett for the
# caption buttons) go where Windows keeps its fonts.
cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
# Courier New, which the reports ask for, is the Liberation font with its metrics.
wine_esegui reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' /v 'Courier New' \
  /d 'Liberation Mono' /f >/dev/null
timeout 120 wineserver -w
programma=$WINEPREFIX/drive_c/CheckORDL
mkdir -p "$programma/schermate"
cp build/mingw/cli/checkordl.exe build/mingw/tools/checkordl_guida_win32.exe "$WINEPREFIX"/drive_c/Supporto/*.le "$programma/"

xvfb-run -a -s "-screen 0 1024x768x24 -dpi 96" bash -c '. scripts/wine.sh; wine_esegui "$@"' _ \
  'C:\CheckORDL\checkordl_guida_win32.exe' --schermate 'C:\CheckORDL\schermate' 2>&1 | grep -v '^wine: '
timeout 120 wineserver -w
for f in win32_principale win32_getdir win32_analisi; do
  bmptopnm "$programma/schermate/$f.bmp" 2>/dev/null | pnmtopng -compression 9 > "docs/$f.png"
  echo "docs/$f.png"
done
