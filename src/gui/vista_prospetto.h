// The report area: a scroll area that holds the report string once, with the index of its lines, and paints
// only the lines in view, so that a listing of hundreds of thousands of lines is shown at once and costs
// little more memory than its text. Positions are the string's own: a CR LF is two characters, a lone CR or
// LF a line break too. The user selects with the mouse and the keys and copies; nothing can be typed.
#pragma once

#include <QAbstractScrollArea>
#include <QFont>
#include <cstddef>
#include <string>

#include "support/righe.h"

namespace gui {

class VistaProspetto : public QAbstractScrollArea {
 public:
  explicit VistaProspetto(QWidget* genitore = nullptr);

  // The string shown, the selection and the scrolling back at the start.
  void ImpostaTesto(const std::string& testo);
  const std::string& Testo() const { return testo_; }

  std::size_t SelInizio() const { return std::min(ancora_, cursore_); }
  std::size_t SelFine() const { return std::max(ancora_, cursore_); }
  // Selects [inizio, fine), brings its end's columns into view and puts its line in the middle of the area.
  void Seleziona(std::size_t inizio, std::size_t fine);
  // Where the character at `pos` is drawn, in the viewport.
  QRect RettangoloDi(std::size_t pos) const;

 protected:
  void paintEvent(QPaintEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;
  void scrollContentsBy(int dx, int dy) override;
  void mousePressEvent(QMouseEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void mouseReleaseEvent(QMouseEvent* evento) override;
  void mouseDoubleClickEvent(QMouseEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void changeEvent(QEvent* evento) override;
  void focusInEvent(QFocusEvent* evento) override;
  void focusOutEvent(QFocusEvent* evento) override;

 private:
  void Metriche();
  void AggiornaBarre();
  std::size_t Visibili() const;
  int XDi(std::size_t riga, std::size_t pos) const;
  std::size_t PosizioneDa(QPoint p) const;
  void Imposta(std::size_t ancora, std::size_t cursore);
  void MostraCursore();
  void Copia() const;

  std::string testo_;
  support::RigheTesto righe_;
  // The selection runs from the anchor to the caret, in either direction.
  std::size_t ancora_ = 0, cursore_ = 0;
  int cw_ = 8, ch_ = 16, ascesa_ = 12, tab_ = 48;
  // The font the text is drawn in: every character exactly cw_ dots wide, as the columns are counted, where
  // the screen would place glyphs at fractional advances.
  QFont disegno_;
  int larghezzaTesto_ = 0;
};

}  // namespace gui
