#include "gui/identita.h"

#include <QApplication>
#include <QIcon>

// The icons are in a static library: nothing would pull them in but this.
static void CaricaIcone() {
  Q_INIT_RESOURCE(icone);
}

namespace gui {

void ImpostaIdentita() {
  CaricaIcone();
  QApplication::setApplicationName(QStringLiteral("checkordl"));
  QGuiApplication::setDesktopFileName(QString::fromLatin1(kNomeDesktop));
  // The installed theme's icon where there is one, else the sizes the program carries.
  QIcon icona = QIcon::fromTheme(QStringLiteral("checkordl"));
  if (icona.isNull())
    for (const int lato : {16, 22, 24, 32, 48, 64, 128, 256})
      icona.addFile(QStringLiteral(":/checkordl/checkordl-%1.png").arg(lato), QSize(lato, lato));
  QApplication::setWindowIcon(icona);
}

}  // namespace gui
