#include "support/disposizione.h"

#include <algorithm>
#include <cstdlib>

namespace support {

Rettangolo RettangoloMostrato(const Forma& f, const Controllo& c) {
  Rettangolo r = c.r;
  if (c.tipo != TipoControllo::Pulsante) return r;
  for (const Controllo& altro : f.controlli) {
    if (&altro == &c) break;
    if (altro.tipo == TipoControllo::Pulsante && altro.r.h == c.r.h &&
        std::abs(altro.r.t - c.r.t) < kScartoRiga) {
      r.t = altro.r.t;
      break;
    }
  }
  return r;
}

Punto PostoInCascata(Area area, int w, int h, int n, int passo) {
  const Punto centro{area.x + (area.w - w) / 2, area.y + (area.h - h) / 2};
  // How many steps fit below and right of the middle, and then of the top left, before the window leaves.
  const auto passi = [&](Punto da) {
    if (passo <= 0) return 0;
    return std::max(0, std::min((area.x + area.w - w - da.x) / passo, (area.y + area.h - h - da.y) / passo));
  };
  const int dalCentro = passi(centro) + 1;
  if (n < dalCentro) return {centro.x + n * passo, centro.y + n * passo};
  const Punto angolo{area.x, area.y};
  const int k = (n - dalCentro) % (passi(angolo) + 1);
  return {angolo.x + k * passo, angolo.y + k * passo};
}

Punto PostoLibero(Area area, int w, int h, std::span<const Punto> occupati, int passo) {
  // Of one more place than there are windows, one is free.
  for (int n = 0;; ++n) {
    const Punto p = PostoInCascata(area, w, h, n, passo);
    if (std::find(occupati.begin(), occupati.end(), p) == occupati.end() ||
        n >= static_cast<int>(occupati.size()))
      return p;
  }
}

}  // namespace support
