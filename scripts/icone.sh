#!/usr/bin/env bash
# Makes the program's icon in every form the packages carry from the one drawing, pacchetto/icone/checkordl.svg:
# the PNG sizes of the hicolor theme and the Windows .ico. Run it after a change to the drawing and commit
# what it writes.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa librsvg2-bin icoutils
d=pacchetto/icone
for n in 16 22 24 32 48 64 128 256; do
  rsvg-convert -w "$n" -h "$n" "$d/checkordl.svg" -o "$d/checkordl-$n.png"
done
# Windows takes 16 to 48 as pictures and 256 compressed as PNG.
icotool -c -o "$d/checkordl.ico" "$d/checkordl-16.png" "$d/checkordl-24.png" "$d/checkordl-32.png" \
  "$d/checkordl-48.png" "$d/checkordl-64.png" -r "$d/checkordl-256.png"
ls -l "$d"
