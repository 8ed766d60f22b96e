// Where the front ends put what a form table describes: its buttons drawn in line, and a main window that
// does not hide another instance's.
#pragma once

#include <span>

#include "support/forma.h"

namespace support {

// Buttons whose tops differ by less than this stand in one row; the table's few twips between them would
// show as a step of a few pixels, more at a higher DPI.
inline constexpr int kScartoRiga = 60;

// The rectangle at which a front end draws control `c` of `f`: the table's, except that a button takes the
// top of the first button of the same height in its row.
Rettangolo RettangoloMostrato(const Forma& f, const Controllo& c);

// A point on the screen, in pixels.
struct Punto {
  int x, y;
  bool operator==(const Punto&) const = default;
};

// A rectangle of the screen, in pixels.
struct Area {
  int x, y, w, h;
};

// The place of the `n`th window of a cascade of windows of size `w` x `h` in the work area: the middle of
// it for the first, then each `passo` pixels down and to the right of the one before, back to the area's
// top left where the next one would leave it.
Punto PostoInCascata(Area area, int w, int h, int n, int passo);

// The first place of that cascade where none of `occupati` (the top left corners of the program's other
// windows) stands: the middle when no other window is there.
Punto PostoLibero(Area area, int w, int h, std::span<const Punto> occupati, int passo);

}  // namespace support
