#!/usr/bin/env bash
# The program's main job from end to end on a sample machine: the headless tool builds a Wine prefix with
# both installations, finds them as the program does at start, runs the check, and unpacks the snapshot as
# the supporter would, printing its table.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa cmake ninja-build g++ make nlohmann-json3-dev

silenzioso cmake --preset release
silenzioso cmake --build --preset release -j "$(nproc)" --target checkordl-cli

dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
# The tool keeps its working files beside itself, as the program does: give it a folder of its own.
cp build/release/cli/checkordl-cli "$dir/"
export WINEPREFIX=$dir/prefix
echo "== demo machine in $WINEPREFIX"
"$dir/checkordl-cli" demo "$WINEPREFIX"
echo "== discovery"
"$dir/checkordl-cli" discover
ls -l "$WINEPREFIX/drive_c/INFO_ORDL.BIN"
