#include "gui/controlli_qt.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <algorithm>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "gui/testo_qt.h"
#include "support/filtro.h"
#include "support/forma.h"

namespace gui {
namespace {

QWidget* Sopra() {
  if (QWidget* w = QApplication::activeModalWidget()) return w;
  return QApplication::activeWindow();
}

int Mostra(QMessageBox::Icon icona, const std::string& testo,
           QMessageBox::StandardButtons pulsanti = QMessageBox::Ok) {
  QString t = DaByte(testo);
  t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  QMessageBox box(icona, QString::fromLatin1(support::kTitoloProgramma), t, pulsanti, Sopra());
  // No is the default button: an Enter pressed in passing adds nothing to what is posted.
  if (pulsanti & QMessageBox::No) box.setDefaultButton(QMessageBox::No);
  return box.exec();
}

// A mask whose letters match either case: "*.txt" -> "*.[tT][xX][tT]".
QString MascheraSenzaCaso(const QString& maschera) {
  QString out;
  for (const QChar c : maschera) {
    if (c.toLower() != c.toUpper())
      out += QLatin1Char('[') + c.toLower() + c.toUpper() + QLatin1Char(']');
    else
      out += c;
  }
  return out;
}

}  // namespace

void DidascaliaEtichetta::ImpostaTesto(const std::string& testo) {
  testo_ = testo;
  MostraAccorciato(etichetta_, DaByte(testo), etichetta_->contentsRect().width());
}

void MostraAccorciato(QWidget* controllo, const QString& testo, int larghezza) {
  const QString mostrato = controllo->fontMetrics().elidedText(testo, Qt::ElideMiddle, larghezza);
  if (auto* e = qobject_cast<QLabel*>(controllo))
    e->setText(mostrato);
  else if (auto* r = qobject_cast<QLineEdit*>(controllo))
    r->setText(mostrato);
  controllo->setToolTip(mostrato == testo ? QString() : testo);
}

void DidascaliaEtichetta::Ridisegna() {
  etichetta_->repaint();
}

void DidascaliaRiga::ImpostaTesto(const std::string& testo) {
  riga_->setText(DaByte(testo));
}

std::string DidascaliaRiga::Testo() const {
  return VersoByte(riga_->text());
}

void DidascaliaRiga::Ridisegna() {
  riga_->repaint();
}

void BarraQt::SetValue(double v) {
  valore_ = v;
  barra_->setValue(static_cast<int>(std::clamp(v, 0.0, 100.0)));
}

void BarraQt::Refresh() {
  barra_->repaint();
}

void CicloQt::UnTurno() {
  QApplication::processEvents();
}

void MessaggiQt::Semplice(const std::string& testo) {
  Mostra(QMessageBox::NoIcon, testo);
}

void MessaggiQt::Critico(const std::string& testo) {
  Mostra(QMessageBox::Critical, testo);
}

bool MessaggiQt::Domanda(const std::string& testo) {
  return Mostra(QMessageBox::Question, testo, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

void AppuntiQt::Svuota() {
  QApplication::clipboard()->clear();
}

void AppuntiQt::ImpostaTesto(const std::string& testo) {
  QApplication::clipboard()->setText(DaByte(testo));
}

QStringList FiltriQt(const std::string& filtro) {
  QStringList filtri;
  for (const support::VoceFiltro& v : support::LeggiFiltro(filtro)) {
    QStringList maschere;
    // On Windows "*.*" takes names without a dot too; here "*" does.
    for (const std::string& m : v.maschere)
      maschere << (m == "*.*" ? QStringLiteral("*") : MascheraSenzaCaso(DaByte(m)));
    filtri << DaByte(v.descrizione) + QStringLiteral(" (") + maschere.join(QLatin1Char(' ')) +
                  QLatin1Char(')');
  }
  return filtri;
}

bool DialogoFileQt::Mostra(bool salva) {
  QFileDialog dialogo(Sopra(), DaByte(titolo_));
  dialogo.setAcceptMode(salva ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  // The platform's dialog did not insist that a typed name exists, nor ask before replacing a file.
  dialogo.setFileMode(QFileDialog::AnyFile);
  dialogo.setOption(QFileDialog::DontConfirmOverwrite);
  // The masks are spelt for both cases; the description alone is what the user needs to read.
  dialogo.setOption(QFileDialog::HideNameFilterDetails);
  // A proposed name with its folder (a Windows path) opens the dialog there: given whole, Qt would read it as
  // a name below the current folder.
  const std::size_t barra = nome_.find_last_of("\\/:");
  std::string cartella = cartella_;
  if (barra != std::string::npos) cartella = nome_.substr(0, nome_[barra] == ':' ? barra + 1 : barra);
  if (cartella.size() == 2 && cartella[1] == ':') cartella += '\\';
  if (!cartella.empty()) dialogo.setDirectory(PercorsoHost(cartella));
  const QStringList filtri = FiltriQt(filtro_);
  if (!filtri.isEmpty()) dialogo.setNameFilters(filtri);
  dialogo.selectFile(DaByte(barra == std::string::npos ? nome_ : nome_.substr(barra + 1)));
  if (dialogo.exec() != QDialog::Accepted || dialogo.selectedFiles().isEmpty()) return false;
  const QString scelto = dialogo.selectedFiles().constFirst();
  nome_ = PercorsoWindows(scelto);
  // Like the platform's dialog, the next showing opens where this one ended.
  cartella_ = PercorsoWindows(dialogo.directory().absolutePath());
  return !nome_.empty();
}

void AreaTestoQt::ImpostaTesto(const std::string& testo) {
  vista_->ImpostaTesto(testo);
#ifdef __GLIBC__
  // The text just replaced is free now, but the allocator keeps such pages: without this, a window that has
  // shown one big listing stays that big.
  malloc_trim(0);
#endif
}

long AreaTestoQt::SelStart() const {
  return static_cast<long>(vista_->SelInizio());
}

long AreaTestoQt::SelLength() const {
  return static_cast<long>(vista_->SelFine() - vista_->SelInizio());
}

void AreaTestoQt::Seleziona(long inizio, long lunghezza) {
  const long l = static_cast<long>(vista_->Testo().size());
  inizio = std::clamp(inizio, 0L, l);
  lunghezza = std::clamp(lunghezza, 0L, l - inizio);
  vista_->Seleziona(static_cast<std::size_t>(inizio), static_cast<std::size_t>(inizio + lunghezza));
}

std::string AreaTestoQt::SelText() const {
  return vista_->Testo().substr(vista_->SelInizio(), vista_->SelFine() - vista_->SelInizio());
}

}  // namespace gui
