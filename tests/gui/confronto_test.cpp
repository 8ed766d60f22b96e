// "Confronta con un altro snapshot..." in the analysis window: it shows the model's comparison of the open
// snapshot with the chosen one, and leaves the open snapshot as it was.
#include <QAction>
#include <QTemporaryDir>
#include <QtTest>

#include "analysis/confronto.h"
#include "cli/macchina_demo.h"
#include "gui/finestra_analisi.h"
#include "servizi_prova.h"
#include "support/files.h"

using analysis::Voce;

class ProvaConfronto : public QObject {
  Q_OBJECT
  QTemporaryDir cartella_;

 private slots:
  void confrontoConUnAltroSnapshot() {
    std::string errore;
    QVERIFY2(cli::CreaMacchinaDemo(cartella_.path().toStdString(), &errore), errore.c_str());
    support::DidascaliaMuta label;
    support::BarraMuta barra;
    const std::vector<std::string> membri = {"C:\\Giochi\\Trle\\ordeio.txt", "C:\\Giochi\\Trle\\script.dat"};
    QVERIFY(collection::SalvaSnapshot("C:\\vecchio.bin", membri, 2, label, barra));
    QVERIFY(cli::CambiaMacchinaDemo());
    QVERIFY(collection::SalvaSnapshot("C:\\nuovo.bin", membri, 2, label, barra));

    Banco banco;
    formats::InfoHeader header;
    gui::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti, header);
    analysis::ImpostaValori(f.Modello(), "C:\\vecchio.bin");
    f.Voce(Voce::mnu_ShowOrdelioTxt)->trigger();
    const std::string ordeio = f.Area().Testo();
    banco.file.risposte = {std::string("C:\\nuovo.bin")};
    f.mnu_Confronta->trigger();

    analysis::SnapshotAperto nuovo;
    QVERIFY(analysis::ApriSnapshot("C:\\nuovo.bin", "C:\\Atteso", nuovo));
    const std::string atteso = analysis::TestoConfronto(analysis::ConfrontaSnapshot(
        {f.Modello().CartellaDati, f.Modello().Contenuto}, nuovo, banco.messaggi));
    QCOMPARE(f.Area().Testo(), atteso);
    QVERIFY(!f.Voce(Voce::mnu_ShowOrdelioTxt)->isChecked());
    f.Voce(Voce::mnu_ShowOrdelioTxt)->trigger();
    QCOMPARE(f.Area().Testo(), ordeio);
    QCOMPARE(banco.messaggi.tutti.size(), 1u);  // the header report: no infofile.bin was packed
  }
};

QTEST_MAIN(ProvaConfronto)
#include "confronto_test.moc"
