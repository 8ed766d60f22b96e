// Every report of the analysis window, byte for byte, against the texts in tests/data/prospetti: one snapshot
// that carries every member, opened as "Leggi Dati" opens it, and one menu item a row.
//
// To rewrite the expected texts on purpose, run the tests with CHECKORDL_RIGENERA=1: each row then writes
// the text the code gives into its file instead of comparing. Read the diff before committing it.
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "analysis/prospetto_archivio.h"
#include "analysis/testi.h"
#include "collection/scansione.h"
#include "collection/snapshot.h"
#include "finestra_prova.h"
#include "formats/archivio.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "formats/script.h"
#include "locale_prova.h"
#include "macchina_prova.h"

namespace {

using analysis::Voce;
using collection::ElencoFile;

// A list file; `voci` holds "name=size" pairs separated by blanks.
void Elenco(const std::string& file, const std::string& base, const std::string& voci) {
  ElencoFile e{0, base, {}, {}};
  std::istringstream s(voci);
  for (std::string v; s >> v; ++e.NumeroFile) {
    e.NomiFile.push_back(v.substr(0, v.rfind('=')));
    e.DimensioniFile.push_back(std::stoi(v.substr(v.rfind('=') + 1)));
  }
  ASSERT_TRUE(collection::ScriviElencoFile(file, e));
}

std::string InfoHeader() {
  formats::InfoHeader h;
  h.StartFolderTrle.Assegna("C:\\Giochi\\Trle");
  h.StartFolderOrdl.Assegna("  C:\\Programmi\\Ordelio");
  // Bits outside the table, and table entries whose order differs from their bits'. VersioneOrdelio is
  // never assigned: a run of NULs.
  h.FlagErrori = formats::kMancaOrdelioPrf | formats::kMancaCartellaOrdl | formats::kMancaScriptDat | 0x400 |
                 std::numeric_limits<std::int32_t>::min();
  h.WindowsXp = true;
  h.SpazioDiscoC = 1610612736;
  h.SpazioDiscoMaggiore = 2048;
  h.DiscoMaggiore.Assegna("D");
  return formats::CodificaInfoHeader(h);
}

std::string Preferenze() {
  formats::PrefRecord p;
  p.DateLastUpdating = 45000.5;
  p.DefaultLoadDir.Assegna("  c:\\");
  p.Flags = -1;
  p.FolderSavegameExt.Assegna(" sav ");
  p.LinguaAttuale.Assegna(std::string("It\0al", 5));  // trimmed only: the NUL stays
  p.NameTomb4.Assegna("tomb4.exe");
  p.NameTom2Pc.Assegna("tom2pc.exe");
  p.Joy_GamePort = -3;
  p.Joy_ShowDaSolo = true;
  p.NumeroArcSavegame = 5;
  p.VersioneSubBumber = 7;
  return formats::CodificaPreferenze(p);
}

std::string Archivio() {
  formats::ArchivioHeader h;
  h.NVersione = 3;
  h.MainDir.Assegna("C:\\Ordelio");
  h.TotLivelli = 2;
  h.TotCD = 1;
  h.TestCompresso = h.TestSetupCd = true;
  h.SizeMainDir = 3670016;
  h.SizeSecondayDir = 0.5;
  formats::ArchivioLivello uno, due;
  uno.Nome.Assegna("Livello Uno");
  uno.Autore_Nome.Assegna("Lara");
  uno.Autore_Email.Assegna("l@x.it");
  uno.Autore_Note.Assegna(" nota ");
  uno.Codice = -7;
  uno.NomeSoluzione.Assegna("sol");
  uno.MaxSavegames = 16;
  uno.Flags = -1;
  uno.NumeroCd = 2;
  uno.SizeFiles = -1;
  uno.SizeSubDir = 5000;
  uno.TestRicalcolaSize = true;
  due.Nome.Assegna("Due");
  due.Flags = 10;
  return formats::CodificaArchivioHeader(h) + formats::CodificaArchivioLivello(uno) +
         formats::CodificaArchivioLivello(due);
}

// The snapshot C:\snap.bin, and on this computer Ordelio, the two sample lists in C:\Prog and the good
// copies of the backup files.
void Prepara(const MacchinaProva& m) {
  for (const char* c : {"src", "Prog", "Ordelio"}) std::filesystem::create_directories(m.C(c));
  std::string script(formats::kDimensioneIntestazioneScript, '\0');
  script[formats::kOffsetNumeroLivelliScript] = 2;
  script += std::string(4, '\0') + std::string("Uno\0DUE\0", 8);
  const std::pair<const char*, std::string> file[] = {
      {"infofile.bin", InfoHeader()}, {"ordelio.prf", Preferenze()},
      {"Archivio.QLV", Archivio()},   {"ordeio.txt", std::string("riga\nmista\r\n\0fine", 17)},
      {"script.dat", script},         {"zeta.qlv", "not the first archive"}};
  std::vector<std::string> membri;
  for (const auto& [nome, byte] : file) {
    MacchinaProva::ScriviHost(m.C(std::string("src/") + nome), byte);
    membri.push_back(std::string("C:\\src\\") + nome);
  }
  // The user's Ordelio folder: backup_trle in other cases, files outside it, a name twice (the first counts).
  Elenco("C:\\src\\ORDL.el", "D:\\Giochi\\Ordelio",
         "\\ordelio.prf=2606 \\BACKUP_TRLE\\Data\\A.TR4=2000 \\backup_trle\\data\\b.tr4=8000 "
         "\\backup_trle\\c.tr4=10 \\backup_trle\\d.tr4=7 \\Backup_Trle\\D.TR4=9 \\backup_trle\\e.tr4=0 "
         "\\backup_trle\\una\\cartella\\dal\\nome\\molto\\lungo\\livello.tr4=1 \\backup_trle\\z.tr4=4 "
         "\\backup_trle\\extra.txt=5 \\x\\backup_trle\\y=1");
  Elenco("C:\\src\\TRLE.el", "C:\\Giochi\\Trle",
         "\\tomb4.exe=800000 \\data\\a.tr4=1073741824 \\data\\b.tr4=4952 \\data\\sub\\c.txt=512");
  Elenco("C:\\src\\DirArc.el", "C:\\Ordelio\\Livelli", "");
  for (const char* nome : {"ORDL.el", "TRLE.el", "DirArc.el"})
    membri.push_back(std::string("C:\\src\\") + nome);
  support::DidascaliaMuta info;
  support::BarraMuta barra;
  ASSERT_TRUE(collection::SalvaSnapshot("C:\\snap.bin", membri, static_cast<std::int32_t>(membri.size()),
                                        info, barra));

  m.Registro(
      "WINE REGISTRY Version 2\n\n"
      "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\App Paths\\\\ordl2009.exe]\n"
      "@=\"C:\\\\Ordelio\\\\ordl2009.exe\"\n");
  MacchinaProva::ScriviHost(m.C("Ordelio/ordl2009.exe"), "MZ");
  // The sample list and the good copies; nuovo.tr4 and z.tr4 have none. Only the first CD entry of a name is
  // tried.
  const std::string campione =
      "\\data\\a.tr4=1500 \\data\\b.tr4=8500 \\c.tr4=10 \\d.tr4=7 \\e.tr4=1 "
      "\\una\\cartella\\dal\\nome\\molto\\lungo\\livello.tr4=2";
  Elenco("C:\\Prog\\backup_trle.le", "C:\\Campione\\backup_trle", campione + " \\nuovo.tr4=0 \\z.tr4=4");
  Elenco("C:\\Prog\\trle_cd.le", "D:\\", "\\data\\b.tr4=8000 \\e.tr4=5 \\e.tr4=0");
  std::istringstream copie(campione);
  for (std::string v; copie >> v;) {
    std::replace(v.begin(), v.end(), '\\', '/');
    const std::filesystem::path host = m.C("Campione/backup_trle" + v.substr(0, v.rfind('=')));
    std::filesystem::create_directories(host.parent_path());
    MacchinaProva::ScriviHost(host.string(), std::string(std::stoul(v.substr(v.rfind('=') + 1)), 'x'));
  }
}

struct Caso {
  const char* file;
  const char* locale;
  Voce voce;
};
void PrintTo(const Caso& c, std::ostream* os) {
  *os << c.file;
}

class Prospetti : public ::testing::TestWithParam<Caso> {};

TEST_P(Prospetti, ComeNelFile) {
  const Caso& c = GetParam();
  LocaleProva numeri(LC_NUMERIC, c.locale), date(LC_TIME, c.locale);
  if (!numeri.Attivo() || !date.Attivo()) GTEST_SKIP() << "no " << c.locale << " locale on this machine";
  MacchinaProva m;
  Prepara(m);
  AnalisiProva a;
  analysis::ImpostaValori(a.d, "C:\\snap.bin");
  analysis::EseguiVoce(a.d, c.voce);
  EXPECT_TRUE(a.messaggi.tutti.empty()) << a.messaggi.tutti[0];
  // The backup analysis clears the report marks; every report marks itself alone.
  EXPECT_EQ(a.Segnate(), c.voce == Voce::mnu_AnalisiBackup ? std::vector<Voce>{} : std::vector<Voce>{c.voce});
  EXPECT_EQ(a.barra.valore, 0);

  const std::string file = std::string(CHECKORDL_DATI_PROVA) + "/prospetti/" + c.file;
  if (std::getenv("CHECKORDL_RIGENERA")) {
    MacchinaProva::ScriviHost(file, a.area.Testo());
    return;
  }
  EXPECT_EQ(a.area.Testo(), MacchinaProva::LeggiHost(file));
}

INSTANTIATE_TEST_SUITE_P(Voci, Prospetti,
                         ::testing::Values(Caso{"header.txt", "C", Voce::mnu_ShowInfoHeader},
                                           Caso{"header_it.txt", "it_IT.UTF-8", Voce::mnu_ShowInfoHeader},
                                           Caso{"pref.txt", "C", Voce::mnu_ShowPref},
                                           Caso{"archive.txt", "C", Voce::mnu_ShowArchivioQlv},
                                           Caso{"archive_it.txt", "it_IT.UTF-8", Voce::mnu_ShowArchivioQlv},
                                           Caso{"ordl.txt", "C", Voce::mnu_ShowORDL_Dir},
                                           Caso{"trle.txt", "C", Voce::mnu_ShowTRLE_Dir},
                                           Caso{"trle_it.txt", "it_IT.UTF-8", Voce::mnu_ShowTRLE_Dir},
                                           Caso{"dirarc.txt", "C", Voce::mnu_ShowArchivioDir},
                                           Caso{"ordeio.txt", "C", Voce::mnu_ShowOrdelioTxt},
                                           Caso{"script.txt", "C", Voce::mnu_ShowScriptDat},
                                           Caso{"backup.txt", "C", Voce::mnu_AnalisiBackup}),
                         [](const auto& info) {
                           const std::string f = info.param.file;
                           return f.substr(0, f.find('.'));
                         });

// The count of levels comes from the file: it may be anything, and the file may end anywhere.
TEST(ProspettoArchivio, ConteggiOstili) {
  LocaleProva locale(LC_NUMERIC, "C");
  MacchinaProva m;
  const struct {
    std::int32_t totLivelli;
    std::size_t recordNelFile;  // whole level records written behind the header
    std::size_t byteInPiu;      // then this many bytes of one more record
    std::size_t blocchi;
  } casi[] = {
      {0, 1, 0, 0},  // records past the count are not read
      {std::numeric_limits<std::int32_t>::min(), 1, 0, 0},
      {std::numeric_limits<std::int32_t>::max(), 1, 0, 1},
      {3, 1, 300, 2},  // cut inside the second record: read as far as it goes
      {2, 0, 0, 0},    // the header alone
  };
  formats::ArchivioLivello l;
  l.Nome.Assegna("Liv");
  const std::string record = formats::CodificaArchivioLivello(l);
  for (const auto& c : casi) {
    formats::ArchivioHeader h;
    h.TotLivelli = c.totLivelli;
    std::string byte = formats::CodificaArchivioHeader(h);
    for (std::size_t i = 0; i < c.recordNelFile; ++i) byte += record;
    MacchinaProva::ScriviHost(m.C("Dati/archivio.qlv"), byte + record.substr(0, c.byteInPiu));
    MessaggiProva messaggi;
    const auto esito = analysis::ProspettoArchivio({1, {"archivio.qlv"}, {1}}, "C:\\Dati", messaggi);
    ASSERT_TRUE(esito.testo.has_value()) << c.totLivelli;
    const std::string& t = *esito.testo;
    EXPECT_NE(t.find("TotLivelli: " + std::to_string(c.totLivelli) + "\r\n\r\n"), std::string::npos);
    std::size_t blocchi = 0;
    for (auto p = t.find("\r\nNome: Liv\r\n"); p != std::string::npos; p = t.find("\r\nNome: Liv\r\n", p + 1))
      ++blocchi;
    EXPECT_EQ(blocchi, c.blocchi) << c.totLivelli;
    EXPECT_EQ(t.substr(t.size() - 4), "\r\n\r\n");
    EXPECT_TRUE(messaggi.tutti.empty());
  }
  // Named in the table but not unpacked: the mark moves all the same. A count larger than the table must
  // not walk past it.
  MessaggiProva messaggi;
  EXPECT_TRUE(analysis::ProspettoArchivio({1, {"X:\\a.QLV"}, {1}}, "C:\\Vuota", messaggi).segnaVoce);
  EXPECT_EQ(messaggi.tutti, std::vector<std::string>{"critical: Non trovo file: C:\\Vuota\\a.QLV"});
  EXPECT_FALSE(analysis::ProspettoArchivio({5, {"C:\\a.txt"}, {1}}, "C:\\Dati", messaggi).segnaVoce);
}

TEST(Testi, LivelliScriptOltreLaLista) {
  const std::string testa = "Livelli tr4 usati da file script.dat:\r\n\r\n";
  EXPECT_EQ(analysis::TestoLivelliScript({"a.tr4"}, -3), testa);
  // A list shorter than its count still gives a line per entry.
  EXPECT_EQ(analysis::TestoLivelliScript({"a.tr4"}, 3), testa + "a.tr4\r\n\r\n\r\n");
}

}  // namespace
