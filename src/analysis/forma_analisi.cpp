#include "analysis/forma_analisi.h"

namespace analysis {

bool EseguiComando(Dialog_Analisi& d, const VoceBarra& v) {
  switch (v.comando) {
    case Comando::CaricaFile:
      mnu_CaricaFile_Click(d);
      break;
    case Comando::SalvaFile:
      mnu_SalvaFile_Click(d);
      break;
    case Comando::Esci:
      return false;
    case Comando::Copia:
      mnu_Copia_Click(d);
      break;
    case Comando::Voce:
      EseguiVoce(d, v.voce);
      break;
    case Comando::Confronta:
      mnu_Confronta_Click(d);
      break;
    case Comando::RiepilogoProblemi:
      mnu_RiepilogoProblemi_Click(d);
      break;
    case Comando::SalvaCopiaAnonima:
      mnu_SalvaCopiaAnonima_Click(d);
      break;
    case Comando::SalvaTutto:
      mnu_SalvaTutto_Click(d);
      break;
    case Comando::CopiaRisposta:
      mnu_CopiaRisposta_Click(d);
      break;
  }
  return true;
}

}  // namespace analysis
