#!/usr/bin/env bash
# Recording the environment of a check run: on the demo machine, the collection's seconds as a share of the
# check run without it (the run as timed whole, less the collection timed alone after it in the same
# process; goal at most 10 %), and the collection alone over an editor folder below "Program Files (x86)"
# that holds 200,000 files at its top, a hundred of them executables (goal under 0.5 s). Usage: bench/ambiente.sh [NATIVE_BUILD] [FILES]
set -euo pipefail
cd "$(dirname "$0")/.."
nativo=${1:-build/release}
file=${2:-200000}
. bench/comune.sh "$nativo/cli/checkordl-cli"
cmake --build "$nativo" --target checkordl_bench_ambiente >/dev/null
cp "$nativo/bench/checkordl_bench_ambiente" "$dir/bin/"
bench=$dir/bin/checkordl_bench_ambiente
"$cli" demo "$WINEPREFIX" >/dev/null 2>&1

"$bench" run 1 >/dev/null  # warm the cache for both alike
"$bench" run "${GIRI:-7}" > "$dir/righe"
awk "$mediana"'
  { c[NR] = $1; a[NR] = $2; r[NR] = $2 / ($1 - $2); n = $3 }
  END {
    printf "demo machine, median of %d runs: check run %.3fs, collection %.4fs = %.1f %% of the run without it (member %d bytes)\n", NR, mediana(c, NR), mediana(a, NR), 100 * mediana(r, NR), n
  }' "$dir/righe"

# All the files at the top of the editor folder, beside tomb4.exe: the folder the executables are looked
# for in and their imports resolved against.
grande=$WINEPREFIX/drive_c/Program\ Files\ \(x86\)/Grande
python3 - "$grande" "$file" "$WINEPREFIX/drive_c/Giochi/Trle/tomb4.exe" <<'PY'
import os, sys
radice, n = sys.argv[1], int(sys.argv[2])
programma = open(sys.argv[3], "rb").read()
os.makedirs(radice, exist_ok=True)
for i in range(n):
    estensione = ("tr4", "dll", "txt", "exe")[i % 4] if i < 400 else "tr4"
    with open(os.path.join(radice, "f%06d.%s" % (i, estensione)), "wb") as f:
        f.write(programma if estensione == "exe" else b"")
with open(os.path.join(radice, "tomb4.exe"), "wb") as f:
    f.write(programma)
PY
"$bench" collect 'C:\Program Files (x86)\Grande' 'C:\Ordelio' 1 >/dev/null
"$bench" collect 'C:\Program Files (x86)\Grande' 'C:\Ordelio' "${GIRI:-7}" > "$dir/righe"
awk -v file="$file" "$mediana"'
  { t[NR] = $1 }
  END { printf "editor folder of %d files, median of %d runs: collection %.4fs\n", file, NR, mediana(t, NR) }' "$dir/righe"
