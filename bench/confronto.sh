#!/usr/bin/env bash
# The comparison of two snapshots through the headless tool, warm cache, median of the runs: two snapshots
# whose editor lists (trle.el) hold 200,000 files each, 1,000 of them different (400 of another size, 300
# gone, 300 new), timed as `compare OLD NEW` against `report NEW trle`, the listing of the larger list, in the
# same run. Each time includes opening the snapshots. Goal: under 1 s, and at most 3 times the listing.
# Usage: bench/confronto.sh [CLI]
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/comune.sh

prefisso_c
mkdir -p "$dir/vecchio" "$dir/nuovo"

python3 - "$dir" <<'PY'
import struct, sys
d = sys.argv[1]
sys.path.insert(0, "bench")
from liste import lista, stringa as s
def nome(k): return ("\\data\\livello%03d\\sub%02d\\file%03d.tr4" % (k // 2000, k // 100 % 20, k % 100)).encode()
vecchio = [(nome(k), k * 37) for k in range(200000)]
# Every 500th file another size (400), every 500th of the first 150,000 gone (300), and 300 new ones.
nuovo = [(n, z + 1 if k % 500 == 0 else z) for k, (n, z) in enumerate(vecchio) if not (k % 500 == 1 and k < 150000)]
nuovo += [(("\\data\\nuovi\\file%03d.tr4" % k).encode(), k) for k in range(300)]
for nome_, voci in (("vecchio", vecchio), ("nuovo", nuovo)):
    open("%s/%s/trle.el" % (d, nome_), "wb").write(lista(b"C:\\Giochi\\Trle", voci))
    open("%s/%s/infofile.bin" % (d, nome_), "wb").write(b"\0" * 791)
PY
for s in vecchio nuovo; do "$cli" pack "$dir/$s.bin" "$dir/$s/infofile.bin" "$dir/$s/trle.el" >/dev/null; done

: > "$dir/righe"
for giro in $(seq "${GIRI:-5}"); do
  read -r tl ml < <(misura "$cli" report "$dir/nuovo.bin" trle)
  read -r tc mc < <(misura "$cli" compare "$dir/vecchio.bin" "$dir/nuovo.bin")
  grep -q "^  DIRECTORY LEVEL EDITOR  *1000" "$dir/out" || { echo "comparison: $(head -12 "$dir/out")"; exit 1; }
  echo "$tl $tc $ml $mc" >> "$dir/righe"
  echo "run $giro: listing ${tl}s, comparison ${tc}s"
done
head -12 "$dir/out"
awk "$mediana"'
  { l[NR] = $1; c[NR] = $2; r[NR] = $1 > 0 ? $2 / $1 : 0; if ($3 > ml) ml = $3; if ($4 > mc) mc = $4 }
  END {
    printf "comparison of 200,000 x 200,000 files: %.2fs (listing %.2fs, %.2fx), peak %d KiB (listing %d KiB)\n", mediana(c, NR), mediana(l, NR), mediana(r, NR), mc, ml
  }' "$dir/righe"
