#include "analysis/testo.h"

namespace analysis {

void AggiungiRiga(std::string& testo, std::string_view riga) {
  testo += riga;
  testo += kFineRiga;
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
