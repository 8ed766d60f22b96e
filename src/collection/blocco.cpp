#include "collection/blocco.h"

namespace collection {

bool PreparaCartellaProgramma(const std::string& cartella, support::Messaggi& messaggi) {
  // Only the user's data folder is made here: an executable's folder is there, and any other folder that is
  // missing fails where the operation writes, with that operation's own message.
  if (cartella != host::CartellaUtente()) return true;
  std::string motivo;
  if (host::PreparaCartella(cartella, &motivo)) return true;
  messaggi.Critico("Cannot make the program folder " + cartella + ": " + motivo);
  return false;
}

host::BloccoCartella BloccaCartellaProgramma(const std::string& cartella, support::Messaggi& messaggi) {
  if (!PreparaCartellaProgramma(cartella, messaggi)) return host::BloccoCartella::Rifiutato();
  host::BloccoCartella blocco(cartella);
  if (blocco.Occupato())
    messaggi.Critico("Another CheckORDL is using the program folder " + cartella +
                     ". Close it and try again." +
                     (blocco.Motivo().empty() ? std::string() : " (" + blocco.Motivo() + ")"));
  return blocco;
}

}  // namespace collection
