// The analysis window: the report area, the progress bar, the search row and the menus, each click going to
// the analysis model's handler.
#pragma once

#include <QDialog>
#include <array>
#include <vector>

#include "analysis/dialog_analisi.h"
#include "gui/controlli_qt.h"

class QAction;
class QLineEdit;
class QMenuBar;
class QProgressBar;
class QPushButton;

namespace gui {

// The check marks live in the model's terms; the menu only shows them. A menu item that Qt would toggle by
// itself on a click is put back before the handler decides.
class SegniQt : public analysis::SegniMenu {
 public:
  bool Checked(analysis::Voce v) const override { return segni_[Indice(v)]; }
  void SetChecked(analysis::Voce v, bool segnato) override;
  void Collega(analysis::Voce v, QAction* voce) { voci_[Indice(v)] = voce; }
  void Ripristina(analysis::Voce v) { SetChecked(v, Checked(v)); }

 private:
  static std::size_t Indice(analysis::Voce v) { return static_cast<std::size_t>(v); }
  std::array<bool, analysis::kNumeroVoci> segni_{};
  std::array<QAction*, analysis::kNumeroVoci> voci_{};
  std::vector<QAction*> azioni_;
};

class FinestraAnalisi : public QDialog {
 public:
  FinestraAnalisi(QWidget* genitore, support::Messaggi& messaggi, support::DialogoFile& dialogoFile,
                  support::Appunti& appunti);

  analysis::Dialog_Analisi& Modello() { return modello_; }
  AreaTestoQt& Area() { return area_; }
  QAction* Voce(analysis::Voce v) const { return voci_[static_cast<std::size_t>(v)]; }

  QMenuBar* Menu;
  QPushButton* Pul_Trova;
  QLineEdit* Text_Cerca;
  QPushButton* Pul_Prima;
  QPushButton* Pul_Dopo;
  VistaProspetto* Text_Out;
  QProgressBar* ProgressBar1;
  QAction* mnu_CaricaFile;
  QAction* mnu_SalvaFile;
  QAction* mnu_Esci;
  QAction* mnu_Copia;
  QAction* mnu_Confronta;
  QAction* mnu_RiepilogoProblemi;
  QAction* mnu_SalvaCopiaAnonima;

 protected:
  void keyPressEvent(QKeyEvent* evento) override;
  void showEvent(QShowEvent* evento) override;

 private:
  void Costruisci();
  // The menu bar's item of that name.
  QAction* Azione(const char* nome) const;

  AreaTestoQt area_;
  DidascaliaRiga cerca_;
  BarraQt barra_;
  SegniQt segni_;
  std::array<QAction*, analysis::kNumeroVoci> voci_{};
  std::vector<QAction*> azioni_;
  analysis::Dialog_Analisi modello_;
};

// The report font: Courier New where the system has it, else its fixed-pitch font, at 8.25 points.
QFont FontProspetti();

}  // namespace gui
