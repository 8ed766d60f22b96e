// The whole snapshot as one text, for the supporter's files.
#include "analysis/dialog_analisi.h"
#include "analysis/testo_completo.h"
#include "support/testo_uscita.h"

namespace analysis {

void mnu_SalvaTutto_Click(Dialog_Analisi& d) {
  if (!d.SnapshotAperto) {
    d.Messaggi.Critico(kNessunoSnapshot);
    return;
  }
  d.CommonDialog1.ImpostaTitolo(kTitoloTestoCompleto);
  d.CommonDialog1.ImpostaCartellaIniziale(CartellaIniziale(d.CartellaProgramma, d.NomeSnapshot));
  d.CommonDialog1.ImpostaNomeFile(NomeTestoCompleto(d.NomeSnapshot));
  d.CommonDialog1.ImpostaFiltro(kFiltroTestoCompleto);
  if (!d.CommonDialog1.MostraSalva()) return;
  const std::string nome = d.CommonDialog1.NomeFile();
  // As the tool writes it: on Windows as the program keeps it, on Linux as the locale reads plain text.
  if (const std::string motivo = support::ScriviTestoIntero(nome, support::TestoLocale(TestoCompleto(d)));
      !motivo.empty())
    d.Messaggi.Critico("Could not write " + nome + ": " + motivo);
}

}  // namespace analysis
