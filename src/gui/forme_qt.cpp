#include "gui/forme_qt.h"

#include "gui/testo_qt.h"

namespace gui {

QPushButton* Pulsante(QWidget* genitore, const char* nome, const char* testo, int l, int t, int w, int h) {
  auto* p = new QPushButton(QString::fromLatin1(testo), genitore);
  p->setObjectName(QString::fromLatin1(nome));
  p->setGeometry(Tw(l), Tw(t), Tw(w), Tw(h));
  p->setAutoDefault(false);
  return p;
}

}  // namespace gui
