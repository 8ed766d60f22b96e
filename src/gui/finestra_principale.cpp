#include "gui/finestra_principale.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLockFile>
#include <QProgressBar>
#include <QPushButton>

#include "analysis/dialog_analisi.h"
#include "collection/controllo.h"
#include "collection/forma_principale.h"
#include "collection/scoperta.h"
#include "collection/selezione.h"
#include "gui/finestra_analisi.h"
#include "gui/finestra_getdir.h"
#include "gui/forme_qt.h"
#include "gui/testo_qt.h"

namespace gui {
namespace {

using collection::kFormaPrincipale;

QLabel* Etichetta(QWidget* genitore, const char* nome) {
  auto* e = Crea<QLabel>(genitore, kFormaPrincipale, nome);
  // A folder is shown as it is, never read as markup.
  e->setTextFormat(Qt::PlainText);
  if (support::ControlloDi(kFormaPrincipale, nome).tipo == support::TipoControllo::EtichettaCartella) {
    e->setAutoFillBackground(true);
    QPalette p = e->palette();
    p.setColor(QPalette::Window, kVerdeScuro);
    p.setColor(QPalette::WindowText, kVerdeChiaro);
    e->setPalette(p);
    e->setContentsMargins(Tw(60), 0, Tw(60), 0);
  }
  return e;
}

QPushButton* Pulsante(QWidget* genitore, const char* nome) {
  return Crea<QPushButton>(genitore, kFormaPrincipale, nome);
}

// The lowest number that no other main window of the user's holds, taken by a lock file of that number,
// which a program that has ended no longer holds; 0 when none can be had.
int PrendiPosto(std::unique_ptr<QLockFile>& posto) {
  QString cartella = qEnvironmentVariable("XDG_RUNTIME_DIR");
  QString utente;
  if (cartella.isEmpty()) {
    cartella = QDir::tempPath();
    utente = QString::number(QFileInfo(QDir::homePath()).ownerId()) + QLatin1Char('-');
  }
  for (int n = 0; n < 64; ++n) {
    auto f = std::make_unique<QLockFile>(cartella +
                                         QStringLiteral("/checkordl-finestra-%1%2.lock").arg(utente).arg(n));
    // Held as long as the window lives, however long that is.
    f->setStaleLockTime(0);
    if (f->tryLock(0)) {
      posto = std::move(f);
      return n;
    }
  }
  return 0;
}

}  // namespace

void MostraModale(QDialog& dialogo) {
  dialogo.exec();
}

FinestraPrincipale::FinestraPrincipale(Servizi servizi)
    : QWidget(nullptr, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint),
      Pul_CambiaORDL(Pulsante(this, "Pul_CambiaORDL")),
      Label1(Etichetta(this, "Label1")),
      Label_DirORDL(Etichetta(this, "Label_DirORDL")),
      Pul_CambiaTrle(Pulsante(this, "Pul_CambiaTrle")),
      Label2(Etichetta(this, "Label2")),
      Label_NomeTrle(Etichetta(this, "Label_NomeTrle")),
      Label_Info(Etichetta(this, "Label_Info")),
      ProgressBar1(Crea<QProgressBar>(this, kFormaPrincipale, "ProgressBar1")),
      Pul_Start(Pulsante(this, "Pul_Start")),
      Pul_EstraiDati(Pulsante(this, "Pul_EstraiDati")),
      Pul_Annulla(Pulsante(this, "Pul_Annulla")),
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
      modello_{dirOrdl_, nomeTrle_,           info_, barra_, servizi_.messaggi, getDir_,
               eventi_,  [this] { close(); }, {}} {
  setObjectName(QString::fromLatin1(kFormaPrincipale.nome));
  setWindowTitle(QString::fromLatin1(kFormaPrincipale.caption));
  setFixedSize(Tw(kFormaPrincipale.larghezza), Tw(kFormaPrincipale.altezza));
  ProgressBar1->setRange(0, 100);
  ProgressBar1->setValue(0);
  ProgressBar1->setTextVisible(false);
  OrdineTab(this, kFormaPrincipale);

  connect(Pul_CambiaORDL, &QPushButton::clicked, this,
          [this] { collection::Pul_CambiaORDL_Click(modello_); });
  connect(Pul_CambiaTrle, &QPushButton::clicked, this,
          [this] { collection::Pul_CambiaTrle_Click(modello_); });
  connect(Pul_Start, &QPushButton::clicked, this, [this] { collection::Pul_Start_Click(modello_); });
  connect(Pul_EstraiDati, &QPushButton::clicked, this, [this] { Pul_EstraiDati_Click(); });
  connect(Pul_Annulla, &QPushButton::clicked, this, [this] { collection::Pul_Annulla_Click(modello_); });

  collection::CercaInstallazioni(modello_, pref_);
}

void FinestraPrincipale::Pul_EstraiDati_Click() {
  std::string nome;
  if (!analysis::Pul_EstraiDati_Click(modello_, servizi_.dialogoFile, nome)) return;
  FinestraAnalisi finestra(this, servizi_.messaggi, servizi_.dialogoFile, servizi_.appunti);
  if (!analysis::ApriFinestra(finestra.Modello(), nome)) return;
  finestra.setWindowTitle(DaByte(analysis::TitoloFinestra(finestra.Modello())));
  servizi_.mostraAnalisi(finestra);
}

void FinestraPrincipale::closeEvent(QCloseEvent* evento) {
  if (!collection::PuoChiudersi(modello_)) {
    evento->ignore();
    return;
  }
  chiusa_ = true;
  evento->accept();
}

FinestraPrincipale::~FinestraPrincipale() = default;

void FinestraPrincipale::showEvent(QShowEvent* evento) {
  QWidget::showEvent(evento);
  // Another start of the program while this one runs does not open on top of it.
  if (numeroPosto_ < 0) numeroPosto_ = PrendiPosto(posto_);
  AlCentro(this, numeroPosto_);
}

}  // namespace gui
