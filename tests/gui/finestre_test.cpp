// The three windows over real machines: each click goes through the widgets to the operations, and what the
// operations leave shows in the widgets.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "analysis/dialog_analisi.h"
#include "cli/macchina_demo.h"
#include "collection/controllo.h"
#include "collection/scoperta.h"
#include "gui/finestra_analisi.h"
#include "gui/finestra_getdir.h"
#include "gui/testo_qt.h"
#include "host/machine.h"
#include "servizi_prova.h"

using analysis::Voce;

namespace {

std::string LeggiHost(const QString& percorso) {
  std::ifstream f(percorso.toStdString(), std::ios::binary);
  std::ostringstream s;
  s << f.rdbuf();
  return s.str();
}

}  // namespace

class ProvaFinestre : public QObject {
  Q_OBJECT

  QTemporaryDir cartella_;
  QString prefisso_;

  // A fresh demo machine: both installations, registry, samples.
  void Demo() {
    prefisso_ = cartella_.path() + QStringLiteral("/demo%1").arg(++macchine_);
    std::string errore;
    QVERIFY2(cli::CreaMacchinaDemo(prefisso_.toStdString(), &errore), errore.c_str());
  }
  int macchine_ = 0;

  // A check run on the demo machine without windows, leaving C:\INFO_ORDL.BIN.
  static void Snapshot() {
    support::DidascaliaMuta a, b, c;
    support::BarraMuta barra;
    support::CicloMuto ciclo;
    MessaggiRegistro msg;
    picker::DialogoGetDir dialogo(msg, nullptr);
    collection::Principale p{a, b, c, barra, msg, dialogo, ciclo, [] {}, {}};
    formats::PrefRecord pref;
    collection::CercaInstallazioni(p, pref);
    collection::Pul_Start_Click(p);
    QVERIFY(host::LunghezzaFile(collection::kNomeSnapshot, nullptr) > 0);
  }

 private slots:
  void areaTesto_posizioni_data() {
    QTest::addColumn<QByteArray>("testo");
    QTest::addColumn<int>("inizio");
    QTest::addColumn<int>("lunghezza");
    QTest::addColumn<QString>("mostrato");
    QTest::newRow("CR LF counts two") << QByteArray("ab\r\ncd\r\nef") << 8 << 2 << "ef";
    QTest::newRow("across a line end") << QByteArray("ab\r\ncd") << 1 << 4 << "b\u2029c";
    QTest::newRow("bare LF counts one") << QByteArray("ab\ncd\r\nef") << 7 << 1 << "e";
    QTest::newRow("NUL is one character") << QByteArray("a\0b\r\nc", 6) << 5 << 1 << "c";
    QTest::newRow("Windows-1252") << QByteArray("caf\xe9\r\n\xfc") << 6 << 1 << "\u00fc";
    QTest::newRow("clipped to the text") << QByteArray("ab\r\n") << 9 << 2 << "";
  }
  void areaTesto_posizioni() {
    QFETCH(QByteArray, testo);
    QFETCH(int, inizio);
    QFETCH(int, lunghezza);
    QFETCH(QString, mostrato);
    QPlainTextEdit widget;
    gui::AreaTestoQt area(&widget);
    const std::string byte(testo.constData(), static_cast<std::size_t>(testo.size()));
    area.ImpostaTesto(byte);
    QCOMPARE(area.Testo(), byte);
    area.Seleziona(inizio, lunghezza);
    QCOMPARE(widget.textCursor().selectedText(), mostrato);
    // The same selection made by the user in the widget reads back in string positions.
    QTextCursor c = widget.textCursor();
    const int a = c.selectionStart(), b = c.selectionEnd();
    c.setPosition(b);
    c.setPosition(a, QTextCursor::KeepAnchor);
    widget.setTextCursor(c);
    QCOMPARE(area.SelStart(), std::min<long>(inizio, static_cast<long>(byte.size())));
    QCOMPARE(area.SelText(), byte.substr(area.SelStart(), area.SelLength()));
    QCOMPARE(area.SelLength(),
             static_cast<long>(mostrato.size()) + static_cast<long>(mostrato.count(u'\u2029')));
  }

