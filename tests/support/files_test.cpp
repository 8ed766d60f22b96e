#include "support/files.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "macchina_prova.h"

namespace {

using namespace support;
namespace fs = std::filesystem;

TEST(Percorsi, TagliDelPercorso) {
  struct Caso {
    const char* in;
    const char* nome;
    const char* cartella;
    const char* estensione;
  };
  const Caso casi[] = {
      {"C:\\Dati\\a.txt", "a.txt", "C:\\Dati", ".txt"},
      {"C:\\Dati\\", "", "C:\\Dati", ""},
      {"C:a.txt", "a.txt", "", ".txt"},
      {"C:", "", "", ""},
      {"a.txt", "a.txt", "", ".txt"},
      {"", "", "", ""},
      {"C:\\a.txt", "a.txt", "C:", ".txt"},
      {"\\a.txt", "a.txt", "", ".txt"},
      {"a.tar.gz", "a.tar.gz", "", ".gz"},
      {"a.", "a.", "", "."},
      {"C:\\Dati.old\\readme", "readme", "C:\\Dati.old", ".old\\readme"},
  };
  for (const auto& c : casi) {
    EXPECT_EQ(EstraiNomeFile(c.in), c.nome) << c.in;
    EXPECT_EQ(EstraiCartella(c.in), c.cartella) << c.in;
    EXPECT_EQ(EstraiEstensione(c.in), c.estensione) << c.in;
  }
}

TEST(File, EsistenzaDiFileECartelle) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("Dati/a.txt"), "abc");
  MacchinaProva::ScriviHost(m.C(" b.txt "), "abc");
  fs::create_directories(m.C("Vuota"));
  struct Caso {
    std::string percorso;
    bool file, cartella;
  };
  const Caso casi[] = {
      {"C:\\Dati\\a.txt", true, false},
      {"c:\\dati\\A.TXT", true, false},
      {"C:\\Dati\\*.txt", true, false},  // a pattern: a file for one, never a folder for the other
      {"C:\\Dati", false, true},
      {"C:\\Dati\\", true, true},  // the enumeration lists what the folder holds
      {"C:\\Vuota\\", false, true},
      {"C:\\ b.txt ", true, false},  // blanks around are part of the name
      {"C:\\b.txt", false, false},
      {"   ", false, false},
      {std::string(3, '\0'), false, false},
      {"", false, false},
      {"D:\\a.txt", false, false},  // drive not ready
      {"C:\\manca\\a.txt", false, false},
  };
  for (const auto& c : casi) {
    EXPECT_EQ(FileExists(c.percorso), c.file) << c.percorso;
    EXPECT_EQ(DirExists(c.percorso), c.cartella) << c.percorso;
  }
}

TEST(File, LetturaEScritturaByteperByte) {
  MacchinaProva m;
  std::string binario;
  for (int i = 0; i < 256; ++i) binario += static_cast<char>(i);
  binario += "\r\n\0\0"[0];
  ASSERT_TRUE(ScriviFileTesto("C:\\bin.dat", binario));
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("bin.dat")), binario);  // no line end of its own
  EXPECT_EQ(LeggiFile("C:\\BIN.DAT"), binario);
  ASSERT_TRUE(ScriviFileTesto("C:\\bin.dat", "x"));
  EXPECT_EQ(LeggiFile("C:\\bin.dat"), "x");

  MacchinaProva::ScriviHost(m.C("nul.dat"), std::string(7, '\0'));
  MacchinaProva::ScriviHost(m.C("vuoto.dat"), "");
  EXPECT_EQ(LeggiFile("C:\\nul.dat"), std::string(7, '\0'));
  EXPECT_EQ(LeggiFile("C:\\vuoto.dat"), "");
  EXPECT_EQ(LeggiFile("C:\\manca.dat"), "");
  EXPECT_FALSE(ScriviFileTesto("C:\\manca\\x.dat", "x"));
}

TEST(File, CartelleECancellazioni) {
  MacchinaProva m;
  EXPECT_TRUE(CreaCartella("C:\\Nuova"));
  MacchinaProva::ScriviHost(m.C("Nuova/segno"), "x");
  EXPECT_TRUE(CreaCartella("C:\\nuova"));  // already there: untouched
  EXPECT_TRUE(MacchinaProva::EsisteHost(m.C("Nuova/segno")));
  EXPECT_FALSE(CreaCartella("C:\\Manca\\Sotto"));
  EXPECT_FALSE(CreaCartella("C:\\Nuova\\segno"));  // a file in the way

  EXPECT_TRUE(CancellaFile("C:\\nessuno.txt"));
  MacchinaProva::ScriviHost(m.C("sola.txt"), "x");
  ::chmod(m.C("sola.txt").c_str(), 0444);
  EXPECT_TRUE(CancellaFile("C:\\SOLA.txt"));
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("sola.txt")));
}

TEST(File, ElencoESvuotamento) {
  MacchinaProva m;
  for (const char* n : {"a.el", "b.el", "c.txt"}) MacchinaProva::ScriviHost(m.C(std::string("W/") + n), "x");
  fs::create_directories(m.C("W/sotto.el"));
  std::int32_t n = -1;
  auto elenco = ElencaFile("C:\\W", "*.el", n);
  std::sort(elenco.begin(), elenco.end());
  EXPECT_EQ(n, 2);
  EXPECT_EQ(elenco, (std::vector<std::string>{"C:\\W\\a.el", "C:\\W\\b.el"}));
  EXPECT_EQ(ElencaFile("C:\\W\\", "c.txt", n), std::vector<std::string>{"C:\\W\\\\c.txt"});
  EXPECT_TRUE(ElencaFile("C:\\W", "*.none", n).empty());
  EXPECT_EQ(n, 0);

  EXPECT_FALSE(SvuotaCartella("C:\\Manca", "*.*"));
  EXPECT_TRUE(SvuotaCartella("C:\\W", "*.el"));
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("W/a.el")));
  EXPECT_TRUE(MacchinaProva::EsisteHost(m.C("W/c.txt")));
  EXPECT_TRUE(MacchinaProva::EsisteHost(m.C("W/sotto.el")));
  fs::create_directories(m.C("V"));
  EXPECT_TRUE(SvuotaCartella("C:\\V", "*.*"));  // nothing matches: true
}

}  // namespace
