#include "gui_win32/finestra_analisi.h"

#include <string_view>

namespace win32 {
namespace {

HMENU BarraMenu() {
  HMENU barra = CreateMenu();
  std::array<HMENU, analysis::kMenu.size()> menu{};
  for (HMENU& m : menu) m = CreatePopupMenu();
  int id = kPrimaVoce;
  for (const analysis::VoceBarra& v : analysis::kVociBarra)
    AppendMenuA(menu[v.menu], MF_STRING, static_cast<UINT_PTR>(id++), v.testo);
  for (std::size_t i = 0; i < menu.size(); ++i)
    AppendMenuA(barra, MF_POPUP, reinterpret_cast<UINT_PTR>(menu[i]), analysis::kMenu[i].testo);
  return barra;
}

}  // namespace

int IdVoceBarra(const char* nome) {
  for (std::size_t i = 0; i < analysis::kVociBarra.size(); ++i)
    if (std::string_view(nome) == analysis::kVociBarra[i].nome) return kPrimaVoce + static_cast<int>(i);
  return -1;
}

int IdVoce(analysis::Voce v) {
  return IdVoceBarra(analysis::VoceDi(v).controllo);
}

bool SegniW::Checked(analysis::Voce v) const {
  return (GetMenuState(barra_, static_cast<UINT>(IdVoce(v)), MF_BYCOMMAND) & MF_CHECKED) != 0;
}

void SegniW::SetChecked(analysis::Voce v, bool segnato) {
  CheckMenuItem(barra_, static_cast<UINT>(IdVoce(v)), MF_BYCOMMAND | (segnato ? MF_CHECKED : MF_UNCHECKED));
}

FinestraAnalisi::FinestraAnalisi(HWND proprietario, support::Messaggi& messaggi,
                                 support::DialogoFile& dialogoFile, support::Appunti& appunti)
    : menu_(BarraMenu()), modello_{area_, cerca_, barra_, segni_, messaggi, dialogoFile, appunti} {
  Crea(analysis::kFormaAnalisi, proprietario, WS_POPUP | WS_CAPTION | WS_SYSMENU, menu_);
  area_.Collega(Controllo("Text_Out"));
  cerca_.Collega(Controllo("Text_Cerca"));
  barra_.Collega(Controllo("ProgressBar1"));
  segni_.Collega(menu_);
  area_.ImpostaTesto(analysis::kTestoIniziale);
}

bool FinestraAnalisi::Comando(int id, int codice) {
  const int voce = id - kPrimaVoce;
  if (voce >= 0 && voce < static_cast<int>(analysis::kVociBarra.size())) {
    // The menu has closed: what lay below it is painted again before the work starts.
    RedrawWindow(Hwnd(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    if (!analysis::EseguiComando(modello_, analysis::kVociBarra[static_cast<std::size_t>(voce)])) Chiudi();
    return true;
  }
  if (codice != BN_CLICKED) return false;
  if (id == IdDi("Pul_Trova"))
    analysis::Pul_Trova_Click(modello_);
  else if (id == IdDi("Pul_Prima"))
    analysis::Pul_Prima_Click(modello_);
  else if (id == IdDi("Pul_Dopo"))
    analysis::Pul_Dopo_Click(modello_);
  else
    return false;
  return true;
}

}  // namespace win32
