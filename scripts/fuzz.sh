#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each on its committed corpus.
# Usage: scripts/fuzz.sh [SECONDS_PER_TARGET] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa clang libclang-rt-14-dev cmake ninja-build
secondi=${1:-20}
shift || true
CC=clang CXX=clang++ cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCHECKORDL_FUZZ=ON \
  -DCHECKORDL_TESTS=OFF >/dev/null
cmake --build build/fuzz -j "$(nproc)"
bersagli=("$@")
if [ ${#bersagli[@]} -eq 0 ]; then
  for f in fuzz/*.cpp; do bersagli+=("$(basename "$f" .cpp)"); done
fi
for b in "${bersagli[@]}"; do
  mkdir -p "fuzz/corpus/$b" "build/fuzz/nuovi/$b"
  echo "== $b: ${secondi}s"
  # New inputs go to a scratch folder; the committed corpus only seeds the run.
  if ! "build/fuzz/fuzz/$b" -max_total_time="$secondi" -print_final_stats=1 -rss_limit_mb=2048 \
    "build/fuzz/nuovi/$b" "fuzz/corpus/$b" > "build/fuzz/$b.log" 2>&1; then
    tail -40 "build/fuzz/$b.log"
    echo "fuzz target $b failed"
    exit 1
  fi
  grep -E '^stat::(number_of_executed_units|peak_rss_mb)' "build/fuzz/$b.log"
done
