// The answer to paste for the user, on the clipboard.
#include "analysis/dialog_analisi.h"
#include "analysis/risposta.h"

namespace analysis {

void mnu_CopiaRisposta_Click(Dialog_Analisi& d) {
  // A snapshot that could not be unpacked is answered too: the user is asked for a new one.
  if (!d.SnapshotAperto && d.ErroreSnapshot.empty()) {
    d.Messaggi.Critico(kNessunoSnapshot);
    return;
  }
  d.Clipboard.Svuota();
  d.Clipboard.ImpostaTesto(TestoRisposta(RiepilogoAperto(d), d.NomeSnapshot, FormaRisposta::testo));
  d.Messaggi.Semplice(kRispostaCopiata);
}

}  // namespace analysis
