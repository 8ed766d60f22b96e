// The main window: the two folders, the check run and the reading of a snapshot. It opens the folder picker
// and the analysis window modally; closing it ends the program.
#pragma once

#include <functional>

#include "collection/principale.h"
#include "formats/preferenze.h"
#include "gui_win32/controlli.h"
#include "gui_win32/finestra.h"
#include "picker/dialog_getdir.h"

namespace win32 {

class FinestraAnalisi;
class FinestraGetDir;

// What the window takes from outside: the boxes and dialogs that would wait for a user, and the way a
// modal window is shown. The program passes the Win32 ones; tests answer from a script.
struct Servizi {
  support::Messaggi& messaggi;
  support::DialogoFile& dialogoFile;
  support::Appunti& appunti;
  std::function<void(FinestraGetDir&)> mostraGetDir;
  std::function<void(FinestraAnalisi&)> mostraAnalisi;
  // The program ends with the window (the message loop gets WM_QUIT); a test's window just goes.
  bool fineProgramma = false;
};

class FinestraPrincipale : public Finestra {
 public:
  // Makes the window (hidden) and runs the start-up discovery.
  explicit FinestraPrincipale(Servizi servizi);

  collection::Principale& Modello() { return modello_; }

 protected:
  bool Comando(int id, int codice) override;
  bool PuoChiudersi() override { return collection::PuoChiudersi(modello_); }
  void Distrutta() override;

 private:
  void Pul_EstraiDati_Click();

  Servizi servizi_;
  DidascaliaW dirOrdl_, nomeTrle_, info_;
  BarraW barra_;
  CicloW eventi_;
  picker::DialogoGetDir getDir_;
  collection::Principale modello_;
  formats::PrefRecord pref_;
};

}  // namespace win32
