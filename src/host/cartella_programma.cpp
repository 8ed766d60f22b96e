// Which folder is the program folder: the same rule on every platform, whose answers the back ends give.
#include "host/file_host.h"
#include "host/macchina.h"

namespace host {

std::string CartellaProgramma() {
  const std::string eseguibile = CartellaEseguibile();
  if (CartellaScrivibile(eseguibile)) return eseguibile;
  const std::string utente = CartellaUtente();
  return utente.empty() ? eseguibile : utente;
}

}  // namespace host
