// The folder picker's window: its controls show the picker model, and each click goes to the model's own
// handler, after which the controls show the model again. Escape closes it as its frame does.
#pragma once

#include <QDialog>

#include "picker/dialog_getdir.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace gui {

class FinestraGetDir : public QDialog {
 public:
  FinestraGetDir(QWidget* genitore, picker::Dialog_GetDir& modello);

  picker::Dialog_GetDir& Modello() { return modello_; }
  // Shows the model in the controls again.
  void Aggiorna();

  QPushButton* OKButton;
  QPushButton* CancelButton;
  QTreeWidget* Dir1;
  QComboBox* Drive1;
  QLineEdit* Text_Path;
  QPushButton* Pul_NuovaCartella;
  QLineEdit* Text_PathDir;

 protected:
  void showEvent(QShowEvent* evento) override;

 private:
  void Clic(void (*gestore)(picker::Dialog_GetDir&));
  void Dir1_Attivata(QTreeWidgetItem* voce);
  void Drive1_Scelta(int indice);

  picker::Dialog_GetDir& modello_;
};

// Places a window of fixed size in the middle of the screen it is on; the `n`th of a cascade of the
// program's windows a title bar's height further down and right for each before it.
void AlCentro(QWidget* finestra, int n = 0);

}  // namespace gui
