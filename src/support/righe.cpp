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

std::size_t RigheTesto::Fine(std::size_t riga) const { return fini_[riga]; }

std::size_t RigheTesto::RigaDi(std::size_t posizione) const {
  return static_cast<std::size_t>(std::upper_bound(inizi_.begin(), inizi_.end(), posizione) - inizi_.begin()) - 1;
}

namespace {

int Avanza(char c, int x, int larghezza, int tab) {
  if (c == '\t' && tab > 0) return (x / tab + 1) * tab;
  return x + larghezza;
}

}  // namespace

int XDi(const std::string& testo, std::size_t inizio, std::size_t posizione, int larghezza, int tab) {
  int x = 0;
  for (std::size_t i = inizio; i < posizione && i < testo.size(); ++i) x = Avanza(testo[i], x, larghezza, tab);
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

std::size_t PrimaRigaAlCentro(std::size_t riga, std::size_t visibili, std::size_t totale) {
  const std::size_t prima = riga > visibili / 2 ? riga - visibili / 2 : 0;
  const std::size_t ultima_prima = totale > visibili ? totale - visibili : 0;
  return std::min(prima, ultima_prima);
}

}  // namespace support
