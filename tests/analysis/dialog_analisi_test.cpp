// The analysis window without a toolkit: opening a snapshot, the items whose file is missing, the search's
// positions, and saving and loading the report area.
#include "analysis/dialog_analisi.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "analysis/prospetto_ambiente.h"
#include "analysis/regole.h"
#include "analysis/riepilogo.h"
#include "collection/snapshot.h"
#include "finestra_prova.h"
#include "formats/info_header.h"
#include "macchina_prova.h"

namespace {

using analysis::Voce;
using V = std::vector<std::string>;
using Voci = std::vector<Voce>;

// C:\snap.bin, with an info header alone; the program folder C:\Prog holds an old Dati.
void SoloHeader(const MacchinaProva& m, std::int32_t flag) {
  std::filesystem::create_directories(m.C("Prog/Dati/sub"));
  MacchinaProva::ScriviHost(m.C("Prog/Dati/vecchio.el"), "x");
  MacchinaProva::ScriviHost(m.C("Prog/Dati/sub/resta.txt"), "x");
  formats::InfoHeader h;
  h.FlagErrori = flag;
  MacchinaProva::ScriviHost(m.C("Infofile.bin"), formats::CodificaInfoHeader(h));
  support::DidascaliaMuta info;
  support::BarraMuta barra;
  ASSERT_TRUE(collection::SalvaSnapshot("C:\\snap.bin", {"C:\\Infofile.bin"}, 1, info, barra));
}

TEST(DialogAnalisi, ApreLoSnapshotESostituisceDati) {
  MacchinaProva m;
  SoloHeader(m, 3);
  AnalisiProva a;
  analysis::ImpostaValori(a.d, "C:\\snap.bin");
  EXPECT_TRUE(a.messaggi.tutti.empty());
  // Files go, folders stay.
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("Prog/Dati/vecchio.el")));
  EXPECT_TRUE(MacchinaProva::EsisteHost(m.C("Prog/Dati/sub/resta.txt")));
  EXPECT_TRUE(a.area.Testo().starts_with("Flag errori: [Manca archivio.qlv] [Manca ordelio.prf] \r\n"));
  EXPECT_EQ(a.Segnate(), Voci{Voce::mnu_ShowInfoHeader});
  EXPECT_EQ(a.d.InfoHeader.FlagErrori, 3);

  // A snapshot that cannot be read: the message, the initial text, no mark; Dati was emptied, and the
  // header record stays as it was.
  AnalisiProva b;
  analysis::ImpostaValori(b.d, "C:\\nessuno.bin");
  EXPECT_EQ(b.messaggi.tutti, V{"plain: Errrore estraendo file"});
  EXPECT_EQ(b.area.Testo(), "RichTextBox1");
  EXPECT_TRUE(b.Segnate().empty());
  analysis::mnu_ShowInfoHeader_Click(b.d);
  EXPECT_EQ(b.messaggi.tutti.back(), "critical: Non trovo file: C:\\Prog\\Dati\\infofile.bin");
  EXPECT_EQ(b.Segnate(), Voci{Voce::mnu_ShowInfoHeader});
  EXPECT_EQ(b.d.InfoHeader, formats::InfoHeader{});
}

// A snapshot that could not be unpacked (missing, or no snapshot) has the tool's one finding, with the
// same reason, in "Riepilogo problemi": its members are not missing one by one.
TEST(DialogAnalisi, RiepilogoDiUnoSnapshotIlleggibile) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("rotto.bin"), "not a snapshot");
  for (const char* cartella : {"Apart", "Prog"}) std::filesystem::create_directories(m.C(cartella));
  for (const char* snapshot : {"C:\\nessuno.bin", "C:\\rotto.bin"}) {
    SCOPED_TRACE(snapshot);
    AnalisiProva a;
    analysis::ImpostaValori(a.d, snapshot);
    analysis::mnu_RiepilogoProblemi_Click(a.d);
    const std::string testo = a.area.Testo();
    EXPECT_TRUE(testo.starts_with("Findings: 1 fail, 0 warn, 0 pass\r\nFAIL  snapshot.unreadable")) << testo;
    EXPECT_EQ(testo,
              analysis::TestoRiepilogo(analysis::ApriEVerifica(snapshot, "C:\\Apart", "C:\\Prog", '.')));
  }
}

