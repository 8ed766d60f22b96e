// The lines of a report string as the report area draws them, for any toolkit: a CR LF, a lone CR and a
// lone LF each end a line, and positions are the string's own (a CR LF counts two). Only the starts of the
// lines are kept, so a view that holds the string and this index can draw a listing of any length one
// screen at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace support {

class RigheTesto {
 public:
  void Imposta(const std::string& testo);
  // Never 0: an empty string is one empty line.
  std::size_t Quante() const { return inizi_.size(); }
  std::size_t Inizio(std::size_t riga) const { return inizi_[riga]; }
  // Where the line's text ends, before its line break.
  std::size_t Fine(std::size_t riga) const;
  // The line that holds `posizione`; a position on a line break belongs to the line the break ends, and
  // one past the end of the string to the last line.
  std::size_t RigaDi(std::size_t posizione) const;

 private:
  std::vector<std::size_t> inizi_{0};
  // The ends of the lines' text, one per line.
  std::vector<std::size_t> fini_{0};
};

// Columns in pixels of a fixed-pitch font: every byte is `larghezza` wide, a tab goes on to the next stop,
// the stops being `tab` apart. The x of `posizione` within the line [inizio, fine) of `testo`.
int XDi(const std::string& testo, std::size_t inizio, std::size_t posizione, int larghezza, int tab);
// The position in the line [inizio, fine) nearest to `x`: a click in the second half of a character falls
// after it.
std::size_t PosizioneDaX(const std::string& testo, std::size_t inizio, std::size_t fine, int x, int larghezza,
                         int tab);
// The width of the widest line, for the horizontal scroll bar.
int LarghezzaMassima(const std::string& testo, const RigheTesto& righe, int larghezza, int tab);
// Where the caret goes from `pos` at a key: a CR LF is crossed in one step, as the user sees one line break;
// up and down keep the column (in pixels of a fixed-pitch font), a page being `pagina` lines.
enum class Movimento {
  Sinistra,
  Destra,
  Su,
  Giu,
  PaginaSu,
  PaginaGiu,
  InizioRiga,
  FineRiga,
  InizioTesto,
  FineTesto
};
std::size_t Muovi(const std::string& testo, const RigheTesto& righe, std::size_t pos, Movimento m,
                  std::size_t pagina, int larghezza, int tab);
// The movement of a key, from a front end's own codes of the keys that move the caret, listed in the order of
// `Movimento` (left, right, up, down, page up, page down, home, end); with Ctrl, home and end go to the
// text's ends. None for any other key.
std::optional<Movimento> MovimentoDelTasto(std::span<const int, 8> tasti, int tasto, bool ctrl);
// The word around `pos`, as a double click selects it: the run of characters up to a blank on its line, a
// file name in a listing.
struct Intervallo {
  std::size_t inizio, fine;
};
Intervallo ParolaIntorno(const std::string& testo, const RigheTesto& righe, std::size_t pos);

// A piece of a line as a view draws it: the bytes [inizio, fine) of the string from x0 to x1, all selected or
// none. A tab is a piece of its own with no bytes, a blank up to its stop.
struct Corsa {
  int x0, x1;
  std::size_t inizio, fine;
  bool selezionata;
};
// The pieces of the line [inizio, fine) that fall between x = `da` and `da + larghezza`, left to right, the
// selection being [sel0, sel1).
void CorseDi(const std::string& testo, std::size_t inizio, std::size_t fine, int larghezza_car, int tab,
             int da, int larghezza, std::size_t sel0, std::size_t sel1,
             const std::function<void(const Corsa&)>& disegna);

// The first line to show so that `riga` stands in the middle of `visibili` lines, none shown past the last.
std::size_t PrimaRigaAlCentro(std::size_t riga, std::size_t visibili, std::size_t totale);

}  // namespace support