  void nomiEDidascalie() {
    Demo();
    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    const std::pair<const char*, const char*> pulsanti[] = {{"Pul_CambiaORDL", "Change"},
                                                            {"Pul_CambiaTrle", "Change"},
                                                            {"Pul_Start", "Start check"},
                                                            {"Pul_EstraiDati", "Leggi Dati"},
                                                            {"Pul_Annulla", "Close"}};
    for (const auto& [nome, testo] : pulsanti)
      QCOMPARE(w.findChild<QPushButton*>(nome)->text(), QString::fromLatin1(testo));
    QCOMPARE(w.windowTitle(), QStringLiteral(" Check Configuration of Ordelio and Tomb Raider Level Editor"));
    QStringList tab;
    QWidget* t = w.Pul_CambiaORDL;
    do {
      if (t->focusPolicy() & Qt::TabFocus) tab << t->objectName();
      t = t->nextInFocusChain();
    } while (t != w.Pul_CambiaORDL);
    QCOMPARE(tab.join(QLatin1Char(',')),
             QStringLiteral("Pul_CambiaORDL,Pul_CambiaTrle,Pul_Start,Pul_Annulla,Pul_EstraiDati"));

    gui::FinestraAnalisi a(&w, banco.messaggi, banco.file, banco.appunti, w.Modello().InfoHeader);
    QCOMPARE(a.windowTitle(), QStringLiteral(" Analisi dati info ordl"));
    QCOMPARE(a.Area().Testo(), std::string("RichTextBox1"));
    QVERIFY(a.Text_Out->isReadOnly());
    QStringList voci;
    for (QAction* m : a.Menu->actions()) {
      voci << m->objectName() + QLatin1Char('=') + m->text();
      for (QAction* v : m->menu()->actions()) voci << v->objectName() + QLatin1Char('=') + v->text();
    }
    QCOMPARE(
        voci.join(QLatin1Char(',')),
        QStringLiteral("mnu_File=File,mnu_CaricaFile=Carica un prospetto,mnu_SalvaFile=Salva prospetto in "
                       "un file di testo,mnu_Esci=Esci,mnu_Modifica=Modifica,mnu_Copia=Copia ,"
                       "mnu_Prospetto=Prospetto,mnu_ShowInfoHeader=Info File Header,mnu_ShowPref=Ordelio "
                       "preferenze,mnu_ShowArchivioQlv=File archivio qlv,mnu_ShowORDL_Dir=Directory "
                       "Ordelio,mnu_ShowTRLE_Dir=Directory Level Editor,mnu_ShowArchivioDir=Directory "
                       "Archivio livelli,mnu_ShowOrdelioTxt=Ordelio.txt,mnu_ShowScriptDat=Script.Dat,"
                       "mnu_Analisi=Analisi,mnu_AnalisiBackup=Analisi backup_trle,"
                       "mnu_Diagnosi=Diagnosi,mnu_RiepilogoProblemi=Riepilogo problemi"));
  }

  void scatolaCritica() {
    QString titolo;
    QMessageBox::Icon icona{};
    QMessageBox::StandardButtons pulsanti;
    QString testo;
    QTimer::singleShot(0, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      QVERIFY(box);
      titolo = box->windowTitle(), icona = box->icon(), pulsanti = box->standardButtons(),
      testo = box->text();
      box->accept();
    });
    gui::MessaggiQt().Critico("Non trovo file: C:\\Caf\xe9\r\nfine");
    QCOMPARE(titolo, QStringLiteral("CheckORDL"));
    QCOMPARE(icona, QMessageBox::Critical);
    QCOMPARE(pulsanti, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(testo, QStringLiteral("Non trovo file: C:\\Caf\u00e9\nfine"));
  }

  void avvioECambia() {
    Demo();
    support::DidascaliaMuta ordl, trle, info;
    support::BarraMuta barra;
    support::CicloMuto ciclo;
    MessaggiRegistro msg;
    picker::DialogoGetDir dialogo(msg, nullptr);
    collection::Principale atteso{ordl, trle, info, barra, msg, dialogo, ciclo, [] {}, {}};
    formats::PrefRecord pref;
    collection::CercaInstallazioni(atteso, pref);

    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    QVERIFY(!trle.Testo().empty());
    QCOMPARE(w.Label_NomeTrle->text(), gui::DaByte(trle.Testo()));
    QCOMPARE(w.Label_DirORDL->text(), gui::DaByte(ordl.Testo()));

    // The user walks to a folder in the picker's own widgets, then presses a button.
    const auto scegli = [&](const std::string& cartella, bool ok) {
      banco.getDir = [=](gui::FinestraGetDir& f) {
        picker::ImpostaValori(f.Modello(), cartella);
        f.Aggiorna();
        QCOMPARE(f.Text_Path->text(), gui::DaByte(cartella));
        (ok ? f.OKButton : f.CancelButton)->click();
        QCOMPARE(f.result(), int(QDialog::Accepted));
      };
    };
    support::CreaCartella("C:\\Altro Trle");
    scegli("C:\\Altro Trle", true);
    w.Pul_CambiaTrle->click();
    QCOMPARE(banco.messaggi.tutti,
             std::vector<std::string>{"critical: This is not a correct Level Editor folder: C:\\Altro Trle"});
    QCOMPARE(w.Label_NomeTrle->text(), gui::DaByte(trle.Testo()));
    scegli("C:\\Ordelio", false);
    w.Pul_CambiaORDL->click();
    QCOMPARE(w.Label_DirORDL->text(), gui::DaByte(ordl.Testo()));
    scegli("C:\\Ordelio\\backup_trle\\..\\..\\Giochi\\Trle", true);
    support::CreaCartella("C:\\Caf\xe9");
    scegli("C:\\Caf\xe9", true);
    w.Pul_CambiaORDL->click();
    QCOMPARE(banco.messaggi.tutti.back(),
             std::string("critical: In this folder is missing file ordl2009.exe this cannot be ORDL folder"));
    QCOMPARE(banco.messaggi.tutti.size(), std::size_t{2});
  }

