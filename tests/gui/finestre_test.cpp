// The three windows over real machines: each click goes through the widgets to the operations, and what the
// operations leave shows in the widgets. Each window's controls (names, captions, places, tab order) are
// compared with a file in tests/data/finestre; CHECKORDL_RIGENERA=1 rewrites those files instead.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

#include "analysis/confronto.h"
#include "analysis/copia_anonima.h"
#include "analysis/riepilogo.h"
#include "analysis/risposta.h"
#include "analysis/testo_completo.h"
#include "cli/macchina_demo.h"
#include "collection/controllo.h"
#include "collection/scoperta.h"
#include "finestra_prova.h"
#include "gui/finestra_analisi.h"
#include "gui/finestra_getdir.h"
#include "gui/finestra_principale.h"
#include "gui/identita.h"
#include "gui/testo_qt.h"
#include "host/macchina.h"
#include "scenari_finestre.h"
#include "support/files.h"
#include "support/forma.h"
#include "support/testo_uscita.h"
#include "support/valori.h"

using analysis::Voce;

namespace {

// The main window's services, answered from a script; a modal window that no step expects fails the test.
struct Banco {
  MessaggiProva messaggi;
  DialogoFileProva file;
  AppuntiProva appunti;
  std::function<void(gui::FinestraGetDir&)> getDir = [](auto&) { QFAIL("the folder picker was shown"); };
  std::function<void(gui::FinestraAnalisi&)> analisi = [](auto&) { QFAIL("the analysis window was shown"); };
  gui::Servizi Servizi() {
    return {messaggi, file, appunti, [this](auto& f) { getDir(f); }, [this](auto& f) { analisi(f); }};
  }
};

// A window's named controls, one line each: class, name, caption and place (below the menu bar, whose
// height is the font's), then the order of the tab key.
QString Controlli(QWidget* w) {
  const auto* barra = w->findChild<QMenuBar*>();
  const int menu = barra ? barra->height() : 0;
  QStringList righe{
      QStringLiteral("\"%1\" %2x%3").arg(w->windowTitle()).arg(w->width()).arg(w->height() - menu)};
  for (QObject* o : w->findChildren<QObject*>()) {
    if (o->objectName().isEmpty() || o->objectName().startsWith(QLatin1String("qt_"))) continue;
    QString riga = QLatin1String(o->metaObject()->className()) + ' ' + o->objectName() + " \"" +
                   o->property(o->property("title").isValid() ? "title" : "text").toString() + '"';
    if (auto* c = qobject_cast<QWidget*>(o); c && c != barra && !c->isWindow())
      riga += QStringLiteral(" %1,%2 %3x%4").arg(c->x()).arg(c->y() - menu).arg(c->width()).arg(c->height());
    righe << riga;
  }
  QStringList tab;
  for (QWidget* t = w->nextInFocusChain(); t != w; t = t->nextInFocusChain())
    if ((t->focusPolicy() & Qt::TabFocus) && !t->objectName().isEmpty()) tab << t->objectName();
  return righe.join('\n') + "\ntab: " + tab.join(' ') + '\n';
}

void ComeNelFile(const QString& testo, const QString& nome) {
  QFile f(QStringLiteral(CHECKORDL_DATI_PROVA "/finestre/") + nome);
  if (qEnvironmentVariableIsSet("CHECKORDL_RIGENERA")) {
    QVERIFY(f.open(QIODevice::WriteOnly) && f.write(testo.toUtf8()) >= 0);
    return;
  }
  QVERIFY2(f.open(QIODevice::ReadOnly), qPrintable(f.fileName()));
  QCOMPARE(testo, QString::fromUtf8(f.readAll()));
}

}  // namespace

class ProvaFinestre : public QObject {
  Q_OBJECT

  QTemporaryDir cartella_;
  QString prefisso_;
  int macchine_ = 0;

  // A fresh demo machine: both installations, registry, samples.
  void Demo() {
    prefisso_ = cartella_.path() + QStringLiteral("/demo%1").arg(++macchine_);
    std::string errore;
    QVERIFY2(cli::CreaMacchinaDemo(prefisso_.toStdString(), &errore), errore.c_str());
  }

  // A fresh demo machine after its check run: the snapshot is there to be read.
  void DemoControllata() {
    Demo();
    FinestraProva run;
    formats::PrefRecord pref;
    collection::CercaInstallazioni(run.principale, pref);
    collection::Pul_Start_Click(run.principale);
  }

