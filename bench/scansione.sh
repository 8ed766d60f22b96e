#!/usr/bin/env bash
# Listing a tree of 100,000 files in 10,000 folders with the sample verb (one folder scan and one list
# written), against `find` printing every file's size and path over the same tree in the same run, warm
# cache; peak resident memory of each. Usage: bench/scansione.sh [CLI] [FOLDERS] [FILES_PER_FOLDER]
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/comune.sh
cartelle=${2:-10000}
perCartella=${3:-10}
prefisso_c

# 100 top folders of 100 folders each (three levels with the root), each folder with its files; sizes vary.
albero=$WINEPREFIX/drive_c/Albero
python3 - "$albero" "$cartelle" "$perCartella" <<'PY'
import os, sys
radice, cartelle, per = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
lato = max(1, int(cartelle ** 0.5))
n = 0
for i in range(cartelle):
    d = os.path.join(radice, "gruppo%03d" % (i // lato), "cartella%05d" % i)
    os.makedirs(d, exist_ok=True)
    for j in range(per):
        with open(os.path.join(d, "file%02d.dat" % j), "wb") as f:
            f.write(b"x" * (n % 97))
        n += 1
PY
echo "tree: $(find "$albero" -type f | wc -l) files in $(find "$albero" -mindepth 1 -type d | wc -l) folders"

find "$albero" -type f -printf '%s %p\n' > /dev/null  # warm the cache for everyone alike
"$cli" sample 'C:\Albero' 2>/dev/null
: > "$dir/righe"
for giro in $(seq "${GIRI:-7}"); do
  read -r tf mf < <(misura find "$albero" -type f -printf '%s %p\n')
  read -r ts ms < <(misura "$cli" sample 'C:\Albero')
  grep -q '^plain: Creato file elenco:' "$dir/err" || { cat "$dir/err"; exit 1; }
  echo "$tf $ts $mf $ms" >> "$dir/righe"
  echo "run $giro: find ${tf}s, sample ${ts}s"
done
echo "list: $(stat -c %s "$dir/bin/backup_trle.le") bytes"
# Medians over the runs; the ratio is the median of each run's own ratio, since the two commands of a run
# share the machine's load of that moment.
awk "$mediana"'
  { tf[NR] = $1; ts[NR] = $2; r[NR] = $1 > 0 ? $2 / $1 : 0; mf = $3 > mf ? $3 : mf; ms = $4 > ms ? $4 : ms }
  END {
    printf "median of %d runs: find %.2fs | sample %.2fs | sample = %.2fx find\n", NR, mediana(tf, NR), mediana(ts, NR), mediana(r, NR)
    printf "peak resident memory: find %d KiB, sample %d KiB\n", mf, ms
  }' "$dir/righe"