  void pickerFinestra() {
    Demo();
    // A drive whose target is missing is listed but not ready.
    std::filesystem::create_directory_symlink("../assente", (prefisso_ + "/dosdevices/e:").toStdString());
    host::UsaPrefisso(prefisso_.toStdString());
    MessaggiRegistro msg;
    picker::Dialog_GetDir m{msg};
    picker::Carica(m);
    picker::ImpostaValori(m, "C:\\Giochi");
    gui::FinestraGetDir f(nullptr, m);
    QCOMPARE(f.Text_Path->text(), QStringLiteral("C:\\Giochi"));
    QCOMPARE(f.Drive1->currentText(), QStringLiteral("C:"));
    QTreeWidgetItem* giochi = f.Dir1->currentItem();
    QCOMPARE(giochi->text(0), QStringLiteral("Giochi"));
    QCOMPARE(giochi->childCount(), 1);
    emit f.Dir1->itemActivated(giochi->child(0), 0);
    QCOMPARE(f.Text_Path->text(), QStringLiteral("C:\\Giochi\\Trle"));

    QVERIFY(f.Drive1->findText(QStringLiteral("E:")) >= 0);
    emit f.Drive1->activated(f.Drive1->findText(QStringLiteral("E:")));
    QCOMPARE(msg.tutti, std::vector<std::string>{"critical: Drive not ready"});
    QCOMPARE(f.Drive1->currentText(), QStringLiteral("C:"));
    QCOMPARE(f.Text_Path->text(), QStringLiteral("C:\\Giochi\\Trle"));

    emit f.Dir1->itemActivated(f.Dir1->topLevelItem(0), 0);
    f.Text_PathDir->setText(QStringLiteral("  Nuova \u00e8 "));
    f.Pul_NuovaCartella->click();
    QCOMPARE(f.Text_Path->text(), QStringLiteral("C:\\Nuova \u00e8"));
    QVERIFY(support::DirExists("C:\\Nuova \xe8"));
    emit f.Dir1->itemActivated(f.Dir1->topLevelItem(0), 0);
    f.OKButton->click();
    QCOMPARE(m.PathDir, std::string("C:"));
    QVERIFY(m.ExitValue);
  }

  void controlloCompleto() {
    Demo();
    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    w.show();
    // Clicks that arrive while the run scans find the window busy.
    bool apertaDurante = false;
    QStringList stati;
    QTimer::singleShot(0, [&] {
      w.Pul_Annulla->click();
      w.Pul_CambiaTrle->click();
      w.Pul_EstraiDati->click();
      w.Pul_Start->click();
      w.close();
      apertaDurante = w.isVisible();
      stati << w.Label_Info->text();
    });
    w.Pul_Start->click();
    QVERIFY(apertaDurante);
    QVERIFY(stati.value(0).startsWith(QStringLiteral("Parsing folder")));
    QCOMPARE(banco.file.senzaRisposta, 0);
    QVERIFY(w.Chiusa());
    QVERIFY(!w.isVisible());
    QCOMPARE(banco.messaggi.tutti.size(), std::size_t{1});
    QVERIFY(banco.messaggi.tutti[0].starts_with("plain: Scanning is complete\r\n"));
    QVERIFY(host::LunghezzaFile(collection::kNomeSnapshot, nullptr) > 0);
  }

