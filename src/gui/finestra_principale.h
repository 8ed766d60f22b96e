// The main window: the two folders, the check run and the reading of a snapshot. It opens the folder picker
// and the analysis window modally; closing it ends the program.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "collection/principale.h"
#include "formats/preferenze.h"
#include "gui/controlli_qt.h"
#include "picker/dialog_getdir.h"

class QDialog;
class QLockFile;
class QLabel;
class QProgressBar;
class QPushButton;

namespace gui {

class FinestraAnalisi;
class FinestraGetDir;

// What the window takes from outside: the boxes and dialogs that would wait for a user, and the way a
// modal window is shown. The program passes the Qt ones; tests answer from a script.
struct Servizi {
  support::Messaggi& messaggi;
  support::DialogoFile& dialogoFile;
  support::Appunti& appunti;
  std::function<void(FinestraGetDir&)> mostraGetDir;
  std::function<void(FinestraAnalisi&)> mostraAnalisi;
};

// Shows a dialog modally over its parent, in the event loop of its own.
void MostraModale(QDialog& dialogo);

class FinestraPrincipale : public QWidget {
 public:
  // Runs the start-up discovery, before the window is first shown.
  explicit FinestraPrincipale(Servizi servizi);
  ~FinestraPrincipale() override;

  collection::Principale& Modello() { return modello_; }
  // The window was closed, by the user or by the end of a check run.
  bool Chiusa() const { return chiusa_; }

  QPushButton* Pul_CambiaORDL;
  QLabel* Label1;
  QLabel* Label_DirORDL;
  QPushButton* Pul_CambiaTrle;
  QLabel* Label2;
  QLabel* Label_NomeTrle;
  QLabel* Label_Info;
  QProgressBar* ProgressBar1;
  QPushButton* Pul_Start;
  QPushButton* Pul_EstraiDati;
  QPushButton* Pul_Annulla;

 protected:
  void closeEvent(QCloseEvent* evento) override;
  void showEvent(QShowEvent* evento) override;

 private:
  void Pul_EstraiDati_Click();

  Servizi servizi_;
  DidascaliaEtichetta dirOrdl_, nomeTrle_, info_;
  BarraQt barra_;
  CicloQt eventi_;
  picker::DialogoGetDir getDir_;
  collection::Principale modello_;
  formats::PrefRecord pref_;
  bool chiusa_ = false;
  // This window's place among the program's main windows open at once, held while it lives.
  std::unique_ptr<QLockFile> posto_;
  int numeroPosto_ = -1;
};

}  // namespace gui
