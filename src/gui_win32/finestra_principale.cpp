#include "gui_win32/finestra_principale.h"

#include "analysis/dialog_analisi.h"
#include "collection/controllo.h"
#include "collection/forma_principale.h"
#include "collection/scoperta.h"
#include "collection/selezione.h"
#include "gui_win32/finestra_analisi.h"
#include "gui_win32/finestra_getdir.h"

namespace win32 {

FinestraPrincipale::FinestraPrincipale(Servizi servizi)
    : servizi_(std::move(servizi)),
      getDir_(servizi_.messaggi,
              [this](picker::Dialog_GetDir& m) {
                FinestraGetDir finestra(Hwnd(), m);
                servizi_.mostraGetDir(finestra);
              }),
      modello_{dirOrdl_, nomeTrle_, info_, barra_, servizi_.messaggi, getDir_, eventi_, [this] { Chiudi(); },
               {}} {
  Crea(collection::kFormaPrincipale, nullptr, WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX,
       nullptr);
  dirOrdl_.Collega(Controllo("Label_DirORDL"));
  nomeTrle_.Collega(Controllo("Label_NomeTrle"));
  info_.Collega(Controllo("Label_Info"));
  barra_.Collega(Controllo("ProgressBar1"));
  ImpostaPrincipale(Hwnd());
  collection::CercaInstallazioni(modello_, pref_);
}

bool FinestraPrincipale::Comando(int id, int codice) {
  if (codice != BN_CLICKED) return false;
  if (id == IdDi("Pul_CambiaORDL"))
    collection::Pul_CambiaORDL_Click(modello_);
  else if (id == IdDi("Pul_CambiaTrle"))
    collection::Pul_CambiaTrle_Click(modello_);
  else if (id == IdDi("Pul_Start"))
    collection::Pul_Start_Click(modello_);
  else if (id == IdDi("Pul_EstraiDati"))
    Pul_EstraiDati_Click();
  else if (id == IdDi("Pul_Annulla"))
    collection::Pul_Annulla_Click(modello_);
  else
    return false;
  return true;
}

void FinestraPrincipale::Pul_EstraiDati_Click() {
  std::string nome;
  if (!analysis::Pul_EstraiDati_Click(modello_, servizi_.dialogoFile, nome)) return;
  FinestraAnalisi finestra(Hwnd(), servizi_.messaggi, servizi_.dialogoFile, servizi_.appunti);
  if (!analysis::ApriFinestra(finestra.Modello(), nome)) return;
  SetWindowTextA(finestra.Hwnd(), analysis::TitoloFinestra(finestra.Modello()).c_str());
  servizi_.mostraAnalisi(finestra);
}

void FinestraPrincipale::Distrutta() {
  RimuoviPrincipale(Hwnd());
  if (servizi_.fineProgramma) PostQuitMessage(0);
}

}  // namespace win32
