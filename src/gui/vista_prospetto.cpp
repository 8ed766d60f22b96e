#include "gui/vista_prospetto.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <climits>

#include "gui/controlli_qt.h"
#include "gui/testo_qt.h"
#include "support/forma.h"

namespace gui {
namespace {

// The room between the frame and the text.
constexpr int kMargine = 3;

// A byte as the area draws it: its Windows-1252 character, a control character as its visible picture.
char16_t Carattere(char c) {
  const auto b = static_cast<unsigned char>(c);
  return b < 0x20 ? static_cast<char16_t>(0x2400 + b) : UnitaDeiByte()[b];
}

}  // namespace

VistaProspetto::VistaProspetto(QWidget* genitore) : QAbstractScrollArea(genitore) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setCursor(Qt::IBeamCursor);
  viewport()->setBackgroundRole(QPalette::Base);
  Metriche();
}

void VistaProspetto::Metriche() {
  const QFontMetrics m(font());
  cw_ = std::max(1, m.horizontalAdvance(QLatin1Char('M')));
  disegno_ = font();
  disegno_.setKerning(false);
  disegno_.setLetterSpacing(QFont::AbsoluteSpacing,
                            cw_ - QFontMetricsF(disegno_).horizontalAdvance(QLatin1Char('M')));
  ch_ = std::max(1, m.lineSpacing());
  ascesa_ = m.ascent();
  tab_ = std::max(1, Tw(support::kTabulazioneTwips));
  larghezzaTesto_ = support::LarghezzaMassima(testo_, righe_, cw_, tab_);
  AggiornaBarre();
}

std::size_t VistaProspetto::Visibili() const {
  return static_cast<std::size_t>(std::max(1, viewport()->height() / ch_));
}

int VistaProspetto::XDi(std::size_t riga, std::size_t pos) const {
  return support::XDi(testo_, righe_.Inizio(riga), std::min(pos, righe_.Fine(riga)), cw_, tab_);
}

void VistaProspetto::AggiornaBarre() {
  const std::size_t n = righe_.Quante(), vis = Visibili();
  verticalScrollBar()->setRange(0, static_cast<int>(std::min<std::size_t>(n > vis ? n - vis : 0, INT_MAX)));
  verticalScrollBar()->setPageStep(static_cast<int>(vis));
  verticalScrollBar()->setSingleStep(1);
  const int w = viewport()->width();
  horizontalScrollBar()->setRange(0, std::max(0, larghezzaTesto_ + 2 * kMargine - w));
  horizontalScrollBar()->setPageStep(w);
  horizontalScrollBar()->setSingleStep(cw_);
}

void VistaProspetto::ImpostaTesto(const std::string& testo) {
  testo_ = testo;
  righe_.Imposta(testo_);
  ancora_ = cursore_ = 0;
  larghezzaTesto_ = support::LarghezzaMassima(testo_, righe_, cw_, tab_);
  AggiornaBarre();
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
  viewport()->update();
}

QRect VistaProspetto::RettangoloDi(std::size_t pos) const {
  const std::size_t riga = righe_.RigaDi(std::min(pos, testo_.size()));
  const long y = (static_cast<long>(riga) - verticalScrollBar()->value()) * ch_;
  return {kMargine + XDi(riga, pos) - horizontalScrollBar()->value(), static_cast<int>(y), cw_, ch_};
}

std::size_t VistaProspetto::PosizioneDa(QPoint p) const {
  const long r = verticalScrollBar()->value() + (p.y() < 0 ? -1 : p.y() / ch_);
  const std::size_t riga = std::min(static_cast<std::size_t>(std::max(0L, r)), righe_.Quante() - 1);
  return support::PosizioneDaX(testo_, righe_.Inizio(riga), righe_.Fine(riga),
                               p.x() - kMargine + horizontalScrollBar()->value(), cw_, tab_);
}

void VistaProspetto::Imposta(std::size_t ancora, std::size_t cursore) {
  ancora_ = std::min(ancora, testo_.size());
  cursore_ = std::min(cursore, testo_.size());
  viewport()->update();
}

void VistaProspetto::MostraCursore() {
  const std::size_t riga = righe_.RigaDi(cursore_), vis = Visibili();
  const auto prima = static_cast<std::size_t>(verticalScrollBar()->value());
  if (riga < prima)
    verticalScrollBar()->setValue(static_cast<int>(riga));
  else if (riga >= prima + vis)
    verticalScrollBar()->setValue(static_cast<int>(riga - vis + 1));
  const int x = XDi(riga, cursore_), w = viewport()->width() - 2 * kMargine,
            h = horizontalScrollBar()->value();
  if (x < h)
    horizontalScrollBar()->setValue(std::max(0, x - w / 4));
  else if (x + cw_ > h + w)
    horizontalScrollBar()->setValue(x + cw_ - w + w / 4);
}

