// The folder picker: a modal dialog that lists the machine's drives and the folders of one path, lets the
// user make a new folder on the way, and leaves the outcome in `ExitValue` and `PathDir`. This is its logic
// against a model of the controls; a toolkit window only shows the model and forwards clicks to it.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "support/files.h"
#include "support/interfacce.h"

namespace picker {

// The drive list: the machine's drives ("C:") and the selected one.
struct ListaDrive {
  std::vector<std::string> elenco;
  std::string Drive;
};

// The folder list: one path ("C:\" at a root, else without a closing "\") and the folders it holds, in the
// platform's order.
struct ListaCartelle {
  std::string Path;
  std::vector<std::string> sottocartelle;
};

struct Dialog_GetDir {
  support::Messaggi& messaggi;
  std::string Caption = " Select a folder";
  ListaDrive Drive1{};
  ListaCartelle Dir1{};
  std::string Text_Path{};
  std::string Text_PathDir{};
  bool ExitValue = false;
  std::string PathDir{};
  bool chiuso = false;
  // Where the folder list last stood on each drive: a bare "X:" opens there, as a drive's current folder.
  std::array<std::string, 26> correnti{};
};

// The letters the machine has, each as "X:", whether ready or not.
std::vector<std::string> ElencoDrive();

// The controls as a new dialog shows them: every drive, and the process's current folder.
void Carica(Dialog_GetDir& d);

// Setting the two lists' values, by the program or by the user's click. Each gives the platform's error
// number (0 on success) and raises its list's change event when the value changes.
// A drive that the machine does not have, or that is not ready, is 68; a value without a drive letter 76.
int ImpostaDrive(Dialog_GetDir& d, const std::string& valore);
// A missing folder is 76, a drive that is missing or not ready 68; "X:" opens that drive's current folder.
int ImpostaPath(Dialog_GetDir& d, const std::string& valore);
// Reads the folder list's path again.
void AggiornaDir(Dialog_GetDir& d);
// The user picks a drive in the list: it is selected whatever its state, and the change event decides.
void ScegliDrive(Dialog_GetDir& d, const std::string& drive);

void ImpostaValori(Dialog_GetDir& d, const std::string& Percorso);
void Dir1_Change(Dialog_GetDir& d);
void Drive1_Change(Dialog_GetDir& d);

// The dialog's own name for the path clean-up it shares with the application lookup.
using support::NormalizzaPercorso;
void Pul_NuovaCartella_Click(Dialog_GetDir& d);
void OKButton_Click(Dialog_GetDir& d);
void CancelButton_Click(Dialog_GetDir& d);
// The folder list's rows as a window shows them: the open folders of the path from its root down ("C:\"
// first), then, one level deeper, the folders the last one holds. `percorso` is what a click opens.
struct RigaCartella {
  std::string nome;
  std::string percorso;
  int livello;
  bool aperta;
};
std::vector<RigaCartella> RigheDir(const ListaCartelle& l);
// The user opens a row: a folder that went away meanwhile leaves the list where it was, read again.
void Dir1_Attivata(Dialog_GetDir& d, const std::string& percorso);

// Closing by the window's frame: the dialog closes and nothing else changes.
void ChiudiDallaCornice(Dialog_GetDir& d);

// The dialog as its callers use it. The "user" acts on the model while the dialog is shown modally (the
// window's event loop, or a test's script); when it returns without closing the dialog, the frame closed
// it. Each use gets fresh controls; the outcome stays readable after the close.
class DialogoGetDir : public support::DialogoCartella {
 public:
  using Utente = std::function<void(Dialog_GetDir&)>;
  DialogoGetDir(support::Messaggi& messaggi, Utente utente);

  void ImpostaTitolo(const std::string& titolo) override;
  void ImpostaValori(const std::string& percorso) override;
  void MostraModale() override;
  bool ExitValue() const override;
  std::string PathDir() const override;

 private:
  Dialog_GetDir& Istanza();

  support::Messaggi& messaggi_;
  Utente utente_;
  std::optional<Dialog_GetDir> modello_;
  bool exitValue_ = false;
  std::string pathDir_;
};

}  // namespace picker