 private slots:
  void controlli() {
    Demo();
    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    ComeNelFile(Controlli(&w), QStringLiteral("principale.txt"));
    gui::FinestraAnalisi a(&w, banco.messaggi, banco.file, banco.appunti);
    ComeNelFile(Controlli(&a), QStringLiteral("analisi.txt"));
    MessaggiProva msg;
    picker::Dialog_GetDir m{msg};
    picker::Carica(m);
    picker::ImpostaValori(m, "C:\\Giochi");
    gui::FinestraGetDir g(nullptr, m);
    ComeNelFile(Controlli(&g), QStringLiteral("getdir.txt"));
  }

  // The report view keeps the string's positions: a selection set by the search, then extended by a key
  // (with Shift held), reads back as the string's bytes.
  void areaTesto_data() {
    QTest::addColumn<QByteArray>("testo");
    QTest::addColumn<int>("inizio");
    QTest::addColumn<int>("lunghezza");
    QTest::addColumn<int>("tasto");
    QTest::addColumn<QByteArray>("scelto");
    QTest::newRow("CR LF counts two") << QByteArray("ab\r\ncd\r\nef") << 8 << 2 << 0 << QByteArray("ef");
    QTest::newRow("across a line end") << QByteArray("ab\r\ncd") << 1 << 4 << 0 << QByteArray("b\r\nc");
    QTest::newRow("NUL is one character") << QByteArray("a\0b\r\nc", 6) << 5 << 1 << 0 << QByteArray("c");
    QTest::newRow("clipped to the text") << QByteArray("ab\r\n") << 9 << 2 << 0 << QByteArray();
    QTest::newRow("right crosses a CR LF at once")
        << QByteArray("ab\r\ncd") << 2 << 0 << int(Qt::Key_Right) << QByteArray("\r\n");
    QTest::newRow("end of the line") << QByteArray("abc\r\ndef") << 0 << 0 << int(Qt::Key_End)
                                     << QByteArray("abc");
  }
  void areaTesto() {
    QFETCH(QByteArray, testo);
    QFETCH(int, inizio);
    QFETCH(int, lunghezza);
    QFETCH(int, tasto);
    QFETCH(QByteArray, scelto);
    gui::VistaProspetto vista;
    vista.resize(300, 200);
    gui::AreaTestoQt area(&vista);
    const std::string byte(testo.constData(), static_cast<std::size_t>(testo.size()));
    area.ImpostaTesto(byte);
    QCOMPARE(area.Testo(), byte);
    area.Seleziona(inizio, lunghezza);
    if (tasto) QTest::keyClick(&vista, static_cast<Qt::Key>(tasto), Qt::ShiftModifier);
    QCOMPARE(area.SelText(), std::string(scelto.constData(), static_cast<std::size_t>(scelto.size())));
    QCOMPARE(area.SelText(), byte.substr(area.SelStart(), area.SelLength()));
  }

  // The windows carry the program's icon and belong to its desktop entry, whose file bears that name.
  void identita() {
    gui::ImpostaIdentita();
    QVERIFY(!QApplication::windowIcon().isNull());
    QVERIFY(!QApplication::windowIcon().pixmap(48, 48).isNull());
    QCOMPARE(QGuiApplication::desktopFileName(), QString::fromLatin1(gui::kNomeDesktop));
    QVERIFY(QFile::exists(QStringLiteral(CHECKORDL_DATI_PROVA "/../../pacchetto/") + gui::kNomeDesktop +
                          QStringLiteral(".desktop")));
  }

  // The glyphs stand in the cells the columns are counted in: a selection is drawn exactly over its text,
  // with no gap before it, however the screen places glyphs.
  void areaColonne() {
    gui::VistaProspetto vista;
    vista.resize(600, 100);
    QFont font(support::kFontProspetti);
    font.setPointSizeF(support::kPuntiProspetti);
    vista.setFont(font);
    vista.ImpostaTesto(std::string(60, 'M') + "\r\n");
    const QImage immagine = vista.viewport()->grab().toImage();
    const QRect ultima = vista.RettangoloDi(59), fine = vista.RettangoloDi(60);
    // The rightmost dot of ink: within the last cell, the one the columns put there.
    int destra = -1;
    const QColor fondo = immagine.pixelColor(immagine.width() - 1, ultima.center().y());
    for (int x = 0; x < immagine.width(); ++x)
      for (int y = ultima.top(); y <= ultima.bottom() && y < immagine.height(); ++y)
        if (immagine.pixelColor(x, y) != fondo) destra = std::max(destra, x);
    QVERIFY2(destra >= ultima.left() && destra < fine.left() + 1,
             qPrintable(QString("ink ends at %1, the 60th cell is %2..%3")
                            .arg(destra)
                            .arg(ultima.left())
                            .arg(fine.left())));
  }

