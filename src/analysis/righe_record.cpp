#include "analysis/righe_record.h"

#include "analysis/testo.h"

namespace analysis {

void AggiungiRighe(std::string& testo, const RigheRecord& righe) {
  for (const auto& r : righe) {
    testo += r.etichetta;
    testo += ": ";
    AggiungiRiga(testo, r.valore);
  }
}

std::string Valore(bool v) {
  return std::string(TestoBooleano(v));
}

}  // namespace analysis