  void leggiDatiOgniProspetto() {
    Demo();
    Snapshot();
    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    banco.file.risposte = {std::nullopt};
    w.Pul_EstraiDati->click();
    QCOMPARE(banco.file.titolo, std::string("Carica file info_ordl.bin"));

    // What the operations give on their own, report by report.
    // The report area without a widget, for the reports the core makes on its own.
    support::AreaTestoInMemoria area;
    support::DidascaliaMuta cerca;
    support::BarraMuta barra;
    analysis::SegniInMemoria segni;
    MessaggiRegistro msg;
    DialogoFileProva file;
    AppuntiProva appunti;
    formats::InfoHeader header;
    analysis::Dialog_Analisi atteso{area, cerca, barra, segni, msg, file, appunti, header};
    analysis::ImpostaValori(atteso, collection::kNomeSnapshot);

    int mostrata = 0;
    banco.analisi = [&](gui::FinestraAnalisi& f) {
      ++mostrata;
      QCOMPARE(f.Area().Testo(), area.Testo());
      QVERIFY(f.Voce(Voce::mnu_ShowInfoHeader)->isChecked());
      for (int i = 0; i < analysis::kNumeroVoci; ++i) {
        const auto v = static_cast<Voce>(i);
        analysis::EseguiVoce(atteso, v);
        f.Voce(v)->trigger();
        QCOMPARE(f.Area().Testo(), area.Testo());
        QCOMPARE(f.Text_Out->toPlainText(), gui::TestoVisibile(area.Testo()));
        for (int j = 0; j < analysis::kNumeroVoci; ++j)
          QCOMPARE(f.Voce(static_cast<Voce>(j))->isChecked(), segni.Checked(static_cast<Voce>(j)));
      }
      QCOMPARE(banco.messaggi.tutti, msg.tutti);
      f.mnu_Esci->trigger();
      QVERIFY(!f.isVisible());
    };
    banco.file.risposte = {std::string(collection::kNomeSnapshot)};
    w.Pul_EstraiDati->click();
    QCOMPARE(mostrata, 1);
    QVERIFY(!w.Chiusa());
  }

  void ricercaCopiaSalvaCarica() {
    Demo();
    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    gui::FinestraAnalisi f(&w, banco.messaggi, banco.file, banco.appunti, w.Modello().InfoHeader);
    const std::string testo("tomb\r\n\tTOMB4.exe (1 KB)\n\0x\r\ntomb:caf\xe9 tomb", 42);
    f.Area().ImpostaTesto(testo);
    QTest::keyClicks(f.Text_Cerca, QStringLiteral("TOMB"));
    const auto selezione = [&] { return std::pair{f.Area().SelStart(), f.Area().SelText()}; };

    f.Pul_Trova->click();
    QCOMPARE(selezione(), (std::pair<long, std::string>{0, "tomb"}));
    f.Pul_Dopo->click();
    QCOMPARE(selezione(), (std::pair<long, std::string>{7, "TOMB4.exe"}));
    QCOMPARE(f.Text_Out->textCursor().selectedText(), QStringLiteral("TOMB4.exe"));
    f.Pul_Dopo->click();
    QCOMPARE(selezione(), (std::pair<long, std::string>{28, "tomb"}));
    f.Pul_Dopo->click();
    QCOMPARE(selezione(), (std::pair<long, std::string>{38, "tomb"}));
    f.Pul_Dopo->click();
    QCOMPARE(banco.messaggi.tutti, std::vector<std::string>{"plain: Non trovato"});
    f.Pul_Prima->click();
    QCOMPARE(selezione(), (std::pair<long, std::string>{28, "tomb"}));

    f.mnu_Copia->trigger();
    QCOMPARE(banco.appunti.testo, std::string("tomb"));
    f.Area().Seleziona(0, 0);
    f.mnu_Copia->trigger();
    QCOMPARE(banco.messaggi.tutti.back(), std::string("critical: Nessun testo selezionato"));
    gui::AppuntiQt appunti;
    appunti.ImpostaTesto("caf\xe9");
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("caf\u00e9"));

    banco.file.risposte = {std::string("C:\\prospetto.txt")};
    f.mnu_SalvaFile->trigger();
    QCOMPARE(LeggiHost(prefisso_ + QStringLiteral("/drive_c/prospetto.txt")), testo);
    f.Area().ImpostaTesto("altro");
    banco.file.risposte = {std::nullopt, std::string("C:\\prospetto.txt")};
    f.mnu_CaricaFile->trigger();
    QCOMPARE(f.Area().Testo(), std::string("altro"));
    f.mnu_CaricaFile->trigger();
    QCOMPARE(f.Area().Testo(), testo);
    QCOMPARE(banco.file.filtro, std::string("File di testo (*.txt)|*.txt"));
  }

  void filtriSenzaCaso() {
    const QStringList filtri = gui::FiltriQt("File Info_Ordl.bin|info_ordl.bin|Testi|*.txt");
    QCOMPARE(filtri.size(), 2);
    QVERIFY(filtri[0].startsWith(QStringLiteral("File Info_Ordl.bin (")));
    const QString maschera = filtri[0].section(QLatin1Char('('), 1).chopped(1);
    const QRegularExpression re(QRegularExpression::wildcardToRegularExpression(maschera));
    QVERIFY(re.match(QStringLiteral("INFO_ORDL.BIN")).hasMatch());
    QVERIFY(!re.match(QStringLiteral("INFO_ORDL.BAK")).hasMatch());
  }
};

QTEST_MAIN(ProvaFinestre)
#include "finestre_test.moc"
