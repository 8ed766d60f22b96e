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
#include "servizi_prova.h"

namespace {

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
  Banco banco;
  bool ok = true;

  gui::FinestraPrincipale principale(banco.Servizi());
  ok = Salva(principale, cartella.filePath(QStringLiteral("principale.png"))) && ok;

  gui::FinestraAnalisi analisi(&principale, banco.messaggi, banco.file, banco.appunti,
                               principale.Modello().InfoHeader);
  analysis::ImpostaValori(analisi.Modello(), collection::kNomeSnapshot);
  analysis::EseguiVoce(analisi.Modello(), analysis::Voce::mnu_ShowTRLE_Dir);
  analisi.Text_Cerca->setText(QStringLiteral("tomb"));
  analysis::Pul_Trova_Click(analisi.Modello());
  ok = Salva(analisi, cartella.filePath(QStringLiteral("analisi.png"))) && ok;
  analisi.hide();

  MessaggiRegistro messaggi;
  picker::Dialog_GetDir modello{messaggi};
  modello.Caption = "Select TRLE folder";
  picker::Carica(modello);
  picker::ImpostaValori(modello, principale.Modello().Label_NomeTrle.Testo());
  gui::FinestraGetDir getDir(&principale, modello);
  ok = Salva(getDir, cartella.filePath(QStringLiteral("getdir.png"))) && ok;

  for (const auto& m : banco.messaggi.tutti) std::fprintf(stderr, "%s\n", m.c_str());
  return ok ? 0 : 1;
}
