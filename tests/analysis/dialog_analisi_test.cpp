// The analysis window without a toolkit: opening a snapshot, the items whose file is missing, the search's
// positions, and saving and loading the report area.
#include "analysis/dialog_analisi.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "collection/snapshot.h"
#include "finestra_prova.h"
#include "formats/info_header.h"
#include "macchina_prova.h"

namespace {

using analysis::Voce;
using V = std::vector<std::string>;
using Voci = std::vector<Voce>;

// Packs these files (written below C:\src under the given names) into C:\snap.bin.
void Snapshot(const MacchinaProva& m, const std::vector<std::pair<std::string, std::string>>& membri) {
  std::filesystem::create_directories(m.C("src"));
  V percorsi;
  for (const auto& [nome, byte] : membri) {
    MacchinaProva::ScriviHost(m.C("src/" + nome), byte);
    percorsi.push_back("C:\\src\\" + nome);
  }
  support::DidascaliaMuta info;
  support::BarraMuta barra;
  ASSERT_TRUE(collection::SalvaSnapshot("C:\\snap.bin", percorsi, static_cast<std::int32_t>(percorsi.size()),
                                        info, barra));
}

std::string Header(std::int32_t flag) {
  formats::InfoHeader h;
  h.FlagErrori = flag;
  return formats::CodificaInfoHeader(h);
}

TEST(DialogAnalisi, ApreLoSnapshotESostituisceDati) {
  MacchinaProva m;
  std::filesystem::create_directories(m.C("Prog/Dati/sub"));
  MacchinaProva::ScriviHost(m.C("Prog/Dati/vecchio.el"), "x");
  MacchinaProva::ScriviHost(m.C("Prog/Dati/sub/resta.txt"), "x");
  Snapshot(m, {{"Infofile.bin", Header(formats::kMancaOrdelioPrf | formats::kMancaArchivioQlv)}});

  AnalisiProva a;
  analysis::ImpostaValori(a.d, "C:\\snap.bin");
  EXPECT_TRUE(a.messaggi.tutti.empty());
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("Prog/Dati/vecchio.el")));
  EXPECT_TRUE(MacchinaProva::EsisteHost(m.C("Prog/Dati/sub/resta.txt")));
  EXPECT_EQ(a.area.Testo().substr(0, a.area.Testo().find("\r\n")),
            "Flag errori: [Manca archivio.qlv] [Manca ordelio.prf] ");
  EXPECT_EQ(a.Segnate(), Voci{Voce::mnu_ShowInfoHeader});
  EXPECT_EQ(a.header.FlagErrori, 3);

  // A snapshot that cannot be read: the message, the initial text, no mark, no flag table; Dati was emptied.
  AnalisiProva b;
  analysis::ImpostaValori(b.d, "C:\\nessuno.bin");
  EXPECT_EQ(b.messaggi.tutti, V{"plain: Errrore estraendo file"});
  EXPECT_EQ(b.area.Testo(), "RichTextBox1");
  EXPECT_TRUE(b.Segnate().empty());
  EXPECT_EQ(b.d.NumeroFlag, 0);
  analysis::mnu_ShowInfoHeader_Click(b.d);
  EXPECT_EQ(b.messaggi.tutti.back(), "critical: Non trovo file: C:\\Prog\\Dati\\infofile.bin");
  EXPECT_EQ(b.Segnate(), Voci{Voce::mnu_ShowInfoHeader});
  EXPECT_EQ(b.header, formats::InfoHeader{});
}

// Each menu item on a snapshot without its file: what it says, which marks stand afterwards, and that the
// report area keeps its text. With their files, the items are the report texts' own test.
TEST(DialogAnalisi, OgniVoceSenzaIlSuoFile) {
  const struct {
    Voce voce;
    const char* messaggio;
    Voci segni;
  } casi[] = {
      {Voce::mnu_ShowPref, "critical: Non trovo file: C:\\Prog\\Dati\\ordelio.prf", {Voce::mnu_ShowPref}},
      {Voce::mnu_ShowArchivioQlv,
       "critical: Non e' stato salvato il file archivio.qlv",
       {Voce::mnu_ShowInfoHeader}},
      {Voce::mnu_ShowORDL_Dir, "critical: Non trovo file: C:\\Prog\\Dati\\ordl.el", {Voce::mnu_ShowORDL_Dir}},
      {Voce::mnu_ShowTRLE_Dir, "critical: Non trovo file: C:\\Prog\\Dati\\trle.el", {Voce::mnu_ShowTRLE_Dir}},
      {Voce::mnu_ShowArchivioDir,
       "critical: Non trovo file: C:\\Prog\\Dati\\dirarc.el",
       {Voce::mnu_ShowArchivioDir}},
      {Voce::mnu_ShowOrdelioTxt,
       "critical: Non e' stato salvato il file Ordeio.txt",
       {Voce::mnu_ShowInfoHeader}},
      {Voce::mnu_ShowScriptDat,
       "critical: Non e' stato salvato il file Script.dat",
       {Voce::mnu_ShowInfoHeader}},
      {Voce::mnu_AnalisiBackup,
       "critical: Non trovo la cartella dove e' installato ordelio su questo computer",
       {Voce::mnu_ShowInfoHeader}},
  };
  MacchinaProva m;
  std::filesystem::create_directories(m.C("Prog"));
  Snapshot(m, {{"infofile.bin", Header(0)}});
  for (const auto& c : casi) {
    AnalisiProva a;
    analysis::ImpostaValori(a.d, "C:\\snap.bin");
    const std::string prima = a.area.Testo();
    analysis::EseguiVoce(a.d, c.voce);
    EXPECT_EQ(a.messaggi.tutti, V{c.messaggio}) << static_cast<int>(c.voce);
    EXPECT_EQ(a.Segnate(), c.segni) << static_cast<int>(c.voce);
    EXPECT_EQ(a.area.Testo(), prima) << static_cast<int>(c.voce);
  }
}

