// checkordl: the desktop program. It takes no command line; on a system other than Windows it sees the
// machine of the Wine prefix, as the headless tool does.
#include <QApplication>
#include <clocale>

#include "gui/controlli_qt.h"
#include "gui/finestra_analisi.h"
#include "gui/finestra_getdir.h"
#include "gui/finestra_principale.h"
#include "gui/identita.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  // The reports take the locale's decimal separator, as the headless tool does.
  std::setlocale(LC_ALL, "");
  gui::ImpostaIdentita();
  gui::MessaggiQt messaggi;
  gui::DialogoFileQt dialogoFile;
  gui::AppuntiQt appunti;
  gui::FinestraPrincipale finestra({messaggi, dialogoFile, appunti,
                                    [](gui::FinestraGetDir& d) { gui::MostraModale(d); },
                                    [](gui::FinestraAnalisi& d) { gui::MostraModale(d); }});
  finestra.show();
  return QApplication::exec();
}
