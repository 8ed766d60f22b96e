#include "gui/forme_qt.h"

#include <QWidget>

namespace gui {

void OrdineTab(QWidget* finestra, const support::Forma& f) {
  QWidget* prima = nullptr;
  for (const char* nome : f.ordineTab) {
    auto* w = finestra->findChild<QWidget*>(QString::fromLatin1(nome), Qt::FindDirectChildrenOnly);
    if (prima && w) QWidget::setTabOrder(prima, w);
    prima = w;
  }
}

}  // namespace gui
