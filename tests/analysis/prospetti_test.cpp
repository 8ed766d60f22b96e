// The header and archive reports, byte for byte, on files written into a test machine's C:\Dati.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <limits>
#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "analysis/prospetto_archivio.h"
#include "analysis/prospetto_header.h"
#include "finestra_prova.h"
#include "formats/archivio.h"
#include "formats/info_header.h"
#include "locale_prova.h"
#include "macchina_prova.h"

namespace {

using analysis::ProspettoArchivio;
using analysis::ProspettoHeader;
using analysis::TestoHeader;
using formats::kTestiFlagErrori;

const std::string kDati = "C:\\Dati";

// `#` in an expected text stands for the locale's decimal separator.
std::string ConSeparatore(std::string t, char sep) {
  for (char& c : t)
    if (c == '#') c = sep;
  return t;
}

struct CasoLocale {
  const char* nome;
  char separatore;
};
void PrintTo(const CasoLocale& c, std::ostream* os) {
  *os << c.nome;
}

class ProspettiLocale : public ::testing::TestWithParam<CasoLocale> {};

INSTANTIATE_TEST_SUITE_P(Locali, ProspettiLocale,
                         ::testing::Values(CasoLocale{"C", '.'}, CasoLocale{"it_IT.UTF-8", ','}),
                         [](const auto& info) { return info.param.separatore == '.' ? "C" : "it_IT"; });

TEST_P(ProspettiLocale, HeaderFullTextAndRecordReplaced) {
  LocaleProva locale(LC_NUMERIC, GetParam().nome);
  if (!locale.Attivo()) GTEST_SKIP() << "no " << GetParam().nome << " locale on this machine";
  MacchinaProva m;
  formats::InfoHeader scritto;
  scritto.StartFolderTrle.Assegna("C:\\Giochi\\Trle");
  scritto.StartFolderOrdl.Assegna("  C:\\Programmi\\Ordelio");
  // VersioneOrdelio is never assigned: a run of NULs.
  scritto.FlagErrori = 0x003 | 0x200;
  scritto.WindowsXp = true;
  scritto.SpazioDiscoC = 1610612736;
  scritto.SpazioDiscoMaggiore = 2048;
  scritto.DiscoMaggiore.Assegna("D");
  MacchinaProva::ScriviHost(m.C("Dati/infofile.bin"), formats::CodificaInfoHeader(scritto));

  const std::string atteso = ConSeparatore(
      "Flag errori: [Manca archivio.qlv] [Manca ordelio.prf] \r\n"
      "Start Folder Trle: \"C:\\Giochi\\Trle\"\r\n"
      "Start Folder ORDL: \"C:\\Programmi\\Ordelio\"\r\n"
      "Windows Xp : True\r\n"
      "Spazio Disco C: 1#5 Gb\r\n"
      "Maggiore spazio su disco: D:\\\r\n"
      "Spazio Disco D: 2 Kb\r\n"
      "Versione Ordelio: \"\"\r\n",
      GetParam().separatore);

  formats::InfoHeader processo;
  processo.FlagErrori = 0x100;
  MessaggiProva messaggi;
  // Twice: the file is read again and gives the same text.
  for (int volta = 0; volta < 2; ++volta) {
    const auto testo = ProspettoHeader(kDati, kTestiFlagErrori, processo, messaggi);
    ASSERT_TRUE(testo.has_value());
    EXPECT_EQ(*testo, atteso);
  }
  EXPECT_EQ(processo, scritto);
  EXPECT_TRUE(messaggi.tutti.empty());
}

TEST_P(ProspettiLocale, ArchiveFullTextFirstQlvMember) {
  LocaleProva locale(LC_NUMERIC, GetParam().nome);
  if (!locale.Attivo()) GTEST_SKIP() << "no " << GetParam().nome << " locale on this machine";
  MacchinaProva m;
  formats::ArchivioHeader h;
  h.NVersione = 3;
  h.MainDir.Assegna("C:\\Ordelio");
  h.TotLivelli = 2;
  h.TotCD = 1;
  h.TestCompresso = true;
  h.TestSetupCd = true;
  h.SizeMainDir = 3670016;
  h.SizeSecondayDir = 0.5;
  formats::ArchivioLivello uno;
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
  formats::ArchivioLivello due;
  due.Nome.Assegna("Due");
  due.Flags = 10;
  MacchinaProva::ScriviHost(m.C("Dati/Archivio.QLV"), formats::CodificaArchivioHeader(h) +
                                                          formats::CodificaArchivioLivello(uno) +
                                                          formats::CodificaArchivioLivello(due));
  // The name may come from any folder of the user's machine; only the first .qlv member counts.
  collection::ContenutoSnapshot contenuto{
      3, {"C:\\Ordelio\\ordelio.prf", "  D:\\Giochi\\Ordelio\\Archivio.QLV", "E:\\altro.qlv"}, {1, 2, 3}};

  const std::string atteso = ConSeparatore(
      "Header archivio livelli: Archivio.QLV\r\n"
      "MainDir: C:\\Ordelio\r\n"
      "NVersione: 3\r\n"
      "SecondaryDir: \r\n"
      "SizeMainDir: 3#5 Mb\r\n"
      "SizeSecondayDir: 0#5\r\n"
      "TestAudioInMp3: False\r\n"
      "TestCompresso: True\r\n"
      "TestSetupCd: True\r\n"
      "TotCD: 1\r\n"
      "TotLivelli: 2\r\n"
      "\r\n"
      "Nome: Livello Uno\r\n"
      "Autore_Email: l@x.it\r\n"
      "Autore_Nome: Lara\r\n"
      "Autore_Note: nota\r\n"
      "Autore_Sito: \r\n"
      "Codice: -7\r\n"
      "NomeSoluzione: sol\r\n"
      "MaxSavegames: 16\r\n"
      "Flags: 0xFFFF\r\n"
      "Note: \r\n"
      "NumeroCd: 2\r\n"
      "SizeFiles: -1\r\n"
      "SizeSubDir: 4 Kb\r\n"
      "TestRicalcolaSize: True\r\n"
      "\r\n"
      "Nome: Due\r\n"
      "Autore_Email: \r\n"
      "Autore_Nome: \r\n"
      "Autore_Note: \r\n"
      "Autore_Sito: \r\n"
      "Codice: 0\r\n"
      "NomeSoluzione: \r\n"
      "MaxSavegames: 0\r\n"
      "Flags: 0xA\r\n"
      "Note: \r\n"
      "NumeroCd: 0\r\n"
      "SizeFiles: 0\r\n"
      "SizeSubDir: 0\r\n"
      "TestRicalcolaSize: False\r\n"
      "\r\n",
      GetParam().separatore);

  MessaggiProva messaggi;
  const auto esito = ProspettoArchivio(contenuto, kDati, messaggi);
  EXPECT_TRUE(esito.segnaVoce);
  ASSERT_TRUE(esito.testo.has_value());
  EXPECT_EQ(*esito.testo, atteso);
  EXPECT_TRUE(messaggi.tutti.empty());
}

// The first line alone: the walk follows the table's order, not the bits' values.
std::string RigaFlag(std::int32_t flag, std::span<const formats::TestoFlag> tabella) {
  formats::InfoHeader h;
  h.FlagErrori = flag;
  const std::string t = TestoHeader(h, tabella);
  return t.substr(0, t.find("\r\n"));
}

TEST(ProspettoHeader, FlagTextsInTableOrder) {
  const std::string tutte =
      "Flag errori: [Manca archivio.qlv] [Manca cartella ORDL] [Manca cartella archivio] "
      "[Manca cartella backup] [Manca cartella TRLE] [Manca ordelio.prf] [Manca ordl2009.exe] "
      "[Manca Ordeio.txt] [Manca Script.dat] ";
  const struct {
    std::int32_t flag;
    bool tabella;
    std::string atteso;
  } casi[] = {
      {0, true, "Flag errori: "},
      {0x1FF, true, tutte},
      {-1, true, tutte},
      {0x001 | 0x002, true, "Flag errori: [Manca archivio.qlv] [Manca ordelio.prf] "},
      {0x004 | 0x008, true, "Flag errori: [Manca cartella ORDL] [Manca cartella TRLE] "},
      {0x100 | 0x080, true, "Flag errori: [Manca Ordeio.txt] [Manca Script.dat] "},
      {~0x1FF, true, "Flag errori: "},  // only bits above the table
      {0x200, true, "Flag errori: "},
      {0x1FF, false, "Flag errori: "},  // the window never built its table
  };
  for (const auto& c : casi) {
    std::span<const formats::TestoFlag> tabella;
    if (c.tabella) tabella = kTestiFlagErrori;
    EXPECT_EQ(RigaFlag(c.flag, tabella), c.atteso) << std::hex << c.flag << " table " << c.tabella;
  }
  // Each bit alone names its own text, so no two rows share a bit.
  for (const auto& riga : kTestiFlagErrori)
    EXPECT_EQ(RigaFlag(riga.bit, kTestiFlagErrori), "Flag errori: [" + std::string(riga.testo) + "] ");
}

TEST(ProspettoHeader, MissingFileLeavesRecordAndShowsMessage) {
  MacchinaProva m;
  formats::InfoHeader processo;
  processo.FlagErrori = 0x42;
  processo.StartFolderTrle.Assegna("C:\\Trle");
  const formats::InfoHeader prima = processo;
  MessaggiProva messaggi;
  EXPECT_FALSE(ProspettoHeader(kDati, kTestiFlagErrori, processo, messaggi).has_value());
  EXPECT_EQ(processo, prima);
  EXPECT_EQ(messaggi.tutti, std::vector<std::string>{"critical: Non trovo file: C:\\Dati\\infofile.bin"});
}

TEST(ProspettoArchivio, FailuresTellWhetherTheMarkMoves) {
  MacchinaProva m;
  const struct {
    std::vector<std::string> nomi;
    bool segna;
    std::string messaggio;
  } casi[] = {
      {{"C:\\a.qlv.bak", "C:\\qlv"}, false, "critical: Non e' stato salvato il file archivio.qlv"},
      {{"X:\\Ordelio\\archivio.qlv"}, true, "critical: Non trovo file: C:\\Dati\\archivio.qlv"},
  };
  for (const auto& c : casi) {
    collection::ContenutoSnapshot contenuto;
    contenuto.Numero = static_cast<std::int32_t>(c.nomi.size());
    contenuto.Nomi = c.nomi;
    MessaggiProva messaggi;
    const auto esito = ProspettoArchivio(contenuto, kDati, messaggi);
    EXPECT_EQ(esito.segnaVoce, c.segna) << c.messaggio;
    EXPECT_FALSE(esito.testo.has_value());
    EXPECT_EQ(messaggi.tutti, std::vector<std::string>{c.messaggio});
  }
  // A count larger than the list must not walk past it.
  collection::ContenutoSnapshot storto{5, {"C:\\a.txt"}, {1}};
  MessaggiProva messaggi;
  EXPECT_FALSE(ProspettoArchivio(storto, kDati, messaggi).segnaVoce);
}

std::size_t Conta(const std::string& testo, const std::string& parte) {
  std::size_t n = 0;
  for (auto p = testo.find(parte); p != std::string::npos; p = testo.find(parte, p + 1)) ++n;
  return n;
}

TEST(ProspettoArchivio, HostileCountsEndInOrder) {
  LocaleProva locale(LC_NUMERIC, "C");
  MacchinaProva m;
  const struct {
    std::int32_t totLivelli;
    std::size_t recordNelFile;  // whole level records written behind the header
    std::size_t byteInPiu;      // then this many bytes of one more record
    std::size_t blocchi;
  } casi[] = {
      {0, 1, 0, 0},  // records past the count are not read
      {-5, 2, 0, 0},
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
    byte += record.substr(0, c.byteInPiu);
    MacchinaProva::ScriviHost(m.C("Dati/archivio.qlv"), byte);
    MessaggiProva messaggi;
    const auto esito = ProspettoArchivio({1, {"archivio.qlv"}, {1}}, kDati, messaggi);
    ASSERT_TRUE(esito.testo.has_value()) << c.totLivelli;
    const std::string& t = *esito.testo;
    EXPECT_NE(t.find("TotLivelli: " + std::to_string(c.totLivelli) + "\r\n\r\n"), std::string::npos);
    EXPECT_EQ(Conta(t, "\r\nNome: "), c.blocchi) << c.totLivelli;
    EXPECT_EQ(Conta(t, "Nome: Liv\r\n"), c.blocchi) << c.totLivelli;
    EXPECT_EQ(t.substr(t.size() - 4), "\r\n\r\n");
    EXPECT_TRUE(messaggi.tutti.empty());
  }
}

}  // namespace