// The anonymized copy from the window: nothing open, a cancel, the copy with its proposed name, and an open
// snapshot that was changed on the disk meanwhile, which would give someone else's copy.
TEST(DialogAnalisi, CopiaAnonima) {
  MacchinaProva m;
  SoloHeader(m, 0);
  AnalisiProva vuota;
  analysis::mnu_SalvaCopiaAnonima_Click(vuota.d);
  EXPECT_EQ(vuota.messaggi.tutti, V{"critical: No snapshot is open: open one with \"Leggi Dati\" first"});
  EXPECT_TRUE(vuota.dialogo.mostrati.empty());

  AnalisiProva a;
  analysis::ImpostaValori(a.d, "C:\\snap.bin");
  const std::string testo = a.area.Testo();
  a.dialogo.Annulla();
  analysis::mnu_SalvaCopiaAnonima_Click(a.d);
  EXPECT_EQ(a.dialogo.mostrati, V{"save"});
  a.dialogo.Scegli("C:\\copia.bin");
  analysis::mnu_SalvaCopiaAnonima_Click(a.d);
  EXPECT_EQ(a.dialogo.NomeFile(), "C:\\copia.bin");
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("copia.bin")), MacchinaProva::LeggiHost(m.C("snap.bin")));
  EXPECT_EQ(a.messaggi.tutti,
            V{"plain: The anonymized copy is saved as C:\\copia.bin.\r\nNo account name was found "
              "in its paths: it holds what the snapshot holds."});
  EXPECT_EQ(a.area.Testo(), testo);
  EXPECT_EQ(a.Segnate(), Voci{Voce::mnu_ShowInfoHeader});

  support::DidascaliaMuta info;
  support::BarraMuta barra;
  ASSERT_TRUE(
      collection::SalvaSnapshot("C:\\snap.bin", {"C:\\Infofile.bin", "C:\\copia.bin"}, 2, info, barra));
  a.dialogo.Scegli("C:\\altra.bin");
  analysis::mnu_SalvaCopiaAnonima_Click(a.d);
  EXPECT_EQ(a.messaggi.tutti.back(),
            "critical: The snapshot C:\\snap.bin has changed since it was opened: open it again");
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("altra.bin")));
}

// Each menu item on a snapshot without its file: what it says, which marks stand afterwards, and that the
// report area keeps its text. With their files, the items are the report texts' own test.
TEST(DialogAnalisi, OgniVoceSenzaIlSuoFile) {
  const std::string manca = "critical: Non trovo file: C:\\Prog\\Dati\\";
  const std::string salvato = "critical: Non e' stato salvato il file ";
  const Voci header{Voce::mnu_ShowInfoHeader};
  const struct {
    Voce voce;
    std::string messaggio;
    Voci segni;
  } casi[] = {
      {Voce::mnu_ShowPref, manca + "ordelio.prf", {Voce::mnu_ShowPref}},
      {Voce::mnu_ShowArchivioQlv, salvato + "archivio.qlv", header},
      {Voce::mnu_ShowORDL_Dir, manca + "ordl.el", {Voce::mnu_ShowORDL_Dir}},
      {Voce::mnu_ShowTRLE_Dir, manca + "trle.el", {Voce::mnu_ShowTRLE_Dir}},
      {Voce::mnu_ShowArchivioDir, manca + "dirarc.el", {Voce::mnu_ShowArchivioDir}},
      {Voce::mnu_ShowOrdelioTxt, salvato + "Ordeio.txt", header},
      {Voce::mnu_ShowScriptDat, salvato + "Script.dat", header},
      {Voce::mnu_AnalisiBackup,
       "critical: Non trovo la cartella dove e' installato ordelio su questo computer", header},
      {Voce::mnu_ShowAmbiente, std::string("critical: ") + analysis::kAmbienteAssente, header},
  };
  MacchinaProva m;
  SoloHeader(m, 0);
  for (const auto& c : casi) {
    AnalisiProva a;
    analysis::ImpostaValori(a.d, "C:\\snap.bin");
    const std::string prima = a.area.Testo();
    analysis::EseguiVoce(a.d, c.voce);
    EXPECT_EQ(a.messaggi.tutti, V{c.messaggio});
    EXPECT_EQ(a.Segnate(), c.segni) << c.messaggio;
    EXPECT_EQ(a.area.Testo(), prima) << c.messaggio;
  }
}

