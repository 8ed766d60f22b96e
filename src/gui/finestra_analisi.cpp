#include "gui/finestra_analisi.h"

#include <QAction>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>

#include "analysis/forma_analisi.h"
#include "gui/finestra_getdir.h"
#include "gui/forme_qt.h"
#include "gui/testo_qt.h"

namespace gui {

using analysis::kFormaAnalisi;

QFont FontProspetti() {
  const QString famiglia = QString::fromLatin1(support::kFontProspetti);
  QFont f = QFontDatabase::families().contains(famiglia)
                ? QFont(famiglia)
                : QFontDatabase::systemFont(QFontDatabase::FixedFont);
  f.setStyleHint(QFont::TypeWriter);
  f.setFixedPitch(true);
  f.setPointSizeF(support::kPuntiProspetti);
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
                                 support::DialogoFile& dialogoFile, support::Appunti& appunti)
    : QDialog(genitore, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                            Qt::MSWindowsFixedSizeDialogHint),
      Menu(new QMenuBar(this)),
      Pul_Trova(Crea<QPushButton>(this, kFormaAnalisi, "Pul_Trova")),
      Text_Cerca(Crea<QLineEdit>(this, kFormaAnalisi, "Text_Cerca")),
      Pul_Prima(Crea<QPushButton>(this, kFormaAnalisi, "Pul_Prima")),
      Pul_Dopo(Crea<QPushButton>(this, kFormaAnalisi, "Pul_Dopo")),
      Text_Out(Crea<VistaProspetto>(this, kFormaAnalisi, "Text_Out")),
      ProgressBar1(Crea<QProgressBar>(this, kFormaAnalisi, "ProgressBar1")),
      area_(Text_Out),
      cerca_(Text_Cerca),
      barra_(ProgressBar1),
      modello_{area_, cerca_, barra_, segni_, messaggi, dialogoFile, appunti} {
  Costruisci();
}

void FinestraAnalisi::Costruisci() {
  setObjectName(QString::fromLatin1(kFormaAnalisi.nome));
  setWindowTitle(QString::fromLatin1(kFormaAnalisi.caption));
  setModal(true);

  Menu->setObjectName(QStringLiteral("Menu"));
  std::array<QMenu*, analysis::kMenu.size()> menu{};
  for (std::size_t i = 0; i < menu.size(); ++i) {
    menu[i] = Menu->addMenu(QString::fromLatin1(analysis::kMenu[i].testo));
    menu[i]->setObjectName(QString::fromLatin1(analysis::kMenu[i].nome));
    menu[i]->menuAction()->setObjectName(QString::fromLatin1(analysis::kMenu[i].nome));
  }
  for (const analysis::VoceBarra& v : analysis::kVociBarra) {
    QAction* a = menu[v.menu]->addAction(QString::fromLatin1(v.testo));
    a->setObjectName(QString::fromLatin1(v.nome));
    azioni_.push_back(a);
    if (v.comando == analysis::Comando::Voce) {
      voci_[static_cast<std::size_t>(v.voce)] = a;
      segni_.Collega(v.voce, a);
      segni_.SetChecked(v.voce, false);
    }
    connect(a, &QAction::triggered, this, [this, &v] {
      if (v.comando == analysis::Comando::Voce) segni_.Ripristina(v.voce);
      // The menu has closed: what lay below it is painted again before the work starts.
      repaint();
      if (!analysis::EseguiComando(modello_, v)) close();
    });
  }
  mnu_CaricaFile = Azione("mnu_CaricaFile");
  mnu_SalvaFile = Azione("mnu_SalvaFile");
  mnu_Esci = Azione("mnu_Esci");
  mnu_Copia = Azione("mnu_Copia");
  mnu_Confronta = Azione("mnu_Confronta");
  mnu_RiepilogoProblemi = Azione("mnu_RiepilogoProblemi");
  mnu_SalvaCopiaAnonima = Azione("mnu_SalvaCopiaAnonima");
  connect(Pul_Trova, &QPushButton::clicked, this, [this] { analysis::Pul_Trova_Click(modello_); });
  connect(Pul_Prima, &QPushButton::clicked, this, [this] { analysis::Pul_Prima_Click(modello_); });
  connect(Pul_Dopo, &QPushButton::clicked, this, [this] { analysis::Pul_Dopo_Click(modello_); });

  // The layout is in the client area's twips, below the menu bar.
  const int menuH = Menu->sizeHint().height();
  Menu->setGeometry(0, 0, Tw(kFormaAnalisi.larghezza), menuH);
  for (QObject* o : children())
    if (auto* w = qobject_cast<QWidget*>(o); w && w != Menu) w->move(w->x(), w->y() + menuH);
  Text_Out->setFont(FontProspetti());
  ProgressBar1->setRange(0, 100);
  ProgressBar1->setValue(0);
  ProgressBar1->setTextVisible(false);
  setFixedSize(Tw(kFormaAnalisi.larghezza), menuH + Tw(kFormaAnalisi.altezza));
  OrdineTab(this, kFormaAnalisi);
  area_.ImpostaTesto(analysis::kTestoIniziale);
}

QAction* FinestraAnalisi::Azione(const char* nome) const {
  for (QAction* a : azioni_)
    if (a->objectName() == QLatin1String(nome)) return a;
  return nullptr;
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
