#include "gui/finestra_principale.h"

#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "analysis/dialog_analisi.h"
#include "collection/controllo.h"
#include "collection/scoperta.h"
#include "collection/selezione.h"
#include "gui/finestra_analisi.h"
#include "gui/finestra_getdir.h"
#include "gui/forme_qt.h"
#include "gui/testo_qt.h"

namespace gui {
namespace {

QLabel* Etichetta(QWidget* genitore, const char* nome, const char* testo, int l, int t, int w, int h) {
  auto* e = new QLabel(QString::fromLatin1(testo), genitore);
  e->setObjectName(QString::fromLatin1(nome));
  e->setGeometry(Tw(l), Tw(t), Tw(w), Tw(h));
  // A folder is shown as it is, never read as markup.
  e->setTextFormat(Qt::PlainText);
  return e;
}

QLabel* Cartella(QWidget* genitore, const char* nome, int l, int t, int w, int h) {
  QLabel* e = Etichetta(genitore, nome, "", l, t, w, h);
  e->setAutoFillBackground(true);
  QPalette p = e->palette();
  p.setColor(QPalette::Window, kVerdeScuro);
  p.setColor(QPalette::WindowText, kVerdeChiaro);
  e->setPalette(p);
  e->setContentsMargins(Tw(60), 0, Tw(60), 0);
  return e;
}

// Geometry in twips, of our own choosing: only the order of the rows and of the bottom buttons is given.
constexpr int kLarghezza = 7200;
constexpr int kMargine = 120;
constexpr int kInterno = kLarghezza - 2 * kMargine;
constexpr int kPulsanteW = 1695;

}  // namespace

void MostraModale(QDialog& dialogo) {
  dialogo.exec();
}

FinestraPrincipale::FinestraPrincipale(Servizi servizi)
    : QWidget(nullptr, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint),
      Pul_CambiaORDL(Pulsante(this, "Pul_CambiaORDL", "Change", kMargine, 120, 1215, 375)),
      Label1(Etichetta(this, "Label1", "Path of Ordelio:", 1455, 180, 5000, 285)),
      Label_DirORDL(Cartella(this, "Label_DirORDL", kMargine, 600, kInterno, 315)),
      Pul_CambiaTrle(Pulsante(this, "Pul_CambiaTrle", "Change", kMargine, 1080, 1215, 375)),
      Label2(Etichetta(this, "Label2", "Path of Tomb Raider Level Editor:", 1455, 1140, 5000, 285)),
      Label_NomeTrle(Cartella(this, "Label_NomeTrle", kMargine, 1560, kInterno, 315)),
      Label_Info(Etichetta(this, "Label_Info", "", kMargine, 2040, kInterno, 285)),
      ProgressBar1(new QProgressBar(this)),
      Pul_Start(Pulsante(this, "Pul_Start", "Start check", kMargine, 2880, kPulsanteW, 435)),
      Pul_EstraiDati(Pulsante(this, "Pul_EstraiDati", "Leggi Dati", (kLarghezza - kPulsanteW) / 2, 2880,
                              kPulsanteW, 435)),
      Pul_Annulla(
          Pulsante(this, "Pul_Annulla", "Close", kLarghezza - kMargine - kPulsanteW, 2880, kPulsanteW, 435)),
      servizi_(std::move(servizi)),
      dirOrdl_(Label_DirORDL),
      nomeTrle_(Label_NomeTrle),
      info_(Label_Info),
      barra_(ProgressBar1),
      getDir_(servizi_.messaggi,
              [this](picker::Dialog_GetDir& m) {
                FinestraGetDir finestra(this, m);
                servizi_.mostraGetDir(finestra);
              }),
      modello_{dirOrdl_,
               nomeTrle_,
               info_,
               barra_,
               servizi_.messaggi,
               getDir_,
               eventi_,
               [this] { ChiudiDopoControllo(); },
               {}} {
  setObjectName(QStringLiteral("Principale"));
  setWindowTitle(QStringLiteral(" Check Configuration of Ordelio and Tomb Raider Level Editor"));
  setFixedSize(Tw(kLarghezza), Tw(3435));
  ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
  ProgressBar1->setGeometry(Tw(kMargine), Tw(2400), Tw(kInterno), Tw(285));
  ProgressBar1->setRange(0, 100);
  ProgressBar1->setValue(0);
  ProgressBar1->setTextVisible(false);

  setTabOrder(Pul_CambiaORDL, Pul_CambiaTrle);
  setTabOrder(Pul_CambiaTrle, Pul_Start);
  setTabOrder(Pul_Start, Pul_Annulla);
  setTabOrder(Pul_Annulla, Pul_EstraiDati);

  connect(Pul_CambiaORDL, &QPushButton::clicked, this,
          [this] { collection::Pul_CambiaORDL_Click(modello_); });
  connect(Pul_CambiaTrle, &QPushButton::clicked, this,
          [this] { collection::Pul_CambiaTrle_Click(modello_); });
  connect(Pul_Start, &QPushButton::clicked, this, [this] { collection::Pul_Start_Click(modello_); });
  connect(Pul_EstraiDati, &QPushButton::clicked, this, [this] { Pul_EstraiDati_Click(); });
  connect(Pul_Annulla, &QPushButton::clicked, this, [this] { Pul_Annulla_Click(); });

  collection::CercaInstallazioni(modello_, pref_);
}

void FinestraPrincipale::Pul_EstraiDati_Click() {
  // A click that arrives while a check run scans: the run owns the window until it closes it.
  if (modello_.ControlloInCorso) return;
  std::string nome;
  if (!analysis::ScegliSnapshot(servizi_.dialogoFile, nome)) return;
  FinestraAnalisi finestra(this, servizi_.messaggi, servizi_.dialogoFile, servizi_.appunti, headerProspetti_);
  analysis::ImpostaValori(finestra.Modello(), nome);
  if (finestra.Modello().Blocco.Occupato()) return;
  servizi_.mostraAnalisi(finestra);
}

void FinestraPrincipale::Pul_Annulla_Click() {
  if (modello_.ControlloInCorso) return;
  close();
}

void FinestraPrincipale::ChiudiDopoControllo() {
  chiusuraDelControllo_ = true;
  close();
}

void FinestraPrincipale::closeEvent(QCloseEvent* evento) {
  if (modello_.ControlloInCorso && !chiusuraDelControllo_) {
    evento->ignore();
    return;
  }
  chiusa_ = true;
  evento->accept();
}

void FinestraPrincipale::showEvent(QShowEvent* evento) {
  QWidget::showEvent(evento);
  AlCentro(this);
}

}  // namespace gui
