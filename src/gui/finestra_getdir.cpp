#include "gui/finestra_getdir.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTreeWidget>

#include "gui/forme_qt.h"
#include "gui/testo_qt.h"

namespace gui {
namespace {

constexpr int kPercorso = Qt::UserRole;

// The folder colours of the path box: bright green on dark green.
void Verde(QWidget* w) {
  QPalette p = w->palette();
  p.setColor(QPalette::Base, kVerdeScuro);
  p.setColor(QPalette::Text, kVerdeChiaro);
  w->setPalette(p);
}

}  // namespace

void AlCentro(QWidget* finestra) {
  const QScreen* schermo = finestra->screen() ? finestra->screen() : QGuiApplication::primaryScreen();
  if (!schermo) return;
  QRect r = finestra->frameGeometry();
  r.moveCenter(schermo->availableGeometry().center());
  finestra->move(r.topLeft());
}

FinestraGetDir::FinestraGetDir(QWidget* genitore, picker::Dialog_GetDir& modello)
    : QDialog(genitore, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                            Qt::MSWindowsFixedSizeDialogHint),
      modello_(modello) {
  setObjectName(QStringLiteral("Dialog_GetDir"));
  setFixedSize(Tw(6030), Tw(4860));
  setModal(true);

  OKButton = Pulsante(this, "OKButton", "OK", 315, 4275, 1215, 375);
  CancelButton = Pulsante(this, "CancelButton", "Cancel", 4590, 4230, 1215, 375);

  Dir1 = new QTreeWidget(this);
  Dir1->setObjectName(QStringLiteral("Dir1"));
  Dir1->setGeometry(Tw(180), Tw(810), Tw(5505), Tw(2565));
  Dir1->setHeaderHidden(true);
  Dir1->setRootIsDecorated(false);
  Dir1->setIndentation(Tw(180));
  Dir1->setItemsExpandable(false);

  Drive1 = new QComboBox(this);
  Drive1->setObjectName(QStringLiteral("Drive1"));
  Drive1->setGeometry(Tw(225), Tw(225), Tw(1995), Tw(315));

  Text_Path = new QLineEdit(this);
  Text_Path->setObjectName(QStringLiteral("Text_Path"));
  Text_Path->setGeometry(Tw(180), Tw(3600), Tw(5505), Tw(285));
  Text_Path->setReadOnly(true);
  Verde(Text_Path);

  Pul_NuovaCartella = Pulsante(this, "Pul_NuovaCartella", "Create folder->", 2475, 225, 1500, 285);

  Text_PathDir = new QLineEdit(this);
  Text_PathDir->setObjectName(QStringLiteral("Text_PathDir"));
  Text_PathDir->setGeometry(Tw(4050), Tw(225), Tw(1635), Tw(285));

  setTabOrder(OKButton, CancelButton);
  setTabOrder(CancelButton, Dir1);
  setTabOrder(Dir1, Drive1);
  setTabOrder(Drive1, Text_Path);
  setTabOrder(Text_Path, Pul_NuovaCartella);
  setTabOrder(Pul_NuovaCartella, Text_PathDir);

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

  // The folder list as a tree: the open folders of the path from its root down, then the folders the last
  // one holds.
  Dir1->clear();
  const std::string& path = modello_.Dir1.Path;
  QTreeWidgetItem* corrente = nullptr;
  if (path.size() >= 2) {
    const QIcon aperta = style()->standardIcon(QStyle::SP_DirOpenIcon);
    const QIcon chiusa = style()->standardIcon(QStyle::SP_DirClosedIcon);
    std::string fin_qui = path.substr(0, 2) + "\\";
    corrente = new QTreeWidgetItem(Dir1, {DaByte(fin_qui)});
    corrente->setData(0, kPercorso, DaByte(fin_qui));
    corrente->setIcon(0, aperta);
    std::size_t inizio = 3;
    while (inizio < path.size()) {
      std::size_t fine = path.find('\\', inizio);
      if (fine == std::string::npos) fine = path.size();
      const std::string nome = path.substr(inizio, fine - inizio);
      fin_qui = path.substr(0, fine);
      corrente = new QTreeWidgetItem(corrente, {DaByte(nome)});
      corrente->setData(0, kPercorso, DaByte(fin_qui));
      corrente->setIcon(0, aperta);
      inizio = fine + 1;
    }
    const std::string base = path.size() > 3 ? path + "\\" : path;
    for (const auto& s : modello_.Dir1.sottocartelle) {
      auto* voce = new QTreeWidgetItem(corrente, {DaByte(s)});
      voce->setData(0, kPercorso, DaByte(base + s));
      voce->setIcon(0, chiusa);
    }
    Dir1->expandAll();
    Dir1->setCurrentItem(corrente);
  }
  Text_Path->setText(DaByte(modello_.Text_Path));
}

void FinestraGetDir::Clic(void (*gestore)(picker::Dialog_GetDir&)) {
  gestore(modello_);
  Aggiorna();
  if (modello_.chiuso) accept();
}

void FinestraGetDir::Dir1_Attivata(QTreeWidgetItem* voce) {
  if (!voce) return;
  // A folder that went away meanwhile leaves the list where it was, read again.
  if (picker::ImpostaPath(modello_, VersoByte(voce->data(0, kPercorso).toString())) != 0)
    picker::AggiornaDir(modello_);
  Aggiorna();
}

void FinestraGetDir::Drive1_Scelta(int indice) {
  picker::ScegliDrive(modello_, VersoByte(Drive1->itemText(indice)));
  Aggiorna();
}

void FinestraGetDir::keyPressEvent(QKeyEvent* evento) {
  // No button is the cancel button: Escape closes nothing.
  if (evento->key() == Qt::Key_Escape) return;
  QDialog::keyPressEvent(evento);
}

void FinestraGetDir::showEvent(QShowEvent* evento) {
  QDialog::showEvent(evento);
  AlCentro(this);
}

}  // namespace gui
