// The controls of a form table as Qt widgets: placed in twips, named and captioned as the table says.
#pragma once

#include <QColor>
#include <QPushButton>
#include <QString>

#include "gui/testo_qt.h"
#include "support/disposizione.h"
#include "support/forma.h"

namespace gui {

// The control `nome` of form `f` as a new widget of type W, `dy` pixels lower (below a menu bar). No button
// is a form's default, so Enter presses nothing.
template <class W>
W* Crea(QWidget* genitore, const support::Forma& f, const char* nome, int dy = 0) {
  const support::Controllo& c = support::ControlloDi(f, nome);
  auto* w = new W(genitore);
  w->setObjectName(QString::fromLatin1(c.nome));
  const support::Rettangolo r = support::RettangoloMostrato(f, c);
  w->setGeometry(Tw(r.l), dy + Tw(r.t), Tw(r.w), Tw(r.h));
  if constexpr (requires { w->setText(QString()); }) w->setText(QString::fromLatin1(c.testo));
  if constexpr (requires { w->setAutoDefault(false); }) w->setAutoDefault(false);
  return w;
}

// The tab order of the form, over the window's children of those names.
void OrdineTab(QWidget* finestra, const support::Forma& f);

inline QColor ColoreQt(support::Colore c) {
  return QColor(c.r, c.g, c.b);
}
inline const QColor kVerdeScuro = ColoreQt(support::kVerdeScuro);
inline const QColor kVerdeChiaro = ColoreQt(support::kVerdeChiaro);

}  // namespace gui
