#include "collection/campione.h"

#include "collection/scansione.h"
#include "host/machine.h"

namespace collection {

void CreaElencoCampione(Principale& principale, const std::string& cartellaProgramma) {
  support::DialogoCartella& dialogo = principale.Dialog_GetDir;
  dialogo.ImpostaTitolo("Seleziona cartella con backup corretto backup_trle");
  dialogo.ImpostaValori(host::CartellaCorrente());
  dialogo.MostraModale();
  if (!dialogo.ExitValue()) return;
  // A program folder at a drive's root already ends in "\".
  const std::string separatore = !cartellaProgramma.empty() && cartellaProgramma.back() == '\\' ? "" : "\\";
  const std::string nome = cartellaProgramma + separatore + "backup_trle.le";
  if (CreaElencoFile(nome, dialogo.PathDir(), principale))
    principale.Messaggi.Semplice("Creato file elenco:  " + nome);
  else
    principale.Messaggi.Semplice("Errore creando file elenco");
}

void CreaElencoCampione(Principale& principale) {
  CreaElencoCampione(principale, host::CartellaProgramma());
}

}  // namespace collection
