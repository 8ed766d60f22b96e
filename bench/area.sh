#!/usr/bin/env bash
# The report area with a big listing, in both windows: a snapshot whose editor list holds 100,000 and then
# 200,000 files, opened in the analysis window (Qt offscreen; Win32 under Wine with its null graphics
# driver); the time from the menu item "Directory Level Editor" to the text shown, against the core alone
# making the same report string in the same process (the baseline), and the resident memory before and
# with the listing, against the size of its text. Goals: Qt under 0.5 s and under 2.5x the text above the
# window at rest, Win32 under 1 s.
# Usage: bench/area.sh [NATIVE_BUILD [WINDOWS_BUILD]]   (default build/release and build/mingw; a Windows build
# that is not there is skipped)
set -euo pipefail
cd "$(dirname "$0")/.."
nativo=${1:-build/release}
windows=${2:-build/mingw}
. bench/comune.sh "$nativo/cli/checkordl-cli"
cmake --build "$nativo" --target checkordl_bench_area >/dev/null
cp "$nativo/bench/checkordl_bench_area" "$dir/bin/"
"$cli" demo "$WINEPREFIX" >/dev/null 2>&1
if [ -d "$windows" ]; then
  cmake --build "$windows" --target checkordl_bench_area_win32 >/dev/null
  . scripts/wine.sh
  wine_ambiente
  export LC_ALL=C.UTF-8
  wineprefisso=$dir/wine
  trap 'WINEPREFIX=$wineprefisso wineserver -k 2>/dev/null || true; [ -n "${TENERE:-}" ] || rm -rf "$dir"' EXIT
  (
    wine_prefisso "$wineprefisso"
    wine_esegui reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null
    timeout 120 wineserver -w
    ln -sfn / "$wineprefisso/dosdevices/z:"
  )
  mkdir -p "$wineprefisso/drive_c/Bench"
  cp "$windows/bench/checkordl_bench_area_win32.exe" "$wineprefisso/drive_c/Bench/"
fi

for n in 100000 200000; do
  # The names of riepilogo.sh's big list; the last one alone holds the word looked for.
  python3 - "$dir" "$n" <<'PY'
import sys
d, n = sys.argv[1], int(sys.argv[2])
sys.path.insert(0, "bench")
from liste import lista
trle = [(("\\data\\livello%03d\\sub%02d\\file%03d.tr4" % (k // 2000, k // 100 % 20, k % 100)).encode(), k * 37 + 1)
        for k in range(n - 1)]
trle.append((b"\\data\\ultimo.tr4", 1000))
open(d + "/trle.el", "wb").write(lista(b"C:\\Giochi\\Trle", trle))
open(d + "/infofile.bin", "wb").write(b"\0" * 791)
PY
  "$cli" pack "$dir/grande.bin" "$dir/infofile.bin" "$dir/trle.el" >/dev/null
  snapshot="Z:$(echo "$dir/grande.bin" | tr / '\\')"
  echo "== $n files"
  QT_QPA_PLATFORM=offscreen "$dir/bin/checkordl_bench_area" "$snapshot" ultimo
  if [ -d "$windows" ]; then
    WINEPREFIX=$wineprefisso wine_esegui 'C:\Bench\checkordl_bench_area_win32.exe' "$snapshot" ultimo 2>&1 |
      grep -v '^wine: ' || echo "Win32: failed"
  fi
done
