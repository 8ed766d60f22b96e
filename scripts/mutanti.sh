#!/usr/bin/env bash
# Breaks named behaviours of the program on purpose, one at a time, and shows which tests catch each: a
# check that the tests still hold the line after they are cut or reshaped. Each row of scripts/mutanti.txt is
#   behaviour | file | exact line as it stands (once in the file) | the line that breaks it | ctest regex
# A row whose tests all pass is a behaviour no test guards: the script names it and fails.
# Usage: scripts/mutanti.sh [BUILD_DIR]   (default build/mutanti; the source tree is restored after each row)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/mutanti}
cmake --preset dev -B "$build" >/dev/null
cmake --build "$build" -j "$(nproc)" >/dev/null

originale=""
file=""
ripristina() { [ -z "$file" ] || printf '%s' "$originale" > "$file"; }
trap ripristina EXIT

presi=0
mancati=()
while IFS='|' read -r comportamento file prima dopo prove; do
  comportamento=$(echo "$comportamento" | xargs)
  [ -n "$comportamento" ] && [ "${comportamento:0:1}" != "#" ] || { file=""; continue; }
  file=$(echo "$file" | xargs)
  prove=$(echo "$prove" | xargs)
  prima=${prima# }; prima=${prima% }
  dopo=${dopo# }; dopo=${dopo% }
  originale=$(cat "$file"; printf x); originale=${originale%x}
  python3 - "$file" "$prima" "$dopo" <<'PY' || { echo "!! $comportamento: the line is not once in $file"; exit 1; }
import sys
path, before, after = sys.argv[1:]
text = open(path, encoding="latin-1").read()
lines = text.split("\n")
hits = [i for i, l in enumerate(lines) if l.strip() == before.strip()]
if len(hits) != 1:
    sys.exit(1)
i = hits[0]
indent = lines[i][: len(lines[i]) - len(lines[i].lstrip())]
lines[i] = indent + after.strip()
open(path, "w", encoding="latin-1").write("\n".join(lines))
PY
  if ! cmake --build "$build" -j "$(nproc)" >/dev/null 2>&1; then
    echo "caught by the compiler: $comportamento"
    presi=$((presi + 1))
  else
    falliti=$(cd "$build" && ctest -R "$prove" -j "$(nproc)" 2>&1 | sed -n 's/^ *[0-9]* - \([^ ]*\) .*/\1/p' | tr '\n' ' ')
    if [ -n "$falliti" ]; then
      echo "caught: $comportamento -> $falliti"
      presi=$((presi + 1))
    else
      echo "NOT CAUGHT: $comportamento"
      mancati+=("$comportamento")
    fi
  fi
  ripristina
  file=""
done < scripts/mutanti.txt
cmake --build "$build" -j "$(nproc)" >/dev/null
echo "$presi caught, ${#mancati[@]} not caught"
[ ${#mancati[@]} -eq 0 ]
