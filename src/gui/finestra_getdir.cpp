#include "gui/finestra_getdir.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTreeWidget>

#include "gui/controlli_qt.h"
#include "gui/forme_qt.h"
#include "gui/testo_qt.h"
#include "picker/forma_getdir.h"
#include "support/disposizione.h"

namespace gui {
namespace {

constexpr int kPercorso = Qt::UserRole;
using picker::kFormaGetDir;

// The folder colours of the path box: bright green on dark green.
void Verde(QWidget* w) {
  QPalette p = w->palette();
  p.setColor(QPalette::Base, kVerdeScuro);
  p.setColor(QPalette::Text, kVerdeChiaro);
  w->setPalette(p);
}

}  // namespace

void AlCentro(QWidget* finestra, int n) {
  const QScreen* schermo = finestra->screen() ? finestra->screen() : QGuiApplication::primaryScreen();
  if (!schermo) return;
  const QRect a = schermo->availableGeometry();
  const QRect r = finestra->frameGeometry();
  const support::Punto p =
      support::PostoInCascata({a.x(), a.y(), a.width(), a.height()}, r.width(), r.height(), n,
                              finestra->style()->pixelMetric(QStyle::PM_TitleBarHeight));
  finestra->move(p.x, p.y);
}

FinestraGetDir::FinestraGetDir(QWidget* genitore, picker::Dialog_GetDir& modello)
    : QDialog(genitore, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                            Qt::MSWindowsFixedSizeDialogHint),
      modello_(modello) {
  setObjectName(QString::fromLatin1(kFormaGetDir.nome));
  setFixedSize(Tw(kFormaGetDir.larghezza), Tw(kFormaGetDir.altezza));
  setModal(true);

  OKButton = Crea<QPushButton>(this, kFormaGetDir, "OKButton");
  CancelButton = Crea<QPushButton>(this, kFormaGetDir, "CancelButton");
  Dir1 = Crea<QTreeWidget>(this, kFormaGetDir, "Dir1");
  Dir1->setHeaderHidden(true);
  Dir1->setRootIsDecorated(false);
  Dir1->setIndentation(Tw(picker::forma_getdir::kRientro));
  Dir1->setItemsExpandable(false);
  Drive1 = Crea<QComboBox>(this, kFormaGetDir, "Drive1");
  Text_Path = Crea<QLineEdit>(this, kFormaGetDir, "Text_Path");
  Text_Path->setReadOnly(true);
  Verde(Text_Path);
  Pul_NuovaCartella = Crea<QPushButton>(this, kFormaGetDir, "Pul_NuovaCartella");
  Text_PathDir = Crea<QLineEdit>(this, kFormaGetDir, "Text_PathDir");
  OrdineTab(this, kFormaGetDir);

  connect(OKButton, &QPushButton::clicked, this, [this] { Clic(picker::OKButton_Click); });
  connect(CancelButton, &QPushButton::clicked, this, [this] { Clic(picker::CancelButton_Click); });
  connect(Pul_NuovaCartella, &QPushButton::clicked, this, [this] { Clic(picker::Pul_NuovaCartella_Click); });
  connect(Text_PathDir, &QLineEdit::textChanged, this,
          [this](const QString& t) { modello_.Text_PathDir = VersoByte(t); });
  connect(Dir1, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* v) { Dir1_Attivata(v); });
  connect(Drive1, &QComboBox::activated, this, [this](int i) { Drive1_Scelta(i); });

  Text_PathDir->setText(DaByte(modello_.Text_PathDir));
  Aggiorna();
}

void FinestraGetDir::Aggiorna() {
  setWindowTitle(DaByte(modello_.Caption));
  {
    const QSignalBlocker blocco(Drive1);
    Drive1->clear();
    for (const auto& d : modello_.Drive1.elenco) Drive1->addItem(DaByte(d));
    Drive1->setCurrentIndex(Drive1->findText(DaByte(modello_.Drive1.Drive)));
  }

  // The folder list as a tree: the open folders of the path, then those the last one holds.
  Dir1->clear();
  const QIcon aperta = style()->standardIcon(QStyle::SP_DirOpenIcon);
  const QIcon chiusa = style()->standardIcon(QStyle::SP_DirClosedIcon);
  QTreeWidgetItem* corrente = nullptr;
  for (const picker::RigaCartella& r : picker::RigheDir(modello_.Dir1)) {
    auto* voce = corrente ? new QTreeWidgetItem(corrente, {DaByte(r.nome)})
                          : new QTreeWidgetItem(Dir1, {DaByte(r.nome)});
    voce->setData(0, kPercorso, DaByte(r.percorso));
    voce->setIcon(0, r.aperta ? aperta : chiusa);
    if (r.aperta) corrente = voce;
  }
  Dir1->expandAll();
  if (corrente) Dir1->setCurrentItem(corrente);
  // The box's frame and margins take a few pixels of its width.
  MostraAccorciato(Text_Path, DaByte(modello_.Text_Path), Text_Path->width() - 8);
}

void FinestraGetDir::Clic(void (*gestore)(picker::Dialog_GetDir&)) {
  gestore(modello_);
  Aggiorna();
  if (modello_.chiuso) accept();
}

void FinestraGetDir::Dir1_Attivata(QTreeWidgetItem* voce) {
  if (!voce) return;
  picker::Dir1_Attivata(modello_, VersoByte(voce->data(0, kPercorso).toString()));
  Aggiorna();
}

void FinestraGetDir::Drive1_Scelta(int indice) {
  picker::ScegliDrive(modello_, VersoByte(Drive1->itemText(indice)));
  Aggiorna();
}

void FinestraGetDir::showEvent(QShowEvent* evento) {
  QDialog::showEvent(evento);
  AlCentro(this);
}

}  // namespace gui
