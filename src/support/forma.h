// A window's form as data, without a toolkit: its caption, its client size and every control's name, kind,
// caption and rectangle in twips, and the tab order. Each front end builds its controls from these tables,
// so that the two toolkits show the same windows and the names the operations and tests use are one.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace support {

enum class TipoControllo {
  Pulsante,
  Etichetta,
  // A label that shows a folder: bright green on dark green.
  EtichettaCartella,
  Barra,
  // A one-line text box; the read-only green one shows a folder.
  Riga,
  RigaCartella,
  // The report area: fixed-pitch font, no wrapping, read-only.
  Area,
  ListaDrive,
  ListaCartelle,
};

// Twips: 1440 to the inch, whatever the screen.
struct Rettangolo {
  int l, t, w, h;
};

struct Controllo {
  const char* nome;
  TipoControllo tipo;
  const char* testo;
  Rettangolo r;
};

struct Colore {
  std::uint8_t r, g, b;
};
inline constexpr Colore kVerdeScuro{0, 64, 0};
inline constexpr Colore kVerdeChiaro{0, 255, 0};

inline constexpr int kTwipsPerPollice = 1440;

struct Forma {
  const char* nome;
  const char* caption;
  // The client area in twips (below the menu bar where the window has one).
  int larghezza, altezza;
  std::span<const Controllo> controlli;
  // Control names in tab order.
  std::span<const char* const> ordineTab;
};

// The control named `nome`; the forms are fixed, so a wrong name is a programming error.
constexpr const Controllo& ControlloDi(const Forma& f, std::string_view nome) {
  for (const Controllo& c : f.controlli)
    if (nome == c.nome) return c;
  throw "control not in the form";
}

// The title of every message box, since no call gives its own.
inline constexpr const char* kTitoloProgramma = "CheckORDL";

// The report font, and the report area's tab stops every half inch.
inline constexpr const char* kFontProspetti = "Courier New";
inline constexpr double kPuntiProspetti = 8.25;
inline constexpr int kTabulazioneTwips = 720;

}  // namespace support
