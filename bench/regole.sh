#!/usr/bin/env bash
# 200 rules on a snapshot whose editor list holds 200,000 files (the demo machine's snapshot with that list in
# place of its own): the findings of the snapshot (`findings`) without rules and with them, in turns, the
# median of (with rules) / (without), goal at most 1.5; and, for the record, the same for the checks alone
# in one process, where the rules' pass over the list weighs most. The rules are of the kinds a
# supporter writes: mostly exact names, some paths and wildcards, some fields and environment conditions.
# Usage: bench/regole.sh [NATIVE_BUILD]
set -euo pipefail
cd "$(dirname "$0")/.."
nativo=${1:-build/release}
. bench/comune.sh "$nativo/cli/checkordl-cli"
cmake --build "$nativo" --target checkordl_bench_regole >/dev/null
cp "$nativo/bench/checkordl_bench_regole" "$dir/bin/"
bench=$dir/bin/checkordl_bench_regole
"$cli" demo "$WINEPREFIX" >/dev/null 2>&1
c=$WINEPREFIX/drive_c
mkdir -p "$dir/membri" "$c/Dati"
"$cli" unpack "$c/INFO_ORDL.BIN" "$dir/membri" >/dev/null

python3 - "$dir/membri/trle.el" "$c/regole.json" <<'PY'
import json, sys
sys.path.insert(0, "bench")
from liste import lista
voci = [(("\\data\\livello%03d\\sub%02d\\file%03d.tr4" % (k // 2000, k // 100 % 20, k % 100)).encode(), k * 37 + 1)
        for k in range(200000)]
voci += [(b"\\tomb4.exe", 1015808), (b"\\ddraw.dll", 4096), (b"\\d3dx9_43.dll", 2108416)]
voci += [(("\\extra%03d.dat" % k).encode(), k + 1) for k in range(55)]
open(sys.argv[1], "wb").write(lista(b"C:\\Giochi\\Trle", voci))

def regola(i, quando):
    return {"id": "bench.r%03d" % i, "outcomes": [
        {"severity": "warn", "title": "rule %d" % i, "evidence": {"what": "{value}" if "field" in quando else "{file}"}, "when": quando},
        {"severity": "pass", "title": "rule %d holds nothing" % i, "when": {"member": "trle.el"}}]}

quando = []
for i in range(110):  # names, half of them there, as a rule names a file: once in the tree or not at all
    nome = "extra%03d.dat" % (i // 2) if i % 2 else "plugin%03d.dll" % i
    c = {"file": nome, "in": "editor"}
    if i % 3 == 0: c["size"] = {">": 1000}
    if i % 5 == 0: c["present"] = False
    quando.append(c)
for i in range(20):  # paths, at the top and deep in the tree
    quando.append({"file": "/data/livello%03d/sub00/file%03d.tr4" % (i * 5, i) if i % 4 == 0 else "/extra%03d.dat" % i,
                   "in": "editor"})
jolly = ["*.asi", "d3d*.dll", "dinput?.dll", "*.tmp", "/data/livello01?/*.wad", "*fix*.exe", "tomb4*.exe",
         "*.bak", "/*.dll", "xinput1_?.dll", "*.ini", "/data/*/sub19/*.tr4", "openal*.dll", "*.lnk", "thumbs.db",
         "*~", "*.pdb", "binkw32.dll", "/audio/*.mp3", "*.log"]
quando += [{"file": p, "in": "editor"} for p in jolly]
campi = [("header.VersioneOrdelio", {"<": "2.9"}), ("header.FlagErrori", {"bits": 256}),
         ("archive.TotLivelli", {">": 100}), ("script.levels", {">": 50}), ("header.SpazioDiscoC", {"<": 1e9}),
         ("preferences.LinguaAttuale", {"matches": "ital*"}), ("header.WindowsXp", True)]
quando += [{"field": campi[i % len(campi)][0], "value": campi[i % len(campi)][1]} for i in range(25)]
ambiente = [{"exe": "tomb4.exe", "dll_not_found": "d3dx9_*.dll"}, {"exe": "*.exe", "layer": "WINXP*"},
            {"field": "windows.version", "value": {"<": "6.1"}}, {"exe": "tomb4.exe", "web_marked": True},
            {"all": [{"field": "windows.wine", "value": True}, {"exe": "*.exe", "machine": "x64"}]}]
quando += [ambiente[i % len(ambiente)] for i in range(25)]
json.dump({"format": 1, "rules": [regola(i, q) for i, q in enumerate(quando)]}, open(sys.argv[2], "w"), indent=1)
PY
"$cli" pack "$c/grande.bin" "$dir"/membri/* >/dev/null
# The checks alone, in one process: the rules' share of the work on the list, for the record.
"$bench" 'C:\grande.bin' 'C:\Dati' 'C:\regole.json' 1 >/dev/null  # warm the cache for both alike
"$bench" 'C:\grande.bin' 'C:\Dati' 'C:\regole.json' "${GIRI:-7}" > "$dir/righe"
awk "$mediana"'
  { f[NR] = $1; r[NR] = $2; q[NR] = $2 / $1; n = $3; e = $4 }
  END {
    printf "checks in one process, median of %d runs: without rules %.4fs (%d findings), with them %.4fs (%d more), with / without = %.3f\n", NR, mediana(f, NR), e, mediana(r, NR), n, mediana(q, NR)
  }' "$dir/righe"
# The findings as the supporter runs them, the rules read from the program folder's own rules or not, in
# turns: the goal.
for giro in $(seq "${GIRI:-7}"); do
  rm -rf "$dir/bin/regole_locali"
  senza=$(misura "$cli" findings 'C:\grande.bin' | cut -d' ' -f1)
  mkdir "$dir/bin/regole_locali" && cp "$c/regole.json" "$dir/bin/regole_locali/"
  con=$(misura "$cli" findings 'C:\grande.bin' | cut -d' ' -f1)
  echo "$senza $con"
done > "$dir/comando"
grep -q '^WARN  bench\.r' "$dir/out" || { echo "the rules gave no finding"; exit 1; }
awk "$mediana"'
  { f[NR] = $1; r[NR] = $2; q[NR] = $2 / $1 }
  END {
    printf "200,000 files, 200 rules, findings of the snapshot, median of %d runs: without rules %.2fs, with them %.2fs, with / without = %.3f (goal at most 1.5)\n", NR, mediana(f, NR), mediana(r, NR), mediana(q, NR)
    exit mediana(q, NR) > 1.5
  }' "$dir/comando"