TEST(DialogAnalisi, TrovaTesto) {
  const auto trova = analysis::Pul_Trova_Click, dopo = analysis::Pul_Dopo_Click,
             prima = analysis::Pul_Prima_Click;
  const struct {
    const char* cosa;
    long selezione;
    std::string cerca;
    void (*pulsante)(analysis::Dialog_Analisi&);
    bool trovato;
    long inizio, lunghezza;  // the selection afterwards
  } casi[] = {
      {"the word from the occurrence on", 0, "tomb", trova, true, 4, 9},
      {"the word's end, whatever the search text", 0, "4.exe", trova, true, 8, 5},
      {"next, past CR LF, ignoring case", 4, "TOMB", dopo, true, 20, 4},
      {"next never sees the first character", 0, "abc", dopo, false, 0, 0},
      {"find always starts from the top", 20, "abc", trova, true, 0, 3},
      {"back to an occurrence before the selection", 20, "tomb", prima, true, 4, 9},
      {"back: one ending right before the selection", 8, "tomb", prima, true, 4, 9},
      {"back: not one overlapping the selection", 7, "tomb", prima, false, 7, 0},
      {"next from the last character does not look", 32, "o", dopo, false, 32, 0},
      {"back from the first character does not look", 0, "", prima, false, 0, 0},
      {"empty search found where the search starts", 0, "", trova, true, 0, 3},
      {"empty search, next", 4, "", dopo, true, 5, 8},
      {"empty search, back", 5, "", prima, true, 4, 9},
      {"the last word runs to the end of the text", 0, "fo", trova, true, 30, 3},
      {"a colon ends the word", 0, "XYZ", trova, true, 15, 3},
      {"an occurrence that begins with a blank selects nothing", 0, " tomb", trova, true, 3, 0},
      {"not found", 4, "zzz", dopo, false, 4, 0},
  };
  for (const auto& c : casi) {
    AnalisiProva a;
    // Index:             0123456789012 3 4567890123456789 0 123
    a.area.ImpostaTesto("abc tomb4.exe\r\nxyz: Tomb end\r\nfoo");
    a.area.Seleziona(c.selezione, 0);
    a.cerca.ImpostaTesto(c.cerca);
    c.pulsante(a.d);
    EXPECT_EQ(a.messaggi.tutti, c.trovato ? V{} : V{"plain: Non trovato"}) << c.cosa;
    EXPECT_EQ(a.area.SelStart(), c.inizio) << c.cosa;
    EXPECT_EQ(a.area.SelLength(), c.lunghezza) << c.cosa;
  }
}

