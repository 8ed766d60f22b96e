#include "host/ambiente.h"

namespace host {

SistemaWindows LeggiSistemaWindows() { return {}; }

std::vector<std::string> EseguibiliInCima(const std::string&, const std::vector<std::string>&) { return {}; }

Eseguibile StudiaEseguibile(const std::string& winPath, const SistemaWindows&) {
  Eseguibile e;
  e.percorso = winPath;
  return e;
}

std::vector<std::string> FileDaVirtualStore(const std::string&, std::size_t, std::size_t* totale) {
  *totale = 0;
  return {};
}

}  // namespace host