void VistaProspetto::Seleziona(std::size_t inizio, std::size_t fine) {
  Imposta(inizio, fine);
  MostraCursore();
  const std::size_t riga = righe_.RigaDi(ancora_);
  verticalScrollBar()->setValue(
      static_cast<int>(support::PrimaRigaAlCentro(riga, Visibili(), righe_.Quante())));
}

void VistaProspetto::Copia() const {
  if (SelFine() > SelInizio()) AppuntiQt().ImpostaTesto(testo_.substr(SelInizio(), SelFine() - SelInizio()));
}

void VistaProspetto::paintEvent(QPaintEvent*) {
  QPainter p(viewport());
  p.setFont(disegno_);
  const QPalette& pal = palette();
  const int larghezza = viewport()->width(), dx = horizontalScrollBar()->value();
  const auto prima = static_cast<std::size_t>(verticalScrollBar()->value());
  const std::size_t ultima = std::min(righe_.Quante(), prima + Visibili() + 1);
  const std::size_t s0 = SelInizio(), s1 = SelFine();
  QString corsa;
  for (std::size_t riga = prima; riga < ultima; ++riga) {
    const int y = static_cast<int>(riga - prima) * ch_;
    support::CorseDi(testo_, righe_.Inizio(riga), righe_.Fine(riga), cw_, tab_, dx, larghezza, s0, s1,
                     [&](const support::Corsa& k) {
                       const QRect r(kMargine + k.x0 - dx, y, k.x1 - k.x0, ch_);
                       if (k.selezionata) p.fillRect(r, pal.highlight());
                       if (k.fine == k.inizio) return;
                       corsa.resize(static_cast<qsizetype>(k.fine - k.inizio));
                       for (std::size_t i = k.inizio; i < k.fine; ++i)
                         corsa[static_cast<qsizetype>(i - k.inizio)] = QChar(Carattere(testo_[i]));
                       p.setPen(k.selezionata ? pal.highlightedText().color() : pal.text().color());
                       p.drawText(r.left(), y + ascesa_, corsa);
                     });
  }
  if (hasFocus()) {
    const QRect c = RettangoloDi(cursore_);
    p.fillRect(c.left(), c.top(), 1, ch_, pal.text());
  }
}

void VistaProspetto::resizeEvent(QResizeEvent* evento) {
  QAbstractScrollArea::resizeEvent(evento);
  AggiornaBarre();
}

void VistaProspetto::scrollContentsBy(int, int) {
  viewport()->update();
}

void VistaProspetto::mousePressEvent(QMouseEvent* evento) {
  if (evento->button() != Qt::LeftButton) return;
  const std::size_t p = PosizioneDa(evento->position().toPoint());
  Imposta((evento->modifiers() & Qt::ShiftModifier) ? ancora_ : p, p);
}

void VistaProspetto::mouseMoveEvent(QMouseEvent* evento) {
  if (!(evento->buttons() & Qt::LeftButton)) return;
  Imposta(ancora_, PosizioneDa(evento->position().toPoint()));
  MostraCursore();
}

void VistaProspetto::mouseReleaseEvent(QMouseEvent* evento) {
  evento->accept();
}

void VistaProspetto::mouseDoubleClickEvent(QMouseEvent* evento) {
  const auto [a, b] = support::ParolaIntorno(testo_, righe_, PosizioneDa(evento->position().toPoint()));
  Imposta(a, b);
}

// The keys that move the caret, in the order of `support::Movimento`.
constexpr int kTastiMovimento[] = {Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Up,   Qt::Key_Down,
                                   Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};

void VistaProspetto::keyPressEvent(QKeyEvent* evento) {
  if (evento->matches(QKeySequence::Copy)) return Copia();
  if (evento->matches(QKeySequence::SelectAll)) return Imposta(0, testo_.size());
  const bool ctrl = evento->modifiers() & Qt::ControlModifier;
  const auto m = support::MovimentoDelTasto(kTastiMovimento, evento->key(), ctrl);
  if (!m) return QAbstractScrollArea::keyPressEvent(evento);
  const std::size_t p = support::Muovi(testo_, righe_, cursore_, *m, Visibili() - 1, cw_, tab_);
  Imposta((evento->modifiers() & Qt::ShiftModifier) ? ancora_ : p, p);
  MostraCursore();
}

void VistaProspetto::changeEvent(QEvent* evento) {
  QAbstractScrollArea::changeEvent(evento);
  if (evento->type() == QEvent::FontChange) Metriche();
}

void VistaProspetto::focusInEvent(QFocusEvent* evento) {
  // Tabbing in leaves the selection where the search put it.
  QAbstractScrollArea::focusInEvent(evento);
  viewport()->update();
}

void VistaProspetto::focusOutEvent(QFocusEvent* evento) {
  QAbstractScrollArea::focusOutEvent(evento);
  viewport()->update();
}

}  // namespace gui
