#include "support/righe.h"

#include <algorithm>

namespace support {

void RigheTesto::Imposta(const std::string& testo) {
  inizi_.assign(1, 0);
  fini_.clear();
  for (std::size_t i = 0; i < testo.size(); ++i) {
    const char c = testo[i];
    if (c != '\r' && c != '\n') continue;
    fini_.push_back(i);
    if (c == '\r' && i + 1 < testo.size() && testo[i + 1] == '\n') ++i;
    inizi_.push_back(i + 1);
  }
  fini_.push_back(testo.size());
  // The index lasts as long as its report: it keeps its own size, not the growth's slack.
  inizi_.shrink_to_fit();
  fini_.shrink_to_fit();
}

std::size_t RigheTesto::Fine(std::size_t riga) const {
  return fini_[riga];
}

std::size_t RigheTesto::RigaDi(std::size_t posizione) const {
  return static_cast<std::size_t>(std::upper_bound(inizi_.begin(), inizi_.end(), posizione) -
                                  inizi_.begin()) -
         1;
}

namespace {

int Avanza(char c, int x, int larghezza, int tab) {
  if (c == '\t' && tab > 0) return (x / tab + 1) * tab;
  return x + larghezza;
}

}  // namespace

int XDi(const std::string& testo, std::size_t inizio, std::size_t posizione, int larghezza, int tab) {
  int x = 0;
  for (std::size_t i = inizio; i < posizione && i < testo.size(); ++i)
    x = Avanza(testo[i], x, larghezza, tab);
  return x;
}

std::size_t PosizioneDaX(const std::string& testo, std::size_t inizio, std::size_t fine, int x, int larghezza,
                         int tab) {
  int sinistra = 0;
  for (std::size_t i = inizio; i < fine && i < testo.size(); ++i) {
    const int destra = Avanza(testo[i], sinistra, larghezza, tab);
    if (x < (sinistra + destra + 1) / 2) return i;
    sinistra = destra;
  }
  return std::min(fine, testo.size());
}

int LarghezzaMassima(const std::string& testo, const RigheTesto& righe, int larghezza, int tab) {
  int massima = 0;
  for (std::size_t r = 0; r < righe.Quante(); ++r)
    massima = std::max(massima, XDi(testo, righe.Inizio(r), righe.Fine(r), larghezza, tab));
  return massima;
}

std::optional<Movimento> MovimentoDelTasto(std::span<const int, 8> tasti, int tasto, bool ctrl) {
  for (std::size_t i = 0; i < tasti.size(); ++i) {
    if (tasti[i] != tasto) continue;
    const auto m = static_cast<Movimento>(i);
    if (ctrl && m == Movimento::InizioRiga) return Movimento::InizioTesto;
    if (ctrl && m == Movimento::FineRiga) return Movimento::FineTesto;
    return m;
  }
  return std::nullopt;
}

std::size_t Muovi(const std::string& testo, const RigheTesto& righe, std::size_t pos, Movimento m,
                  std::size_t pagina, int larghezza, int tab) {
  pos = std::min(pos, testo.size());
  const std::size_t riga = righe.RigaDi(pos);
  const auto verticale = [&](long quante) {
    const long voluta =
        std::clamp(static_cast<long>(riga) + quante, 0L, static_cast<long>(righe.Quante()) - 1);
    const auto r = static_cast<std::size_t>(voluta);
    return PosizioneDaX(testo, righe.Inizio(r), righe.Fine(r),
                        XDi(testo, righe.Inizio(riga), pos, larghezza, tab), larghezza, tab);
  };
  const long p = static_cast<long>(std::max<std::size_t>(pagina, 1));
  switch (m) {
    case Movimento::Sinistra:
      if (pos == 0) return 0;
      return pos - (pos >= 2 && testo.compare(pos - 2, 2, "\r\n") == 0 ? 2 : 1);
    case Movimento::Destra:
      if (pos >= testo.size()) return pos;
      return pos + (testo.compare(pos, 2, "\r\n") == 0 ? 2 : 1);
    case Movimento::Su:
      return verticale(-1);
    case Movimento::Giu:
      return verticale(1);
    case Movimento::PaginaSu:
      return verticale(-p);
    case Movimento::PaginaGiu:
      return verticale(p);
    case Movimento::InizioRiga:
      return righe.Inizio(riga);
    case Movimento::FineRiga:
      return righe.Fine(riga);
    case Movimento::InizioTesto:
      return 0;
    case Movimento::FineTesto:
      return testo.size();
  }
  return pos;
}

Intervallo ParolaIntorno(const std::string& testo, const RigheTesto& righe, std::size_t pos) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\0'; };
  pos = std::min(pos, testo.size());
  const std::size_t riga = righe.RigaDi(pos);
  std::size_t a = pos, b = pos;
  while (a > righe.Inizio(riga) && !blank(testo[a - 1])) --a;
  while (b < righe.Fine(riga) && !blank(testo[b])) ++b;
  return {a, b};
}

void CorseDi(const std::string& testo, std::size_t inizio, std::size_t fine, int larghezza_car, int tab,
             int da, int larghezza, std::size_t sel0, std::size_t sel1,
             const std::function<void(const Corsa&)>& disegna) {
  Corsa c{0, 0, inizio, inizio, false};
  const auto scarica = [&] {
    if (c.x1 > c.x0) disegna(c);
  };
  int x = 0;
  for (std::size_t i = inizio; i < fine && i < testo.size(); ++i) {
    const int dopo = Avanza(testo[i], x, larghezza_car, tab);
    if (dopo <= da) {
      x = dopo;
      c = {x, x, i + 1, i + 1, false};
      continue;
    }
    if (x >= da + larghezza) break;
    const bool sel = i >= sel0 && i < sel1, tabulazione = testo[i] == '\t';
    if (sel != c.selezionata || tabulazione || (c.fine == c.inizio && c.x1 > c.x0)) {
      scarica();
      c = {x, x, i, i, sel};
    }
    c.x1 = dopo;
    if (!tabulazione) c.fine = i + 1;
    x = dopo;
  }
  scarica();
}

std::size_t PrimaRigaAlCentro(std::size_t riga, std::size_t visibili, std::size_t totale) {
  const std::size_t prima = riga > visibili / 2 ? riga - visibili / 2 : 0;
  const std::size_t ultima_prima = totale > visibili ? totale - visibili : 0;
  return std::min(prima, ultima_prima);
}

}  // namespace support
