#!/usr/bin/env bash
# The anonymized copy through the headless tool, warm cache, median of the runs: a snapshot packed below a
# user's profile whose editor list (trle.el) holds 200,000 files below C:\Users\Mario Rossi, timed as
# `anonymize SNAPSHOT OUT` against `report SNAPSHOT trle`, the listing of that list, in the same run.
# Goal: at most 2 times the listing.
# Usage: bench/anonimo.sh [CLI]
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/comune.sh

profilo="$WINEPREFIX/drive_c/Users/Mario Rossi/Desktop/Trle"
prefisso_c
mkdir -p "$profilo"

python3 - "$profilo" <<'PY'
import sys
d = sys.argv[1]
sys.path.insert(0, "bench")
from liste import lista
def nome(k): return ("\\data\\livello%03d\\sub%02d\\file%03d.tr4" % (k // 2000, k // 100 % 20, k % 100)).encode()
open("%s/trle.el" % d, "wb").write(lista(b"C:\\Users\\Mario Rossi\\Desktop\\Trle", [(nome(k), k * 37) for k in range(200000)]))
open("%s/infofile.bin" % d, "wb").write(b"C:\\Users\\Mario Rossi\\Desktop\\Trle".ljust(791, b" "))
PY
m='C:\Users\Mario Rossi\Desktop\Trle'
"$cli" pack "$dir/snap.bin" "$m\\infofile.bin" "$m\\trle.el" >/dev/null

: > "$dir/righe"
for giro in $(seq "${GIRI:-5}"); do
  read -r tl ml < <(misura "$cli" report "$dir/snap.bin" trle)
  read -r ta ma < <(misura "$cli" anonymize "$dir/snap.bin" "$dir/copia.bin")
  grep -q "^Replaced 1 name in 4 places.$" "$dir/out" || { echo "copy: $(cat "$dir/out")"; exit 1; }
  echo "$tl $ta $ml $ma" >> "$dir/righe"
  echo "run $giro: listing ${tl}s, copy ${ta}s"
done
! grep -qa 'Mario' "$dir/copia.bin" || { echo "the name is left in the copy"; exit 1; }
awk "$mediana"'
  { l[NR] = $1; a[NR] = $2; r[NR] = $1 > 0 ? $2 / $1 : 0; if ($3 > ml) ml = $3; if ($4 > ma) ma = $4 }
  END {
    printf "anonymized copy of a 200,000-file snapshot: %.2fs (listing %.2fs, %.2fx), peak %d KiB (listing %d KiB)\n", mediana(a, NR), mediana(l, NR), mediana(r, NR), ma, ml
  }' "$dir/righe"
