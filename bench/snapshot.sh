#!/usr/bin/env bash
# Packing one large member and unpacking it again, each against `cat` copying the same file on the same
# disk in the same run; peak resident memory of each. Usage: bench/snapshot.sh [CLI] [MiB]
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/comune.sh
mib=${2:-1024}
prefisso_c
mkdir -p "$WINEPREFIX/drive_c/Dati"
head -c "$((mib * 1024 * 1024))" /dev/urandom > "$WINEPREFIX/drive_c/grande.bin"

# Seconds and peak KiB of one command; the output file is removed first so that each run writes anew.
misura_nuovo() {
  rm -f "$1"
  sync
  shift
  misura "$@"
}

cat "$WINEPREFIX/drive_c/grande.bin" > /dev/null  # warm the cache for everyone alike
src=$WINEPREFIX/drive_c/grande.bin
dati=$WINEPREFIX/drive_c/Dati/grande.bin
snap=$WINEPREFIX/drive_c/s.bin
# Each command ends with its output on the disk, so that the page cache does not hide the writes.
: > "$dir/righe"
for giro in 1 2 3 4 5; do
  read -r tc mc < <(misura_nuovo "$dir/copia.bin" sh -c "cat '$src' > '$dir/copia.bin' && sync '$dir/copia.bin'")
  read -r tp mp < <(misura_nuovo "$snap" sh -c "'$cli' pack 'C:\\s.bin' 'C:\\grande.bin' && sync '$snap'")
  read -r tu mu < <(misura_nuovo "$dati" sh -c "'$cli' unpack 'C:\\s.bin' 'C:\\Dati' >/dev/null && sync '$dati'")
  cmp -s "$src" "$dati" || { echo "unpacked copy differs"; exit 1; }
  echo "$tc $tp $tu $mc $mp $mu" >> "$dir/righe"
  echo "run $giro: cat ${tc}s, pack ${tp}s, unpack ${tu}s"
done
# Medians over the runs; peak memory is that of the tool itself (sh and sync are small).
sort -n -k1 "$dir/righe" | awk -v mib="$mib" "$mediana"'
  { tc[NR] = $1; tp[NR] = $2; tu[NR] = $3; mc = $4 > mc ? $4 : mc; mp = $5 > mp ? $5 : mp; mu = $6 > mu ? $6 : mu }
  END {
    c = mediana(tc, NR); p = mediana(tp, NR); u = mediana(tu, NR)
    printf "median of %d runs, %d MiB: cat %.2fs (%.0f MiB/s) | pack %.2fs = %.2f of cat throughput | unpack %.2fs = %.2f of cat throughput\n", NR, mib, c, mib / c, p, c / p, u, c / u
    printf "peak resident memory: cat %d KiB, pack %d KiB, unpack %d KiB\n", mc, mp, mu
  }'
