// Takes the pictures of the three windows for the documentation: on the machine of WINEPREFIX (the demo
// machine, after its check run), each window as the user first sees it, saved as PNG into the folder given.
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTimer>
#include <cstdio>

#include "analysis/dialog_analisi.h"
#include "collection/controllo.h"
#include "gui/finestra_analisi.h"
#include "gui/finestra_getdir.h"
#include "gui/finestra_principale.h"
#include "support/interfacce.h"

namespace {

// The pictures need no answers: messages are printed, dialogs and the clipboard do nothing.
struct MessaggiStampati : support::Messaggi {
  void Semplice(const std::string& t) override { std::fprintf(stderr, "plain: %s\n", t.c_str()); }
  void Critico(const std::string& t) override { std::fprintf(stderr, "critical: %s\n", t.c_str()); }
};

bool Salva(QWidget& w, const QString& file) {
  w.show();
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
  const bool ok = w.grab().save(file);
  std::fprintf(stderr, "%s %s\n", ok ? "saved" : "cannot save", qPrintable(file));
  return ok;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc != 2) {
    std::fputs("usage: checkordl_schermate FOLDER\n", stderr);
    return 2;
  }
  const QDir cartella(QString::fromLocal8Bit(argv[1]));
  MessaggiStampati messaggi;
  support::DialogoFileMuto file;
  support::AppuntiMuti appunti;
  const gui::Servizi servizi{messaggi, file, appunti, [](gui::FinestraGetDir&) {},
                             [](gui::FinestraAnalisi&) {}};
  bool ok = true;

  gui::FinestraPrincipale principale(servizi);
  ok = Salva(principale, cartella.filePath(QStringLiteral("principale.png"))) && ok;

  gui::FinestraAnalisi analisi(&principale, messaggi, file, appunti);
  analysis::ImpostaValori(analisi.Modello(), collection::kNomeSnapshot);
  analysis::EseguiVoce(analisi.Modello(), analysis::Voce::mnu_ShowTRLE_Dir);
  analisi.Text_Cerca->setText(QStringLiteral("tomb"));
  analysis::Pul_Trova_Click(analisi.Modello());
  ok = Salva(analisi, cartella.filePath(QStringLiteral("analisi.png"))) && ok;
  analisi.hide();

  picker::Dialog_GetDir modello{messaggi};
  modello.Caption = "Select TRLE folder";
  picker::Carica(modello);
  picker::ImpostaValori(modello, principale.Modello().Label_NomeTrle.Testo());
  gui::FinestraGetDir getDir(&principale, modello);
  ok = Salva(getDir, cartella.filePath(QStringLiteral("getdir.png"))) && ok;

  return ok ? 0 : 1;
}