// Both snapshot dialogs: every snapshot name and any file, opening beside the open snapshot, else where the
// last one opened in a window was, else where they always did; the title names the open snapshot.
TEST(DialogAnalisi, DialoghiDelloSnapshot) {
  MacchinaProva m;
  SoloHeader(m, 0);
  std::filesystem::create_directories(m.C("Inbox"));
  std::filesystem::copy_file(m.C("snap.bin"), m.C("Inbox/snap.bin"));
  const std::string filtro = "File Info_Ordl.bin|info_ordl.bin|Snapshot (*.bin)|*.bin|All files (*.*)|*.*";
  const std::string ricordo = m.C("Prog/ultima_cartella.txt");
  FinestraProva f;
  f.principale.CartellaProgramma = "C:\\Prog";
  AnalisiProva a;
  std::string nome;
  // Nothing remembered, or nothing usable: the first folder as before.
  for (const std::string& testo : V{"", "C:\\Manca\r\n", "Inbox\r\n", std::string("C:\\Inbox\0x", 10)}) {
    if (!testo.empty()) MacchinaProva::ScriviHost(ricordo, testo);
    a.dialogo.Annulla();
    EXPECT_FALSE(analysis::Pul_EstraiDati_Click(f.principale, a.dialogo, nome));
    EXPECT_EQ(a.dialogo.cartella, "c:\\") << testo;
    EXPECT_EQ(a.dialogo.filtro, filtro);
    EXPECT_EQ(a.dialogo.titolo, "Carica file info_ordl.bin");
  }
  EXPECT_EQ(analysis::TitoloFinestra(a.d), " Analisi dati info ordl");

  // A snapshot that could not be opened is not remembered; one that was is, and the next dialog opens there.
  AnalisiProva b;
  ASSERT_TRUE(analysis::ApriFinestra(b.d, "C:\\Inbox\\nessuno.bin"));
  EXPECT_EQ(MacchinaProva::LeggiHost(ricordo), std::string("C:\\Inbox\0x", 10));
  ASSERT_TRUE(analysis::ApriFinestra(a.d, "C:\\Inbox\\snap.bin"));
  EXPECT_EQ(MacchinaProva::LeggiHost(ricordo), "C:\\Inbox\r\n");
  EXPECT_EQ(analysis::TitoloFinestra(a.d), " Analisi dati info ordl - snap.bin");
  a.dialogo.Annulla();
  EXPECT_FALSE(analysis::Pul_EstraiDati_Click(f.principale, a.dialogo, nome));
  EXPECT_EQ(a.dialogo.cartella, "C:\\Inbox");

  // The comparison's dialog opens beside the open snapshot, whatever is remembered; a root keeps its "\".
  MacchinaProva::ScriviHost(ricordo, "C:\\Prog\r\n");
  for (const auto& [aperto, cartella] :
       {std::pair{"C:\\Inbox\\snap.bin", "C:\\Inbox"}, std::pair{"C:\\snap.bin", "C:\\"}}) {
    AnalisiProva c;
    ASSERT_TRUE(analysis::ApriFinestra(c.d, aperto));
    c.dialogo.Annulla();
    analysis::mnu_Confronta_Click(c.d);
    EXPECT_EQ(c.dialogo.cartella, cartella);
    EXPECT_EQ(c.dialogo.filtro, filtro);
    EXPECT_EQ(c.dialogo.titolo, analysis::kTitoloConfronto);
  }
}

// Saving and loading the report area; copying is held in the window's own test.
TEST(DialogAnalisi, SalvaCarica) {
  MacchinaProva m;
  AnalisiProva a;
  const std::string testo = std::string("riga\r\nbare\nnul\0qui\r\n", 21);
  a.area.ImpostaTesto(testo);

  // The snapshot's dialog set the start folder; the report dialogs leave it.
  std::string nome;
  a.dialogo.Scegli("C:\\snap.bin");
  ASSERT_TRUE(analysis::ScegliSnapshot(a.dialogo, nome, analysis::kCartellaSnapshot));
  EXPECT_EQ(nome, "C:\\snap.bin");

  a.dialogo.Annulla();
  analysis::mnu_SalvaFile_Click(a.d);
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("out.txt")));
  a.dialogo.Scegli("C:\\out.txt");
  analysis::mnu_SalvaFile_Click(a.d);
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("out.txt")), testo);
  EXPECT_EQ(a.dialogo.cartella, "c:\\");

  EXPECT_TRUE(a.messaggi.tutti.empty());
  // A file that cannot be written is named, with why.
  std::filesystem::create_directories(m.C("cartella"));
  for (const auto& [nome, motivo] : {std::pair{"C:\\manca\\out.txt", "the folder does not exist"},
                                     std::pair{"C:\\cartella", "access denied"}}) {
    a.dialogo.Scegli(nome);
    analysis::mnu_SalvaFile_Click(a.d);
    EXPECT_EQ(a.messaggi.tutti.back(), std::string("critical: Could not write ") + nome + ": " + motivo);
  }
  a.messaggi.tutti.clear();

  a.segni.SetChecked(Voce::mnu_ShowPref, true);
  a.area.ImpostaTesto("altro");
  a.dialogo.Annulla();
  analysis::mnu_CaricaFile_Click(a.d);
  EXPECT_EQ(a.area.Testo(), "altro");
  a.dialogo.Scegli("C:\\out.txt");
  analysis::mnu_CaricaFile_Click(a.d);
  EXPECT_EQ(a.area.Testo(), testo);
  EXPECT_EQ(a.Segnate(), Voci{Voce::mnu_ShowPref});
  // A file that cannot be read empties the area without a word.
  a.dialogo.Scegli("C:\\manca.txt");
  analysis::mnu_CaricaFile_Click(a.d);
  EXPECT_EQ(a.area.Testo(), "");
  EXPECT_EQ(a.dialogo.mostrati, (V{"open", "save", "save", "save", "save", "open", "open", "open"}));
  EXPECT_TRUE(a.messaggi.tutti.empty());
}

}  // namespace

