#include "collection/campione.h"

#include "collection/blocco.h"
#include "host/macchina.h"
#include "support/files.h"

namespace collection {

void CreaElencoCampione(const std::string& cartella, const std::string& cartellaProgramma,
                        const VistaScansione& vista, support::Messaggi& messaggi) {
  // A program folder at a drive's root already ends in "\".
  const std::string separatore = !cartellaProgramma.empty() && cartellaProgramma.back() == '\\' ? "" : "\\";
  const std::string nome = cartellaProgramma + separatore + "backup_trle.le";
  const host::BloccoCartella blocco = collection::BloccaCartellaProgramma(cartellaProgramma, messaggi);
  if (blocco.Occupato()) return;
  if (CreaElencoFile(nome, cartella, vista))
    messaggi.Semplice("Creato file elenco:  " + nome);
  else
    messaggi.Semplice("Errore creando file elenco");
}

void CreaElencoCampione(support::DialogoCartella& dialogo, const std::string& cartellaProgramma,
                        const VistaScansione& vista, support::Messaggi& messaggi) {
  dialogo.ImpostaTitolo("Seleziona cartella con backup corretto backup_trle");
  dialogo.ImpostaValori(host::CartellaCorrente());
  dialogo.MostraModale();
  if (dialogo.ExitValue()) CreaElencoCampione(dialogo.PathDir(), cartellaProgramma, vista, messaggi);
}

}  // namespace collection
