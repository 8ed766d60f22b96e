// The folder picker's window: its controls show the picker model, and each click goes to the model's own
// handler, after which the controls show the model again.
#pragma once

#include <vector>

#include "gui_win32/finestra.h"
#include "picker/dialog_getdir.h"

namespace win32 {

class FinestraGetDir : public Finestra {
 public:
  FinestraGetDir(HWND proprietario, picker::Dialog_GetDir& modello);

  picker::Dialog_GetDir& Modello() { return modello_; }
  // Shows the model in the controls again.
  void Aggiorna();
  // The folder list's rows as shown, in order; the selected one is the folder the list stands in.
  const std::vector<picker::RigaCartella>& Righe() const { return righe_; }
  // Opens the row `indice` as a double click on it does.
  void AttivaRiga(std::size_t indice);

  // Posted by a double click, so that the list is rebuilt after its own notification has returned.
  static constexpr UINT kAttiva = WM_APP + 1;
  // Posted by a choice in the drive list, for the same reason.
  static constexpr UINT kDrive = WM_APP + 2;

 protected:
  bool Comando(int id, int codice) override;
  LRESULT Notifica(const NMHDR* n) override;
  void Privato(UINT m, WPARAM w, LPARAM l) override;
  bool PuoChiudersi() override;
  std::string Suggerimento(HWND controllo) const override;

 private:
  void Clic(void (*gestore)(picker::Dialog_GetDir&));

  picker::Dialog_GetDir& modello_;
  std::vector<picker::RigaCartella> righe_;
  bool aggiornando_ = false;
};

}  // namespace win32