#ifndef _WIN32
// A rule's finding in "Riepilogo problemi": the same text as the tool's findings, its file named under it,
// and the same in the JSON. The rules in force are read once a process, so the rule is planted in the user's
// data folder before anything reads them; a run of the whole suite in one process may have read them already.
TEST(DialogAnalisi, RiepilogoConUnaRegola) {
  MacchinaProva m;
  const char* prima = std::getenv("XDG_DATA_HOME");
  const std::string vecchio = prima ? prima : "";
  ::setenv("XDG_DATA_HOME", m.C("Utente").c_str(), 1);
  MacchinaProva::ScriviHost(
      m.C("Utente/checkordl/regole_locali/prova.json"),
      R"({"format": 1, "rules": [{"id": "prova.finestra", "outcomes": [{"severity": "warn",
          "when": {"field": "header.StartFolderTrle", "value": "C:\\Regola\\Prova"},
          "title": "Planted for the window: {value}", "action": "None."}]}]})");
  const bool letta = !analysis::RegoleDelProgramma().regole.empty() &&
                     analysis::RegoleDelProgramma().regole.back().id == "prova.finestra";
  prima ? ::setenv("XDG_DATA_HOME", vecchio.c_str(), 1) : ::unsetenv("XDG_DATA_HOME");
  if (!letta) GTEST_SKIP() << "the rules in force were read before this test";

  std::filesystem::create_directories(m.C("Prog/Dati"));
  formats::InfoHeader h;
  h.StartFolderTrle.Assegna("C:\\Regola\\Prova");
  MacchinaProva::ScriviHost(m.C("Infofile.bin"), formats::CodificaInfoHeader(h));
  support::DidascaliaMuta info;
  support::BarraMuta barra;
  ASSERT_TRUE(collection::SalvaSnapshot("C:\\snap.bin", {"C:\\Infofile.bin"}, 1, info, barra));
  AnalisiProva a;
  analysis::ImpostaValori(a.d, "C:\\snap.bin");
  analysis::mnu_RiepilogoProblemi_Click(a.d);
  const std::string testo = a.area.Testo();
  std::string atteso = "WARN  prova.finestra             Planted for the window: C:\\Regola\\Prova\r\n";
  atteso.append(33, ' ').append("rule: regole_locali\\prova.json\r\n");
  EXPECT_NE(testo.find(atteso), std::string::npos) << testo;

  std::filesystem::create_directories(m.C("Apart"));
  EXPECT_TRUE(a.messaggi.tutti.empty());
  const analysis::RiepilogoSnapshot r = analysis::ApriEVerifica("C:\\snap.bin", "C:\\Apart", "C:\\Prog", '.');
  EXPECT_EQ(analysis::TestoRiepilogo(r), testo);
  EXPECT_NE(analysis::JsonRiepilogo("snap.bin", r)
                .find(R"("action":"None.","answer":"None.","rule":"regole_locali\\prova.json")"),
            std::string::npos);
}
#endif
