#include "collection/blocco.h"

namespace collection {

host::BloccoCartella BloccaCartellaProgramma(const std::string& cartella, support::Messaggi& messaggi) {
  host::BloccoCartella blocco(cartella);
  if (blocco.Occupato())
    messaggi.Critico("Another CheckORDL is using the program folder " + cartella +
                     ". Close it and try again.");
  return blocco;
}

}  // namespace collection
