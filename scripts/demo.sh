#!/usr/bin/env bash
# The program's main job from end to end on a small sample machine: pack a few files of an editor
# installation into a snapshot, then unpack it as the supporter would and print its table.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa cmake ninja-build g++ make

cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DCHECKORDL_TESTS=OFF >/dev/null
cmake --build build/demo -j "$(nproc)" >/dev/null
cli=$PWD/build/demo/cli/checkordl-cli

dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
export WINEPREFIX=$dir/prefix
mkdir -p "$WINEPREFIX/dosdevices" "$WINEPREFIX/drive_c/Giochi/Trle/data" "$WINEPREFIX/drive_c/Dati"
ln -s ../drive_c "$WINEPREFIX/dosdevices/c:"
printf 'Editor folder of the sample machine\r\n' > "$WINEPREFIX/drive_c/Giochi/Trle/ordeio.txt"
head -c 264 /dev/urandom > "$WINEPREFIX/drive_c/Giochi/Trle/script.dat"
head -c 100000 /dev/urandom > "$WINEPREFIX/drive_c/Giochi/Trle/data/title.tr4"

echo "== pack"
"$cli" pack 'C:\INFO_ORDL.BIN' 'C:\Giochi\Trle\script.dat' 'C:\Giochi\Trle\ordeio.txt' \
  'C:\Giochi\Trle\data\title.tr4' 'C:\Giochi\Trle\missing.txt'
ls -l "$WINEPREFIX/drive_c/INFO_ORDL.BIN"
echo "== unpack"
"$cli" unpack 'C:\INFO_ORDL.BIN' 'C:\Dati'
for f in script.dat ordeio.txt; do cmp "$WINEPREFIX/drive_c/Giochi/Trle/$f" "$WINEPREFIX/drive_c/Dati/$f"; done
cmp "$WINEPREFIX/drive_c/Giochi/Trle/data/title.tr4" "$WINEPREFIX/drive_c/Dati/title.tr4"
echo "unpacked members are identical to the originals"
