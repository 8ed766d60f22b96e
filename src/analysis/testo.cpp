#include "analysis/testo.h"

namespace analysis {

void AggiungiRiga(std::string& testo, std::string_view riga) {
  testo += riga;
  testo += kFineRiga;
}

void AggiungiRigaAvvolta(std::string& testo, std::string_view riga, std::size_t primo, std::size_t rientro,
                         std::size_t colonne) {
  std::size_t margine = primo;  // the indent of the line being made
  while (colonne != 0 && margine + riga.size() > colonne && colonne > margine + 1) {
    const std::size_t spazio = colonne - margine;
    // The last break within the room: after a blank (which goes) or after a "\" (which stays).
    std::size_t taglio = std::string_view::npos, dopo = 0;
    for (std::size_t k = spazio; k > 0; --k) {
      if (riga[k] == ' ') {
        taglio = k;
        dopo = k + 1;
        break;
      }
      if (riga[k - 1] == '\\') {
        taglio = dopo = k;
        break;
      }
    }
    if (taglio == std::string_view::npos || taglio == 0) taglio = dopo = spazio;
    testo.append(margine, ' ');
    AggiungiRiga(testo, riga.substr(0, taglio));
    riga.remove_prefix(dopo);
    while (!riga.empty() && riga.front() == ' ') riga.remove_prefix(1);
    margine = rientro;
  }
  testo.append(margine, ' ');
  AggiungiRiga(testo, riga);
}

std::string_view TestoBooleano(bool v) {
  return v ? "True" : "False";
}

std::string Esadecimale(std::int64_t v, int bitCampo) {
  const std::uint64_t maschera = bitCampo >= 64 ? ~0ULL : (1ULL << bitCampo) - 1;
  std::uint64_t u = static_cast<std::uint64_t>(v) & maschera;
  if (u == 0) return "0";
  std::string cifre;
  for (; u; u >>= 4) cifre.insert(cifre.begin(), "0123456789ABCDEF"[u & 0xF]);
  return cifre;
}

}  // namespace analysis
