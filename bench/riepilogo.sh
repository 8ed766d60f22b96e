#!/usr/bin/env bash
# The findings through the headless tool, warm cache:
#  - 1,000 snapshots of the demo machine's size: time per snapshot of `findings SNAP` against
#    `report SNAP header` (the floor: opening the snapshot and one report), one process per snapshot for both,
#    and of one `findings` run over all 1,000;
#  - one snapshot whose editor list holds 200,000 files and whose script names 100 levels.
# Usage: bench/riepilogo.sh [CLI]
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/comune.sh
n=${SNAPSHOT:-1000}

mkdir -p "$dir/bin" "$dir/snap"
"$cli" demo "$WINEPREFIX" >/dev/null 2>&1
for i in $(seq "$n"); do cp "$WINEPREFIX/drive_c/INFO_ORDL.BIN" "$dir/snap/$i.bin"; done
echo "demo snapshot: $(stat -c %s "$WINEPREFIX/drive_c/INFO_ORDL.BIN") bytes, $n copies"

secondi() { /usr/bin/time -f '%e' -o "$dir/t" "$@" >/dev/null 2>&1 || true; cat "$dir/t"; }
tr=$(secondi bash -c 'for f in "$1"/snap/*.bin; do "$2" report "$f" header; done' _ "$dir" "$cli")
tf=$(secondi bash -c 'for f in "$1"/snap/*.bin; do "$2" findings "$f"; done' _ "$dir" "$cli")
tt=$(secondi "$cli" findings "$dir"/snap/*.bin)
"$cli" findings "$dir"/snap/*.bin --json | wc -l | grep -qx "$n" || { echo "findings --json: not $n lines"; exit 1; }
awk -v n="$n" -v tr="$tr" -v tf="$tf" -v tt="$tt" 'BEGIN {
  printf "report header: %.2f ms per snapshot\n", tr * 1000 / n
  printf "findings: %.2f ms per snapshot (%.2fx the report), in one run over all: %.2f ms (%.2fx)\n",
         tf * 1000 / n, tf / tr, tt * 1000 / n, tt / tr }'

# The large one: 200,000 names in trle.el, 100 levels in script.dat (every tenth one missing).
python3 - "$dir" <<'PY'
import struct, sys
d = sys.argv[1]
sys.path.insert(0, "bench")
from liste import lista, stringa as s
trle = [(("\\data\\livello%03d\\sub%02d\\file%03d.tr4" % (k // 2000, k // 100 % 20, k % 100)).encode(), k * 37 + 1)
        for k in range(200000)]
trle += [(("\\data\\l%03d.tr4" % k).encode(), 1000) for k in range(100) if k % 10]
open(d + "/trle.el", "wb").write(lista(b"C:\\Giochi\\Trle", trle))
nomi = [("DATA\\L%03d" % k).encode() + b"\0" for k in range(100)]
tabella = b"".join(struct.pack('<H', sum(len(n) for n in nomi[:k])) for k in range(100))
blocco = b"".join(nomi)
open(d + "/script.dat", "wb").write(b"\0" * 10 + struct.pack('<HH', 100, len(blocco)) + b"\0" * 42 + tabella + blocco)
open(d + "/infofile.bin", "wb").write(b"\0" * 791)
PY
"$cli" pack "$dir/grande.bin" "$dir/infofile.bin" "$dir/trle.el" "$dir/script.dat" >/dev/null
tg=$(secondi "$cli" findings "$dir/grande.bin")
"$cli" findings "$dir/grande.bin" | grep -c '^FAIL  script.level-missing' | grep -qx 10 || { echo "large: wrong findings"; exit 1; }
echo "200,000 files and 100 levels: ${tg}s (goal under 1 s)"
# The answer and the whole text of the same snapshot, against its findings and its editor listing alone: the
# answer adds only its text, the whole text every report once.
ta=$(secondi "$cli" findings "$dir/grande.bin" --answer)
tl=$(secondi "$cli" report "$dir/grande.bin" trle)
tw=$(secondi "$cli" report "$dir/grande.bin" --all)
awk -v tg="$tg" -v ta="$ta" -v tl="$tl" -v tw="$tw" 'BEGIN {
  printf "answer: %.2fs (%.2fx the findings); whole text: %.2fs (%.2fx the findings and the listing)\n",
         ta, ta / tg, tw, tw / (tg + tl) }'