  // A click lands on the character drawn there, a shift click extends from it, and Ctrl+C copies the bytes.
  void areaMouse() {
    gui::VistaProspetto vista;
    vista.resize(300, 200);
    vista.ImpostaTesto("uno\tdue\r\ntre\r\nquattro");
    const auto clic = [&](std::size_t pos, Qt::KeyboardModifiers m) {
      const QRect r = vista.RettangoloDi(pos);
      QTest::mouseClick(vista.viewport(), Qt::LeftButton, m, QPoint(r.left() + 1, r.center().y()));
    };
    clic(4, {});
    QCOMPARE(vista.SelInizio(), std::size_t{4});
    clic(17, Qt::ShiftModifier);
    QCOMPARE(vista.SelFine(), std::size_t{17});
    QTest::keyClick(&vista, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("due\r\ntre\r\nqua"));
  }

  void scatolaCritica() {
    QString titolo, testo;
    QMessageBox::Icon icona{};
    QMessageBox::StandardButtons pulsanti;
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

  // The cases of tests/data/finestre/avvio_e_cambia.txt, in order on one window.
  void avvioECambia() {
    Demo();
    FinestraProva core;
    formats::PrefRecord pref;
    collection::CercaInstallazioni(core.principale, pref);
    QVERIFY(!core.nomeTrle.testo.empty() && !core.dirOrdl.testo.empty());
    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    const auto casi =
        CasiCambia({{"Label_NomeTrle", core.nomeTrle.testo}, {"Label_DirORDL", core.dirOrdl.testo}});
    QVERIFY(!casi.empty());
    for (const auto& c : casi) {
      qInfo("%s", c.nome.c_str());
      QVERIFY(PreparaCaso(c));
      // The user walks to the folder in the picker's own widgets, then presses a button.
      banco.getDir = [&](gui::FinestraGetDir& f) {
        picker::ImpostaValori(f.Modello(), c.cartella);
        f.Aggiorna();
        QCOMPARE(f.Text_Path->text(), gui::DaByte(c.cartella));
        (c.ok ? f.OKButton : f.CancelButton)->click();
      };
      banco.messaggi.tutti.clear();
      if (!c.pulsante.empty()) {
        auto* pulsante = w.findChild<QPushButton*>(QString::fromLatin1(c.pulsante));
        QVERIFY2(pulsante, c.pulsante.c_str());
        pulsante->click();
      }
      QCOMPARE(banco.messaggi.tutti, c.messaggi);
      auto* etichetta = w.findChild<QLabel*>(QString::fromLatin1(c.etichetta));
      QVERIFY2(etichetta, c.etichetta.c_str());
      QCOMPARE(etichetta->text(), gui::DaByte(c.dopo));
    }
  }

  // Nothing cut off: the caption fits beside the title bar's buttons; a long folder loses its middle on
  // screen, never in what the operations read, and shows whole as a tooltip.
  void nienteTagliato() {
    Demo();
    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    QFont titolo = QApplication::font();
    titolo.setBold(true);
    QVERIFY(QFontMetrics(titolo).horizontalAdvance(w.windowTitle()) + 3 * 46 + 32 <= w.width());
    const std::string lunga = "C:\\Giochi\\" + std::string(80, 'x') + "\\Tomb Raider Level Editor\\Trle";
    w.Modello().Label_NomeTrle.ImpostaTesto(lunga);
    QCOMPARE(w.Modello().Label_NomeTrle.Testo(), lunga);
    QVERIFY(w.Label_NomeTrle->text().contains(QChar(0x2026)));
    QVERIFY(w.Label_NomeTrle->text().endsWith(QStringLiteral("\\Trle")));
    QCOMPARE(w.Label_NomeTrle->toolTip(), gui::DaByte(lunga));
    MessaggiProva msg;
    picker::Dialog_GetDir m{msg};
    picker::Carica(m);
    gui::FinestraGetDir f(nullptr, m);
    m.Text_Path = lunga;
    f.Aggiorna();
    QVERIFY(f.Text_Path->text().contains(QChar(0x2026)));
    QCOMPARE(f.Text_Path->toolTip(), gui::DaByte(lunga));
  }

  void pickerFinestra() {
    Demo();
    // A drive whose target is missing is listed but not ready.
    std::filesystem::create_directory_symlink("../assente", (prefisso_ + "/dosdevices/e:").toStdString());
    host::UsaPrefisso(prefisso_.toStdString());
    MessaggiProva msg;
    picker::Dialog_GetDir m{msg};
    picker::Carica(m);
    picker::ImpostaValori(m, "C:\\Giochi");
    gui::FinestraGetDir f(nullptr, m);
    QTreeWidgetItem* giochi = f.Dir1->currentItem();
    QCOMPARE(giochi->text(0), QStringLiteral("Giochi"));
    QCOMPARE(giochi->childCount(), 1);
    emit f.Dir1->itemActivated(giochi->child(0), 0);
    QCOMPARE(f.Text_Path->text(), QStringLiteral("C:\\Giochi\\Trle"));

    emit f.Drive1->activated(f.Drive1->findText(QStringLiteral("E:")));
    QCOMPARE(msg.tutti, std::vector<std::string>{"critical: Drive not ready"});
    QCOMPARE(f.Drive1->currentText(), QStringLiteral("C:"));
    QCOMPARE(f.Text_Path->text(), QStringLiteral("C:\\Giochi\\Trle"));

    emit f.Dir1->itemActivated(f.Dir1->topLevelItem(0), 0);
    f.Text_PathDir->setText(QStringLiteral("Nuova \u00e8"));
    f.Pul_NuovaCartella->click();
    QCOMPARE(f.Text_Path->text(), QStringLiteral("C:\\Nuova \u00e8"));
    QVERIFY(support::DirExists("C:\\Nuova \xe8"));
    f.OKButton->click();
    QCOMPARE(m.PathDir, std::string("C:\\Nuova \xe8"));
    QVERIFY(m.ExitValue && f.result() == QDialog::Accepted);
  }

  // Escape closes the picker as its frame does: nothing chosen, the start path kept. OK and Cancel stand in
  // one row.
  void pickerEscapeEPulsanti() {
    Demo();
    MessaggiProva msg;
    picker::Dialog_GetDir m{msg};
    picker::Carica(m);
    picker::ImpostaValori(m, "C:\\Giochi");
    gui::FinestraGetDir f(nullptr, m);
    QCOMPARE(f.OKButton->geometry().top(), f.CancelButton->geometry().top());
    QCOMPARE(f.OKButton->geometry().bottom(), f.CancelButton->geometry().bottom());
    f.show();
    emit f.Dir1->itemActivated(f.Dir1->currentItem()->child(0), 0);
    QTest::keyClick(f.Dir1, Qt::Key_Escape);
    QVERIFY(!f.isVisible() && f.result() == QDialog::Rejected);
    QVERIFY(!m.ExitValue);
    QCOMPARE(m.PathDir, std::string("C:\\Giochi"));
  }

  // A second program started while one runs opens a title bar's height down and right of the first, which
  // stays in the middle; once the first has gone, the middle is free again.
  void secondaNonSopraLaPrima() {
    Demo();
    QTemporaryDir posti;
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", posti.path().toLocal8Bit());
    Banco banco;
    auto prima = std::make_unique<gui::FinestraPrincipale>(banco.Servizi());
    prima->show();
    QRect centrata = prima->frameGeometry();
    centrata.moveCenter(prima->screen()->availableGeometry().center());
    QVERIFY((prima->pos() - centrata.topLeft()).manhattanLength() <= 2);
    gui::FinestraPrincipale seconda(banco.Servizi());
    seconda.show();
    const QPoint passo = seconda.pos() - prima->pos();
    QVERIFY(passo.x() > 0);
    QCOMPARE(passo.y(), passo.x());
    const QPoint centro = prima->pos();
    prima.reset();
    gui::FinestraPrincipale terza(banco.Servizi());
    terza.show();
    QCOMPARE(terza.pos(), centro);
    qputenv("XDG_RUNTIME_DIR", runtime);
  }

  void controlloCompleto() {
    Demo();
    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    w.show();
    // Clicks that arrive while the run scans find the window busy.
    bool apertaDurante = false;
    QString stato;
    QTimer::singleShot(0, [&] {
      for (QPushButton* p : {w.Pul_Annulla, w.Pul_CambiaTrle, w.Pul_EstraiDati, w.Pul_Start}) p->click();
      w.close();
      apertaDurante = w.isVisible();
      stato = w.Label_Info->text();
    });
    w.Pul_Start->click();
    QVERIFY(apertaDurante);
    QVERIFY(stato.startsWith(QStringLiteral("Parsing folder")));
    QVERIFY(w.Chiusa() && !w.isVisible());
    QCOMPARE(banco.messaggi.tutti.size(), std::size_t{1});
    QVERIFY(banco.messaggi.tutti[0].starts_with("plain: Scanning is complete\r\n"));
    QVERIFY(host::LunghezzaFile(collection::kNomeSnapshot, nullptr) > 0);
  }

  // Every report item in the window against what the core gives on the same snapshot.
  void leggiDatiOgniProspetto() {
    DemoControllata();
    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    banco.file.Annulla();
    w.Pul_EstraiDati->click();
    AnalisiProva atteso(host::CartellaProgramma());
    analysis::ImpostaValori(atteso.d, collection::kNomeSnapshot);
    int mostrata = 0;
    QString titolo;
    banco.analisi = [&](gui::FinestraAnalisi& f) {
      ++mostrata;
      titolo = f.windowTitle();
      QCOMPARE(f.Area().Testo(), atteso.area.Testo());
      for (int i = 0; i < analysis::kNumeroVoci; ++i) {
        analysis::EseguiVoce(atteso.d, static_cast<Voce>(i));
        f.Voce(static_cast<Voce>(i))->trigger();
        QCOMPARE(f.Area().Testo(), atteso.area.Testo());
        for (int j = 0; j < analysis::kNumeroVoci; ++j)
          QCOMPARE(f.Voce(static_cast<Voce>(j))->isChecked(), atteso.segni.Checked(static_cast<Voce>(j)));
      }
      QCOMPARE(banco.messaggi.tutti, atteso.messaggi.tutti);
      f.mnu_Esci->trigger();
      QVERIFY(!f.isVisible());
    };
    banco.file.Scegli(collection::kNomeSnapshot);
    w.Pul_EstraiDati->click();
    QCOMPARE(mostrata, 1);
    QCOMPARE(banco.file.filtro, std::string(analysis::kFiltroSnapshot));
    QCOMPARE(titolo, gui::DaByte(analysis::TitoloFinestra(atteso.d)));
    QVERIFY(!w.Chiusa());
  }

  // The findings: the same text as the headless tool gives for the same snapshot, the report marks cleared.
  void riepilogoComeLoStrumento() {
    DemoControllata();
    QVERIFY(cli::CreaElenchiDemo(host::CartellaProgramma()));
    Banco banco;
    gui::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti);
    analysis::ImpostaValori(f.Modello(), collection::kNomeSnapshot);
    f.Voce(Voce::mnu_ShowPref)->trigger();
    f.mnu_RiepilogoProblemi->trigger();
    const std::string altrove = host::CartellaProgramma() + "\\Altrove";
    QVERIFY(support::CreaCartella(altrove));
    const std::string strumento = analysis::TestoRiepilogo(analysis::ApriEVerifica(
        collection::kNomeSnapshot, altrove, host::CartellaProgramma(), support::SeparatoreDecimale()));
    QCOMPARE(f.Area().Testo(), strumento);
    for (int i = 0; i < analysis::kNumeroVoci; ++i) QVERIFY(!f.Voce(static_cast<Voce>(i))->isChecked());
    QVERIFY(banco.messaggi.tutti.empty());

    // The anonymized copy: written where the dialog says, the message with its count, the text unchanged.
    const std::string copia = host::CartellaProgramma() + "\\copia.bin";
    banco.file.Scegli(copia);
    f.mnu_SalvaCopiaAnonima->trigger();
    QCOMPARE(banco.file.titolo, std::string(analysis::kTitoloCopiaAnonima));
    QCOMPARE(banco.file.mostrati.back(), std::string("save"));
    analysis::CopiaAnonima atteso;
    QCOMPARE(analysis::SalvaCopiaAnonima({collection::kNomeSnapshot, copia + ".x"}, atteso), std::string());
    QCOMPARE(support::LeggiFile(copia), support::LeggiFile(copia + ".x"));
    QCOMPARE(banco.messaggi.tutti,
             std::vector<std::string>{"plain: " + analysis::TestoCopiaAnonima(atteso, copia)});
    QCOMPARE(f.Area().Testo(), strumento);
  }

