// The analysis window: the report area, the progress bar, the search row and the menu bar, each click going
// to the analysis model's handler.
#pragma once

#include <array>

#include "analysis/dialog_analisi.h"
#include "analysis/forma_analisi.h"
#include "gui_win32/controlli.h"
#include "gui_win32/finestra.h"

namespace win32 {

// The check marks of the report items, in the menu bar's own state (CheckMenuItem).
class SegniW : public analysis::SegniMenu {
 public:
  void Collega(HMENU barra) { barra_ = barra; }
  bool Checked(analysis::Voce v) const override;
  void SetChecked(analysis::Voce v, bool segnato) override;

 private:
  HMENU barra_ = nullptr;
};

// The menu item id of a report item, and of any item of the menu bar.
int IdVoce(analysis::Voce v);
int IdVoceBarra(const char* nome);

class FinestraAnalisi : public Finestra {
 public:
  FinestraAnalisi(HWND proprietario, support::Messaggi& messaggi, support::DialogoFile& dialogoFile,
                  support::Appunti& appunti);

  analysis::Dialog_Analisi& Modello() { return modello_; }
  AreaTestoW& Area() { return area_; }
  HMENU Menu() const { return menu_; }

 protected:
  bool Comando(int id, int codice) override;

 private:
  HMENU menu_;
  AreaTestoW area_;
  DidascaliaW cerca_;
  BarraW barra_;
  SegniW segni_;
  analysis::Dialog_Analisi modello_;
};

}  // namespace win32
