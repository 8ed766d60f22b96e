#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for a while, seeded from the test data.
# Usage: scripts/fuzz.sh [SECONDS_PER_TARGET] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa clang libclang-rt-14-dev cmake ninja-build xxd
secondi=${1:-20}
shift || true
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)"

# The seeds of each target: folders under tests/data, whose files are taken as they are, except *.hex files,
# which hold the bytes as hexadecimal text.
declare -A semi=(
  [archivio]="tests/data/record"
  [elenco]="tests/data/elenchi"
  [info_header]="tests/data/record"
  [preferenze]="tests/data/record"
  [registro]="tests/data/registro"
  [script]="tests/data/script ../shared/realdata"
  [snapshot]="tests/data/snapshot"
  [versione]="tests/data/versione"
)

bersagli=("$@")
if [ ${#bersagli[@]} -eq 0 ]; then
  for f in fuzz/*.cpp; do bersagli+=("$(basename "$f" .cpp)"); done
fi
for b in "${bersagli[@]}"; do
  seme="build/fuzz/semi/$b"
  rm -rf "$seme" && mkdir -p "$seme" "build/fuzz/nuovi/$b"
  for cartella in ${semi[$b]:-}; do
    [ -d "$cartella" ] || continue
    while IFS= read -r -d '' f; do
      nome=$(echo "$f" | tr '/' '_')
      case "$f" in
        *.hex) xxd -r -p "$f" > "$seme/${nome%.hex}" ;;
        *) cp "$f" "$seme/$nome" ;;
      esac
    done < <(find "$cartella" -type f -print0)
  done
  echo "== $b: ${secondi}s, $(ls "$seme" | wc -l) seeds"
  # New inputs go to a scratch folder; the seeds are only read.
  if ! "build/fuzz/fuzz/$b" -max_total_time="$secondi" -print_final_stats=1 -rss_limit_mb=2048 \
    "build/fuzz/nuovi/$b" "$seme" > "build/fuzz/$b.log" 2>&1; then
    tail -40 "build/fuzz/$b.log"
    echo "fuzz target $b failed"
    exit 1
  fi
  grep -E '^stat::(number_of_executed_units|peak_rss_mb)' "build/fuzz/$b.log"
done