  // The comparison with a second snapshot: the supporter opens the newer one and picks the earlier, which
  // the dialog asks for; the model's text in that direction, the marks cleared, Dati left as it was.
  void confrontoConUnAltroSnapshot() {
    Demo();
    support::DidascaliaMuta label;
    support::BarraMuta barra;
    const std::vector<std::string> membri = {"C:\\Giochi\\Trle\\ordeio.txt", "C:\\Giochi\\Trle\\script.dat"};
    QVERIFY(collection::SalvaSnapshot("C:\\vecchio.bin", membri, 2, label, barra));
    QVERIFY(cli::CambiaMacchinaDemo());
    QVERIFY(collection::SalvaSnapshot("C:\\nuovo.bin", membri, 2, label, barra));

    Banco banco;
    gui::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti);
    analysis::ImpostaValori(f.Modello(), "C:\\nuovo.bin");
    f.Voce(Voce::mnu_ShowOrdelioTxt)->trigger();
    const std::string ordeio = f.Area().Testo();
    banco.file.Scegli("C:\\vecchio.bin");
    f.mnu_Confronta->trigger();
    QCOMPARE(banco.file.titolo, std::string(analysis::kTitoloConfronto));
    std::int32_t copie = -1;
    support::ElencaFile(f.Modello().CartellaProgramma + "\\Confronto", "*", copie);
    QCOMPARE(copie, 0);  // no copy of the other snapshot is kept

