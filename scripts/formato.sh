#!/usr/bin/env bash
# The code as the repository's .clang-format lays it out. Without an argument: names each C++ file that
# differs from that layout and fails if there is one. With --applica: lays those files out in place.
# The layout is that of clang-format 14, Debian 12's, which CI runs: another version may lay out a few lines
# otherwise, so the check takes that one where it can.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa clang-format git
formatta=$(command -v clang-format-14 || command -v clang-format)
# tests/data holds sample files as they came, not code of ours.
mapfile -d '' files < <(git ls-files -z -- '*.cpp' '*.h' ':!tests/data')
if [ "${1:-}" = --applica ]; then
  "$formatta" -i "${files[@]}"
  exit 0
fi
# One run over all files: each line it would change is a warning that opens with the file's name.
diversi=$("$formatta" --dry-run "${files[@]}" 2>&1 | grep ': warning: code should be clang-formatted' |
  cut -d: -f1 | sort -u || true)
if [ -n "$diversi" ]; then
  echo "$diversi" | sed 's/^/not laid out as .clang-format says: /'
  echo "files that differ: $(echo "$diversi" | wc -l) ($("$formatta" --version)); bash scripts/formato.sh --applica lays them out"
  exit 1
fi
