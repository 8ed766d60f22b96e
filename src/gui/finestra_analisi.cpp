#include "gui/finestra_analisi.h"

#include <QAction>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>

#include "analysis/voci.h"
#include "gui/finestra_getdir.h"
#include "gui/forme_qt.h"
#include "gui/testo_qt.h"

namespace gui {
namespace {

QMenu* Menu(QMenuBar* barra, const char* nome, const char* testo) {
  QMenu* m = barra->addMenu(QString::fromLatin1(testo));
  m->setObjectName(QString::fromLatin1(nome));
  m->menuAction()->setObjectName(QString::fromLatin1(nome));
  return m;
}

QAction* Azione(QMenu* menu, const char* nome, const char* testo) {
  QAction* a = menu->addAction(QString::fromLatin1(testo));
  a->setObjectName(QString::fromLatin1(nome));
  return a;
}

}  // namespace

QFont FontProspetti() {
  QFont f = QFontDatabase::families().contains(QStringLiteral("Courier New"))
                ? QFont(QStringLiteral("Courier New"))
                : QFontDatabase::systemFont(QFontDatabase::FixedFont);
  f.setStyleHint(QFont::TypeWriter);
  f.setFixedPitch(true);
  f.setPointSizeF(8.25);
  return f;
}

void SegniQt::SetChecked(analysis::Voce v, bool segnato) {
  segni_[Indice(v)] = segnato;
  if (QAction* a = voci_[Indice(v)]) {
    // An item without a mark shows no empty box, as on the platform the menus were drawn for.
    a->setCheckable(segnato);
    a->setChecked(segnato);
  }
}

FinestraAnalisi::FinestraAnalisi(QWidget* genitore, support::Messaggi& messaggi,
                                 support::DialogoFile& dialogoFile, support::Appunti& appunti,
                                 formats::InfoHeader& infoHeader)
    : QDialog(genitore, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                            Qt::MSWindowsFixedSizeDialogHint),
      Menu(new QMenuBar(this)),
      Pul_Trova(Pulsante(this, "Pul_Trova", "Trova", 225, 3960, 1635, 330)),
      Text_Cerca(new QLineEdit(this)),
      Pul_Prima(Pulsante(this, "Pul_Prima", "<", 4050, 3960, 330, 330)),
      Pul_Dopo(Pulsante(this, "Pul_Dopo", ">", 4455, 3960, 330, 330)),
      Text_Out(new QPlainTextEdit(this)),
      ProgressBar1(new QProgressBar(this)),
      area_(Text_Out),
      cerca_(Text_Cerca),
      barra_(ProgressBar1),
      modello_{area_, cerca_, barra_, segni_, messaggi, dialogoFile, appunti, infoHeader} {
  Costruisci();
}

void FinestraAnalisi::Costruisci() {
  setObjectName(QStringLiteral("Dialog_Analisi"));
  setWindowTitle(QStringLiteral(" Analisi dati info ordl"));
  setModal(true);

  Menu->setObjectName(QStringLiteral("Menu"));
  QMenu* file = gui::Menu(Menu, "mnu_File", "File");
  mnu_CaricaFile = Azione(file, "mnu_CaricaFile", "Carica un prospetto");
  mnu_SalvaFile = Azione(file, "mnu_SalvaFile", "Salva prospetto in un file di testo");
  mnu_Esci = Azione(file, "mnu_Esci", "Esci");
  QMenu* modifica = gui::Menu(Menu, "mnu_Modifica", "Modifica");
  mnu_Copia = Azione(modifica, "mnu_Copia", "Copia ");
  QMenu* prospetto = gui::Menu(Menu, "mnu_Prospetto", "Prospetto");
  QMenu* analisi = gui::Menu(Menu, "mnu_Analisi", "Analisi");
  for (const auto& v : analysis::kVoci)
    voci_[static_cast<std::size_t>(v.voce)] =
        Azione(v.prospetto ? prospetto : analisi, v.controllo, v.didascalia);
  mnu_Confronta = Azione(analisi, "mnu_Confronta", "Confronta con un altro snapshot...");
  QMenu* diagnosi = gui::Menu(Menu, "mnu_Diagnosi", "Diagnosi");
  mnu_RiepilogoProblemi = Azione(diagnosi, "mnu_RiepilogoProblemi", "Riepilogo problemi");

  for (int i = 0; i < analysis::kNumeroVoci; ++i) {
    const auto v = static_cast<analysis::Voce>(i);
    segni_.Collega(v, voci_[static_cast<std::size_t>(i)]);
    segni_.SetChecked(v, false);
    connect(voci_[static_cast<std::size_t>(i)], &QAction::triggered, this, [this, v] {
      segni_.Ripristina(v);
      analysis::EseguiVoce(modello_, v);
    });
  }
  connect(mnu_CaricaFile, &QAction::triggered, this, [this] { analysis::mnu_CaricaFile_Click(modello_); });
  connect(mnu_SalvaFile, &QAction::triggered, this, [this] { analysis::mnu_SalvaFile_Click(modello_); });
  connect(mnu_Esci, &QAction::triggered, this, [this] { close(); });
  connect(mnu_Copia, &QAction::triggered, this, [this] { analysis::mnu_Copia_Click(modello_); });
  connect(mnu_Confronta, &QAction::triggered, this, [this] { analysis::mnu_Confronta_Click(modello_); });
  connect(mnu_RiepilogoProblemi, &QAction::triggered, this,
          [this] { analysis::mnu_RiepilogoProblemi_Click(modello_); });
  connect(Pul_Trova, &QPushButton::clicked, this, [this] { analysis::Pul_Trova_Click(modello_); });
  connect(Pul_Prima, &QPushButton::clicked, this, [this] { analysis::Pul_Prima_Click(modello_); });
  connect(Pul_Dopo, &QPushButton::clicked, this, [this] { analysis::Pul_Dopo_Click(modello_); });

  // The layout is in the client area's twips, below the menu bar.
  const int menu = Menu->sizeHint().height();
  Menu->setGeometry(0, 0, Tw(10095), menu);
  for (QWidget* w :
       {static_cast<QWidget*>(Pul_Trova), static_cast<QWidget*>(Pul_Prima), static_cast<QWidget*>(Pul_Dopo)})
    w->move(w->x(), w->y() + menu);
  Text_Cerca->setObjectName(QStringLiteral("Text_Cerca"));
  Text_Cerca->setGeometry(Tw(2025), menu + Tw(3960), Tw(1905), Tw(285));
  Text_Out->setObjectName(QStringLiteral("Text_Out"));
  Text_Out->setGeometry(Tw(135), menu + Tw(90), Tw(9825), Tw(3300));
  Text_Out->setFont(FontProspetti());
  // The rich text box's tab stops: every half inch, 720 twips.
  Text_Out->setTabStopDistance(Tw(720));
  Text_Out->setLineWrapMode(QPlainTextEdit::NoWrap);
  // The user selects and copies; typing would part the widget from the report string that is saved.
  Text_Out->setReadOnly(true);
  Text_Out->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
  ProgressBar1->setGeometry(Tw(180), menu + Tw(3510), Tw(9735), Tw(240));
  ProgressBar1->setRange(0, 100);
  ProgressBar1->setValue(0);
  ProgressBar1->setTextVisible(false);
  setFixedSize(Tw(10095), menu + Tw(4425));

  setTabOrder(Pul_Trova, Text_Cerca);
  setTabOrder(Text_Cerca, Pul_Prima);
  setTabOrder(Pul_Prima, Pul_Dopo);
  setTabOrder(Pul_Dopo, Text_Out);
  area_.ImpostaTesto(analysis::kTestoIniziale);
}

void FinestraAnalisi::keyPressEvent(QKeyEvent* evento) {
  // The window has no cancel button, and Enter in the search box starts nothing.
  if (evento->key() == Qt::Key_Escape || evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter)
    return;
  QDialog::keyPressEvent(evento);
}

void FinestraAnalisi::showEvent(QShowEvent* evento) {
  QDialog::showEvent(evento);
  AlCentro(this);
}

}  // namespace gui
