#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for a while, seeded from the test data.
# Usage: scripts/fuzz.sh [SECONDS_PER_TARGET] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa cmake ninja-build nlohmann-json3-dev
installa_clang
secondi=${1:-20}
shift || true
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)"

# The seeds of each target: files and folders of the test data (and Wine's own executables), taken as they
# are, except *.hex files, read as the tests read them (a seed a case); expected texts are skipped.
wine_pe=/usr/lib/x86_64-linux-gnu/wine/x86_64-windows
declare -A semi=(
  [ambiente]="tests/data/ambiente"
  [archivio]="tests/data/record/archivio_header.hex tests/data/record/archivio_livello.hex"
  [elenco]="tests/data/elenchi tests/data/record/elenco.hex tests/data/prospetti/backup_trle.le tests/data/prospetti/trle_cd.le"
  [info_header]="tests/data/record/info_header.hex"
  [preferenze]="tests/data/record/preferenze.hex"
  [registro]="tests/data/registro"
  [script]="../shared/realdata tests/data/script"
  [riepilogo]="tests/data/prospetti/INFO_ORDL.BIN tests/data/riepilogo tests/data/snapshot/ambiente.bin"
  [snapshot]="tests/data/prospetti/INFO_ORDL.BIN tests/data/snapshot/utenti.bin"
  [anonimo]="tests/data/prospetti/INFO_ORDL.BIN tests/data/snapshot/utenti.bin tests/data/snapshot/ambiente.bin"
  [versione]="tests/data/versione $wine_pe/winver.exe $wine_pe/notepad.exe"
  [regole]="tests/data/regole"
  [regole_valutazione]="tests/data/regole"
  [pe_importazioni]="$wine_pe/winver.exe $wine_pe/notepad.exe $wine_pe/../i386-windows/notepad.exe"
)

bersagli=("$@")
if [ ${#bersagli[@]} -eq 0 ]; then
  for f in fuzz/*.cpp; do bersagli+=("$(basename "$f" .cpp)"); done
fi
# Seeds, then the run; the runs go side by side, one a core.
fuzza() {
  local b=$1 seme="build/fuzz/semi/$1" cartella f nome
  rm -rf "$seme" && mkdir -p "$seme" "build/fuzz/nuovi/$b"
  for cartella in ${semi[$b]:-}; do
    [ -e "$cartella" ] || continue
    while IFS= read -r -d '' f; do
      nome=$(echo "${f#../}" | tr '/' '_')
      case "$f" in
        *.hex) build/fuzz/fuzz/semi_esadecimali "$f" "$seme" "${nome%.hex}" ;;
        *.txt | *.md | *.rc | *.sh) ;;
        *) cp "$f" "$seme/$nome" ;;
      esac
    done < <(find "$cartella" -type f -print0)
  done
  # New inputs go to a scratch folder; the seeds are only read.
  "build/fuzz/fuzz/$b" -max_total_time="$secondi" -print_final_stats=1 -rss_limit_mb=2048 \
    -artifact_prefix="build/fuzz/$b-" "build/fuzz/nuovi/$b" "$seme" > "build/fuzz/$b.log" 2>&1
}

fallito=""
for ((i = 0; i < ${#bersagli[@]}; i += $(nproc))); do
  gruppo=("${bersagli[@]:i:$(nproc)}")
  pid=()
  for b in "${gruppo[@]}"; do
    fuzza "$b" &
    pid+=($!)
  done
  for k in "${!gruppo[@]}"; do
    b=${gruppo[$k]}
    esito=0
    wait "${pid[$k]}" || esito=$?
    echo "== $b: ${secondi}s, $(ls "build/fuzz/semi/$b" | wc -l) seeds"
    if [ "$esito" -eq 0 ]; then
      grep -E '^stat::(number_of_executed_units|peak_rss_mb)' "build/fuzz/$b.log"
    else
      tail -40 "build/fuzz/$b.log"
      fallito="$fallito $b"
    fi
  done
done
[ -z "$fallito" ] || { echo "fuzz targets failed:$fallito"; exit 1; }
