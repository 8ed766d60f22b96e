// What the three windows build alike: push buttons placed in twips, and the colours of a folder box.
#pragma once

#include <QColor>
#include <QPushButton>

namespace gui {

// A button named `nome` at a place given in twips. No button is a form's default, so Enter presses nothing.
QPushButton* Pulsante(QWidget* genitore, const char* nome, const char* testo, int l, int t, int w, int h);

// A folder is shown bright green on dark green.
inline const QColor kVerdeScuro{0, 64, 0};
inline const QColor kVerdeChiaro{0, 255, 0};

}  // namespace gui
