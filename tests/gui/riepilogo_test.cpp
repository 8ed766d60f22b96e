// The findings item of the analysis window on the demo machine: the same text as the headless tool gives
// for the same snapshot, and the report marks cleared as the backup analysis clears them.
#include <QAction>
#include <QTemporaryDir>
#include <QtTest>

#include "analysis/riepilogo.h"
#include "cli/macchina_demo.h"
#include "collection/controllo.h"
#include "collection/scoperta.h"
#include "gui/finestra_analisi.h"
#include "host/machine.h"
#include "servizi_prova.h"
#include "support/files.h"
#include "support/valori.h"

class ProvaRiepilogo : public QObject {
  Q_OBJECT

 private slots:
  void riepilogoComeLoStrumento() {
    QTemporaryDir cartella;
    std::string errore;
    QVERIFY2(cli::CreaMacchinaDemo(cartella.path().toStdString() + "/demo", &errore), errore.c_str());
    support::DidascaliaMuta a, b, c;
    support::BarraMuta barra;
    support::CicloMuto ciclo;
    MessaggiRegistro msg;
    picker::DialogoGetDir dialogo(msg, nullptr);
    collection::Principale p{a, b, c, barra, msg, dialogo, ciclo, [] {}, {}};
    formats::PrefRecord pref;
    collection::CercaInstallazioni(p, pref);
    collection::Pul_Start_Click(p);
    QVERIFY(cli::CreaElenchiDemo(host::CartellaProgramma()));

    Banco banco;
    formats::InfoHeader header;
    gui::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti, header);
    analysis::ImpostaValori(f.Modello(), collection::kNomeSnapshot);
    // The menu's place and caption are in the window test's list of menus.
    f.mnu_RiepilogoProblemi->trigger();
    const std::string altrove = host::CartellaProgramma() + "\\Altrove";
    QVERIFY(support::CreaCartella(altrove));
    const std::string strumento = analysis::TestoRiepilogo(analysis::ApriEVerifica(
        collection::kNomeSnapshot, altrove, host::CartellaProgramma(), support::SeparatoreDecimale()));
    QCOMPARE(f.Area().Testo(), strumento);
    for (int i = 0; i < analysis::kNumeroVoci; ++i)
      QVERIFY(!f.Voce(static_cast<analysis::Voce>(i))->isChecked());
    QVERIFY(banco.messaggi.tutti.empty());
  }
};

QTEST_MAIN(ProvaRiepilogo)
#include "riepilogo_test.moc"