    analysis::SnapshotAperto vecchio;
    QVERIFY(analysis::ApriSnapshot("C:\\vecchio.bin", "C:\\Atteso", vecchio, banco.messaggi));
    const std::string atteso = analysis::TestoConfronto(analysis::ConfrontaSnapshot(
        vecchio, {f.Modello().CartellaDati, f.Modello().Contenuto, "C:\\nuovo.bin"}, banco.messaggi));
    QCOMPARE(f.Area().Testo(), atteso);
    QVERIFY(atteso.starts_with("Old snapshot: C:\\vecchio.bin\r\nNew snapshot: C:\\nuovo.bin\r\n"));
    QVERIFY(!f.Voce(Voce::mnu_ShowOrdelioTxt)->isChecked());
    f.Voce(Voce::mnu_ShowOrdelioTxt)->trigger();
    QCOMPARE(f.Area().Testo(), ordeio);
    QCOMPARE(banco.messaggi.tutti.size(), std::size_t{1});  // the header report: no infofile.bin was packed
  }

  // The buttons and menu items reach their handlers; the handlers' own cases are the core's tests.
  void ricercaCopiaSalvaCarica() {
    Demo();
    Banco banco;
    gui::FinestraPrincipale w(banco.Servizi());
    gui::FinestraAnalisi f(&w, banco.messaggi, banco.file, banco.appunti);
    const std::string testo("tomb\r\nTOMB4.exe \n\0caf\xe9", 22);
    f.Area().ImpostaTesto(testo);
    QTest::keyClicks(f.Text_Cerca, QStringLiteral("TOMB"));
    f.Pul_Trova->click();
    f.Pul_Dopo->click();
    QCOMPARE(f.Area().SelText(), std::string("TOMB4.exe"));
    f.Pul_Prima->click();
    QCOMPARE(f.Area().SelText(), std::string("tomb"));
    f.mnu_Copia->trigger();
    QCOMPARE(banco.appunti.testo, std::optional<std::string>("tomb"));
    gui::AppuntiQt().ImpostaTesto("caf\xe9");
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("caf\u00e9"));

    banco.file.Scegli("C:\\prospetto.txt");
    f.mnu_SalvaFile->trigger();
    QCOMPARE(support::LeggiFile("C:\\prospetto.txt"), testo);
    f.Area().ImpostaTesto("altro");
    banco.file.Scegli("C:\\prospetto.txt");
    f.mnu_CaricaFile->trigger();
    QCOMPARE(f.Area().Testo(), testo);
    QVERIFY(banco.messaggi.tutti.empty());

    // A save that cannot be written says so, naming the file.
    banco.file.Scegli("C:\\Manca\\prospetto.txt");
    f.mnu_SalvaFile->trigger();
    QCOMPARE(banco.messaggi.tutti.size(), std::size_t{1});
    QVERIFY(banco.messaggi.tutti[0].starts_with("critical: Could not write C:\\Manca\\prospetto.txt: "));
  }

  // A file that is not a snapshot: its one finding says so, as the headless tool's does.
  void riepilogoSnapshotIlleggibile() {
    Demo();
    QVERIFY(support::ScriviFileTesto("C:\\rotto.bin", std::string(40, 'x')));
    Banco banco;
    gui::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti);
    analysis::ImpostaValori(f.Modello(), "C:\\rotto.bin");
    QCOMPARE(banco.messaggi.tutti, std::vector<std::string>{"plain: Errrore estraendo file"});
    f.mnu_RiepilogoProblemi->trigger();
    QVERIFY(f.Area().Testo().starts_with("Findings: 1 fail, 0 warn, 0 pass\r\nFAIL  snapshot.unreadable"));
  }

  // A found word's line stands in the middle of the area, not on its last line.
  void trovatoAlCentro() {
    Banco banco;
    gui::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti);
    f.show();
    std::string testo;
    for (int i = 0; i < 1000; ++i) testo += "riga x" + std::to_string(i) + "\r\n";
    f.Area().ImpostaTesto(testo);
    QTest::keyClicks(f.Text_Cerca, QStringLiteral("x600"));
    f.Pul_Trova->click();
    QCOMPARE(f.Area().SelText(), std::string("x600"));
    const int riga = f.Text_Out->fontMetrics().lineSpacing();
    const QRect trovato = f.Text_Out->RettangoloDi(static_cast<std::size_t>(f.Area().SelStart()));
    QVERIFY(std::abs(trovato.center().y() - f.Text_Out->viewport()->height() / 2) <= riga);
  }

  // The snapshot dialogs' filters, each matched as the platform's dialog matched it: without regard to case,
  // "*.*" taking any name.
  void filtriSenzaCaso() {
    const QStringList filtri = gui::FiltriQt(analysis::kFiltroSnapshot);
    QCOMPARE(filtri.size(), 3);
    const struct {
      const char* descrizione;
      std::vector<const char*> si, no;
    } attesi[] = {
        {"File Info_Ordl.bin (", {"INFO_ORDL.BIN", "info_ordl.bin"}, {"INFO_ORDL.BAK", "x-info_ordl.bin"}},
        {"Snapshot (*.bin) (", {"INFO_ORDL-anonymous.BIN", "08.bin"}, {"08.bin.txt"}},
        {"All files (*.*) (", {"LEGGIMI", "a.b"}, {}}};
    for (int i = 0; i < 3; ++i) {
      const auto& a = attesi[i];
      QVERIFY(filtri[i].startsWith(QLatin1String(a.descrizione)));
      // The masks are in the last parentheses, where the dialog looks for them.
      const QString maschera = filtri[i].section('(', -1).chopped(1);
      const QRegularExpression re(QRegularExpression::wildcardToRegularExpression(maschera));
      for (const char* n : a.si) QVERIFY2(re.match(QLatin1String(n)).hasMatch(), n);
      for (const char* n : a.no) QVERIFY2(!re.match(QLatin1String(n)).hasMatch(), n);
    }
  }
  // ---- The anonymized copy through the real file dialog ----
  // A snapshot in a host folder, outside the machine: the dialog proposes the copy beside it in its Windows
  // form ("Z:\..."), and both the copy and the key, accepted as offered, are written where they were offered.
  void copiaAnonimaComeProposta() {
    DemoControllata();
    const QString inbox = cartella_.path() + QStringLiteral("/inbox");
    QVERIFY(QDir().mkpath(inbox));
    const std::string snapshot = gui::PercorsoWindows(inbox + QStringLiteral("/08-user-jose.bin"));
    QVERIFY(support::ScriviFileIntero(snapshot, {support::LeggiFile(collection::kNomeSnapshot)}));
    MessaggiProva messaggi;
    messaggi.si = {true, true};
    gui::DialogoFileQt file;
    AppuntiProva appunti;
    gui::FinestraAnalisi f(nullptr, messaggi, file, appunti);
    analysis::ImpostaValori(f.Modello(), snapshot);
    QStringList cartelle, nomi;
    QTimer accetta;
    connect(&accetta, &QTimer::timeout, [&] {
      auto* d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (!d) return;
      cartelle << d->directory().absolutePath();
      nomi << d->selectedFiles().value(0);
      static_cast<QDialog*>(d)->accept();
    });
    accetta.start(20);
    f.mnu_SalvaCopiaAnonima->trigger();
    accetta.stop();
    const QString copia = inbox + QStringLiteral("/08-user-jose-anonymous.bin");
    QCOMPARE(cartelle, QStringList({inbox, inbox}));
    QCOMPARE(nomi, QStringList({copia, inbox + QStringLiteral("/08-user-jose-anonymous-key.txt")}));
    QVERIFY(QFile::exists(copia) && QFile::exists(nomi.value(1)));
    QVERIFY(messaggi.tutti.back().starts_with("plain: The anonymized copy is saved as " +
                                              gui::PercorsoWindows(copia)));
  }

  // The question's box: Yes and No, No the default, and Yes read back as Yes.
  void scatolaDomanda() {
    QMessageBox::StandardButtons pulsanti;
    QMessageBox::StandardButton predefinito{};
    QTimer::singleShot(0, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      QVERIFY(box);
      pulsanti = box->standardButtons();
      predefinito = box->standardButton(box->defaultButton());
      box->button(QMessageBox::Yes)->click();
    });
    QVERIFY(gui::MessaggiQt().Domanda(analysis::kDomandaAutori));
    QCOMPARE(pulsanti, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(predefinito, QMessageBox::No);
  }
  // ---- end of the anonymized copy ----

  // --- The answer for the user ("Copia risposta") ---
  // Nothing open: the critical message of the other items that need a snapshot. Then the tool's plain answer
  // of the same snapshot on the system clipboard, a word that it is there, and the report area unchanged.
  void copiaRisposta() {
    DemoControllata();
    QVERIFY(cli::CreaElenchiDemo(host::CartellaProgramma()));
    Banco banco;
    gui::AppuntiQt appunti;
    gui::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, appunti);
    QAction* copia = f.findChild<QAction*>(QStringLiteral("mnu_CopiaRisposta"));
    QVERIFY(copia);
    copia->trigger();
    QCOMPARE(banco.messaggi.tutti,
             std::vector<std::string>{std::string("critical: ") + analysis::kNessunoSnapshot});
    analysis::ImpostaValori(f.Modello(), collection::kNomeSnapshot);
    const std::string area = f.Area().Testo();
    banco.messaggi.tutti.clear();
    copia->trigger();
    const std::string altrove = host::CartellaProgramma() + "\\Altrove";
    QVERIFY(support::CreaCartella(altrove));
    const std::string atteso = analysis::TestoRisposta(
        analysis::ApriEVerifica(collection::kNomeSnapshot, altrove, host::CartellaProgramma(),
                                support::SeparatoreDecimale()),
        collection::kNomeSnapshot, analysis::FormaRisposta::testo);
    QVERIFY(atteso.find("Problem: ") != std::string::npos);
    QCOMPARE(QApplication::clipboard()->text(), gui::DaByte(atteso));
    QCOMPARE(banco.messaggi.tutti,
             std::vector<std::string>{std::string("plain: ") + analysis::kRispostaCopiata});
    QCOMPARE(f.Area().Testo(), area);
  }
  // --- end of the answer for the user ---

  // ---- The whole snapshot as one text ("Salva tutto in un file di testo...") ----
  // The file holds the text the tool writes for the same snapshot, in the locale's encoding with LF; the
  // report area and its marks stay as they were; a file that cannot be written is named in a critical
  // message.
  void salvaTuttoComeLoStrumento() {
    DemoControllata();
    Banco banco;
    gui::FinestraAnalisi f(nullptr, banco.messaggi, banco.file, banco.appunti);
    analysis::ImpostaValori(f.Modello(), collection::kNomeSnapshot);
    f.Voce(Voce::mnu_ShowPref)->trigger();
    const std::string area = f.Area().Testo();
    const std::string nome = host::CartellaProgramma() + "\\tutto.txt";
    banco.file.Scegli(nome);
    auto* salva = f.findChild<QAction*>(QStringLiteral("mnu_SalvaTutto"));
    QVERIFY(salva);
    salva->trigger();
    QCOMPARE(banco.file.NomeFile(), nome);
    QVERIFY(banco.messaggi.tutti.empty());
    AnalisiProva strumento(host::CartellaProgramma());
    analysis::ImpostaValori(strumento.d, collection::kNomeSnapshot);
    const std::string testo = support::LeggiFile(nome);
    QCOMPARE(testo, support::TestoLocale(analysis::TestoCompleto(strumento.d)));
    QVERIFY(testo.find("\r\n") == std::string::npos);
    QCOMPARE(f.Area().Testo(), area);
    QVERIFY(f.Voce(Voce::mnu_ShowPref)->isChecked());

    const std::string manca = host::CartellaProgramma() + "\\manca\\tutto.txt";
    banco.file.Scegli(manca);
    salva->trigger();
    QCOMPARE(banco.messaggi.tutti,
             std::vector<std::string>{"critical: Could not write " + manca + ": the folder does not exist"});
  }
  // ---- end of the whole snapshot as one text ----
};

QTEST_MAIN(ProvaFinestre)
#include "finestre_test.moc"
