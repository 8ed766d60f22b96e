#!/usr/bin/env bash
# Breaks named behaviours of the program on purpose, one at a time, and shows which tests catch each: a
# check that the tests still hold the line after they are cut or reshaped. The behaviours are the blocks of
# scripts/mutanti.txt. A behaviour that no test catches is named, and the script fails.
# Usage: scripts/mutanti.sh [BUILD_DIR [TABLE]]   (default build/mutanti and scripts/mutanti.txt; each file is
# restored after its row)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
build=${1:-build/mutanti}
silenzioso cmake --preset dev -B "$build"
silenzioso cmake --build "$build" -j "$(nproc)"
python3 - "$build" "${2:-scripts/mutanti.txt}" <<'PY'
import subprocess, sys

sys.path.insert(0, "scripts")
from mutanti_righe import blocchi, posizioni

build, table = sys.argv[1:3]

def run(*cmd, **kw):
    return subprocess.run(cmd, capture_output=True, text=True, **kw)

caught, missed = 0, []
for b in blocchi(table):
    path = b["file"]
    original = open(path, encoding="latin-1").read()
    lines = original.split("\n")
    hits = posizioni(lines, b)
    if len(hits) != 1:
        print(f"!! {b['name']}: the lines are not once in {path}")
        sys.exit(1)
    i = hits[0]
    indent = lines[i][: len(lines[i]) - len(lines[i].lstrip())]
    lines[i:i + len(b["from"])] = [indent + t for t in b["to"]]
    try:
        open(path, "w", encoding="latin-1").write("\n".join(lines))
        if run("cmake", "--build", build, "-j2").returncode != 0:
            print(f"caught by the compiler: {b['name']}")
            caught += 1
            continue
        out = run("ctest", "--test-dir", build, "-R", b["tests"], "-j2", "--timeout", "120").stdout
        failed = [l.split(" - ", 1)[1].split(" (")[0].split("  #")[0].strip() for l in out.split("\n")
                  if " - " in l and any(k in l for k in ("(Failed", "(Timeout", "(SEGFAULT", "Exception"))]
        ran = "No tests were found" not in out
        if failed and ran:
            print(f"caught: {b['name']} -> {' '.join(failed)}")
            caught += 1
        else:
            print(f"NOT CAUGHT: {b['name']}")
            missed.append(b["name"])
    finally:
        open(path, "w", encoding="latin-1").write(original)
run("cmake", "--build", build, "-j2")
print(f"{caught} caught, {len(missed)} not caught")
sys.exit(1 if missed else 0)
PY
