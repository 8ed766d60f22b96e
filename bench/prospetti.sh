#!/usr/bin/env bash
# The two heavy pages of the supporter's side, through the headless tool, warm cache, median of the runs:
#  - the directory report of a list of 200,000 files (`report SNAP trle`), against awk printing the same
#    names and sizes from a text copy of the list, one line each;
#  - the backup analysis of 100,000 sample files (good copies on disk) against a user list of 100,000
#    (`report SNAP backup`), against find printing the size and path of every good copy.
# Each tool's time includes opening the snapshot. Usage: bench/prospetti.sh [CLI]
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/comune.sh

prefisso_c
mkdir -p "$WINEPREFIX/drive_c/Ordelio"
printf 'MZ' > "$WINEPREFIX/drive_c/Ordelio/ordl2009.exe"
cat > "$WINEPREFIX/system.reg" <<'REG'
WINE REGISTRY Version 2

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\ordl2009.exe]
@="C:\\Ordelio\\ordl2009.exe"
REG

# The good copy: 100,000 files in 10,000 folders. The lists: trle.el of 200,000 names; ordl.el with the
# copy's files under \backup_trle, every tenth file of another size and every hundredth missing; the CD list.
python3 - "$WINEPREFIX/drive_c" "$dir" <<'PY'
import os, struct, sys
c, d = sys.argv[1], sys.argv[2]
sys.path.insert(0, "bench")
from liste import lista, stringa as s
campione = []
for i in range(10000):
    rel = "\\gruppo%03d\\cartella%05d" % (i // 100, i)
    os.makedirs(os.path.join(c, "Campione", "backup_trle") + rel.replace("\\", "/"), exist_ok=True)
    for j in range(10):
        nome = rel + "\\file%02d.dat" % j
        n = (i * 10 + j) % 97
        with open(os.path.join(c, "Campione", "backup_trle") + nome.replace("\\", "/"), "wb") as f:
            f.write(b"x" * n)
        campione.append((nome.encode(), n))
utente = [(b"\\backup_trle" + n, z + (1 if k % 10 == 0 else 0)) for k, (n, z) in enumerate(campione) if k % 100 != 1]
open(os.path.join(d, "ordl.el"), "wb").write(lista(b"C:\\Ordelio", utente))
open(os.path.join(d, "bin", "trle_cd.le"), "wb").write(lista(b"D:\\", [(n, z + 1) for n, z in campione[::20]]))
trle = [(("\\data\\livello%03d\\sub%02d\\file%03d.tr4" % (k // 2000, k // 100 % 20, k % 100)).encode(), k * 37)
        for k in range(200000)]
open(os.path.join(d, "trle.el"), "wb").write(lista(b"C:\\Giochi\\Trle", trle))
with open(os.path.join(d, "trle.txt"), "w") as f:
    for n, z in trle: f.write("%s %d\n" % (n.decode(), z))
open(os.path.join(d, "infofile.bin"), "wb").write(b"\0" * 791)
PY
"$cli" sample 'C:\Campione\backup_trle' 2>/dev/null
"$cli" pack "$dir/snap.bin" "$dir/infofile.bin" "$dir/trle.el" "$dir/ordl.el" >/dev/null
echo "lists: trle.el $(stat -c %s "$dir/trle.el") bytes, ordl.el $(stat -c %s "$dir/ordl.el") bytes," \
  "backup_trle.le $(stat -c %s "$dir/bin/backup_trle.le") bytes"

campione=$WINEPREFIX/drive_c/Campione/backup_trle
find "$campione" -type f -printf '%s %p\n' >/dev/null
: > "$dir/righe"
for giro in $(seq "${GIRI:-5}"); do
  read -r ta ma < <(misura awk '{ print "\t" $1 " (" $2 " bytes) " }' "$dir/trle.txt")
  read -r tl ml < <(misura "$cli" report "$dir/snap.bin" trle)
  [ "$(wc -l < "$dir/out")" = 200002 ] || { echo "listing: $(head -3 "$dir/out")"; exit 1; }
  read -r tf mf < <(misura find "$campione" -type f -printf '%s %p\n')
  read -r tb mb < <(misura "$cli" report "$dir/snap.bin" backup)
  grep -q "^FILE CORRETTI = 89000" "$dir/out" || { echo "analysis: $(tail -7 "$dir/out")"; exit 1; }
  echo "$ta $tl $ma $ml $tf $tb $mf $mb" >> "$dir/righe"
  echo "run $giro: awk ${ta}s, listing ${tl}s, find ${tf}s, analysis ${tb}s"
done
tail -7 "$dir/out"
awk "$mediana"'
  { for (k = 1; k <= 8; k++) { v[k, NR] = $k; if ($k > m[k]) m[k] = $k }
    rl[NR] = $1 > 0 ? $2 / $1 : 0; rb[NR] = $5 > 0 ? $6 / $5 : 0 }
  END {
    for (k = 1; k <= 8; k++) { for (i = 1; i <= NR; i++) a[i] = v[k, i]; med[k] = mediana(a, NR) }
    printf "listing of 200,000 files: %.2fs (awk %.2fs, %.2fx), peak %d KiB (awk %d KiB)\n", med[2], med[1], mediana(rl, NR), m[4], m[3]
    printf "backup analysis 100,000 x 100,000: %.2fs (find %.2fs, %.2fx), peak %d KiB (find %d KiB)\n", med[6], med[5], mediana(rb, NR), m[8], m[7]
  }' "$dir/righe"