TEST(DialogAnalisi, TrovaTesto) {
  // Index:          0123456789012 3 4567890123456789 0 123
  const std::string t = "abc tomb4.exe\r\nxyz: Tomb end\r\nfoo";
  enum Pulsante { kTrova, kDopo, kPrima };
  struct Caso {
    const char* cosa;
    std::string testo;
    long selezione;
    std::string cerca;
    Pulsante pulsante;
    bool trovato;
    long inizio, lunghezza;  // the selection afterwards
  };
  const Caso casi[] = {
      {"the word from the occurrence on", t, 0, "tomb", kTrova, true, 4, 9},
      {"the word's end, whatever the search text", t, 0, "4.exe", kTrova, true, 8, 5},
      {"next, past CR LF, ignoring case", t, 4, "TOMB", kDopo, true, 20, 4},
      {"next never sees the first character", t, 0, "abc", kDopo, false, 0, 0},
      {"find always starts from the top", t, 20, "abc", kTrova, true, 0, 3},
      {"back to an occurrence before the selection", t, 20, "tomb", kPrima, true, 4, 9},
      {"back: one ending right before the selection", t, 8, "tomb", kPrima, true, 4, 9},
      {"back: not one overlapping the selection", t, 7, "tomb", kPrima, false, 7, 0},
      {"empty text", "", 0, "a", kTrova, false, 0, 0},
      {"next from the last character does not look", t, 32, "o", kDopo, false, 32, 0},
      {"back from the first character does not look", t, 0, "", kPrima, false, 0, 0},
      {"empty search found where the search starts", t, 0, "", kTrova, true, 0, 3},
      {"empty search, next", t, 4, "", kDopo, true, 5, 8},
      {"empty search, back", t, 5, "", kPrima, true, 4, 9},
      {"the last word runs to the end of the text", t, 0, "fo", kTrova, true, 30, 3},
      {"a colon ends the word", t, 0, "XYZ", kTrova, true, 15, 3},
      {"an occurrence that begins with a blank selects nothing", t, 0, " tomb", kTrova, true, 3, 0},
      {"not found", t, 4, "zzz", kDopo, false, 4, 0},
  };
  for (const Caso& c : casi) {
    AnalisiProva a;
    a.area.ImpostaTesto(c.testo);
    a.area.Seleziona(c.selezione, 0);
    a.cerca.ImpostaTesto(c.cerca);
    (c.pulsante == kTrova  ? analysis::Pul_Trova_Click
     : c.pulsante == kDopo ? analysis::Pul_Dopo_Click
                           : analysis::Pul_Prima_Click)(a.d);
    EXPECT_EQ(a.messaggi.tutti, c.trovato ? V{} : V{"plain: Non trovato"}) << c.cosa;
    EXPECT_EQ(a.area.SelStart(), c.inizio) << c.cosa;
    EXPECT_EQ(a.area.SelLength(), c.lunghezza) << c.cosa;
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
  ASSERT_TRUE(analysis::ScegliSnapshot(a.dialogo, nome));
  EXPECT_EQ(nome, "C:\\snap.bin");
  EXPECT_EQ(a.dialogo.filtro, "File Info_Ordl.bin|info_ordl.bin");

  a.dialogo.Annulla();
  analysis::mnu_SalvaFile_Click(a.d);
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("out.txt")));
  a.dialogo.Scegli("C:\\out.txt");
  analysis::mnu_SalvaFile_Click(a.d);
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("out.txt")), testo);
  EXPECT_EQ(a.dialogo.titolo, "Salva prospetto");
  EXPECT_EQ(a.dialogo.filtro, "File di testo (*.txt)|*.txt");
  EXPECT_EQ(a.dialogo.cartella, "c:\\");

  a.segni.SetChecked(Voce::mnu_ShowPref, true);
  a.area.ImpostaTesto("altro");
  a.dialogo.Annulla();
  analysis::mnu_CaricaFile_Click(a.d);
  EXPECT_EQ(a.area.Testo(), "altro");
  a.dialogo.Scegli("C:\\out.txt");
  analysis::mnu_CaricaFile_Click(a.d);
  EXPECT_EQ(a.area.Testo(), testo);
  EXPECT_EQ(a.dialogo.titolo, "Carica prospetto");
  EXPECT_EQ(a.Segnate(), Voci{Voce::mnu_ShowPref});
  // A file that cannot be read empties the area without a word.
  a.dialogo.Scegli("C:\\manca.txt");
  analysis::mnu_CaricaFile_Click(a.d);
  EXPECT_EQ(a.area.Testo(), "");
  EXPECT_EQ(a.dialogo.mostrati, (V{"open", "save", "save", "open", "open", "open"}));
  EXPECT_TRUE(a.messaggi.tutti.empty());
}

}  // namespace
