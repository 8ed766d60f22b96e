#!/usr/bin/env bash
# Retakes the pictures of the three windows in docs/: on the demo machine, after its check run, under a
# virtual X server, with the fonts a desktop would have.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa cmake ninja-build g++ make libgtest-dev libgmock-dev qt6-base-dev nlohmann-json3-dev xvfb xauth fonts-dejavu-core \
  fonts-liberation

build=build/release
cmake --preset release >/dev/null
cmake --build --preset release -j 2 --target checkordl-cli checkordl_schermate >/dev/null

dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
# Both tools keep their working files beside themselves: give them a folder of their own.
cp "$build/cli/checkordl-cli" "$build/tools/checkordl_schermate" "$dir/"
export WINEPREFIX=$dir/prefix
# The demo runs the check, whose closing message goes to standard error.
"$dir/checkordl-cli" demo "$WINEPREFIX" >/dev/null 2>&1
xvfb-run -a -s "-screen 0 1024x768x24 -dpi 96" "$dir/checkordl_schermate" "$PWD/docs"
