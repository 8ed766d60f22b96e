#include "support/posizioni.h"

#include <algorithm>

namespace support {

void MappaPosizioni::Imposta(const std::string& testo) {
  coppie_.clear();
  for (std::size_t i = 0; i + 1 < testo.size(); ++i)
    if (testo[i] == '\r' && testo[i + 1] == '\n') coppie_.push_back(static_cast<long>(i++));
  // The map lasts as long as its report: it keeps its own size, not the growth's slack nor a bigger
  // report's room.
  coppie_.shrink_to_fit();
}

long MappaPosizioni::VersoControllo(long posizione) const {
  return posizione - (std::lower_bound(coppie_.begin(), coppie_.end(), posizione) - coppie_.begin());
}

long MappaPosizioni::DaControllo(long posizione) const {
  // The k-th pair is one line break at control position coppie_[k] - k; those before `posizione` each hid
  // one character.
  long basso = 0, alto = static_cast<long>(coppie_.size());
  while (basso < alto) {
    const long k = (basso + alto) / 2;
    if (coppie_[static_cast<std::size_t>(k)] - k < posizione)
      basso = k + 1;
    else
      alto = k;
  }
  return posizione + basso;
}

}  // namespace support
