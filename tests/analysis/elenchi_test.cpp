#include "analysis/elenchi.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "collection/snapshot.h"
#include "finestra_prova.h"
#include "macchina_prova.h"
#include "support/valori.h"

namespace {

using analysis::MostraDirectory;
using analysis::TestoElencoFile;
using collection::ElencoFile;
using V = std::vector<std::string>;

ElencoFile Elenco(const std::string& base, const V& nomi, const std::vector<std::int32_t>& dimensioni) {
  return ElencoFile{static_cast<std::int32_t>(nomi.size()), base, nomi, dimensioni};
}

// Each entry's line without the tab in front and the line end behind.
V Righe(const std::string& testo) {
  V righe;
  for (std::size_t da = 0, a; (a = testo.find("\r\n", da)) != std::string::npos; da = a + 2)
    righe.push_back(testo.substr(da, a - da));
  return righe;
}

TEST(Elenchi, QuattroFileAlByte) {
  MacchinaProva m;
  const ElencoFile e =
      Elenco("C:\\Giochi\\Trle", {"\\tomb4.exe", "\\data\\a.tr4", "\\data\\b.tr4", "\\data\\sub\\c.txt"},
             {800000, 1073741824, 4952, 512});
  std::filesystem::create_directories(m.C("Dati"));
  ASSERT_TRUE(collection::ScriviElencoFile("C:\\Dati\\TRLE.el", e));
  const std::string atteso =
      "DIRECTORY LEVEL EDITOR (Files = 4) \r\n"
      "C:\\Giochi\\Trle\r\n"
      "\t\\tomb4.exe (781 Kb) (800000 bytes) \r\n"
      "\t\\data\\a.tr4 (1024.0 Mb) (1073741824 bytes) \r\n"
      "\t     \\b.tr4 (4 Kb) (4952 bytes) \r\n"
      "\t     \\sub\\c.txt (512) (512 bytes) \r\n";
  BarraProva barra;
  EXPECT_EQ(TestoElencoFile(e, "DIRECTORY LEVEL EDITOR", barra, '.'), atteso);

  // The whole menu item, on the list as unpacked (the check run writes the name in its other case).
  MessaggiProva messaggi;
  barra = BarraProva{};
  std::string localizzato = atteso;
  localizzato[localizzato.find("1024.0") + 4] = support::SeparatoreDecimale();
  EXPECT_EQ(MostraDirectory("C:\\Dati", analysis::kDirectoryTrle, barra, messaggi), localizzato);
  EXPECT_TRUE(messaggi.tutti.empty());
  EXPECT_EQ(barra.valore, 0);
  ASSERT_GE(barra.storia.size(), 2u);
  EXPECT_EQ(barra.storia[barra.storia.size() - 2], 100);
}

TEST(Elenchi, CartelleRipetuteSonoSbiancate) {
  struct Caso {
    const char* cosa;
    V nomi;
    V attese;
  };
  const Caso casi[] = {
      {"empty list", {}, {}},
      {"files of the base folder share nothing", {"\\a.txt", "\\b.txt"}, {"\\a.txt", "\\b.txt"}},
      {"same folder: blanks for the folder and its backslash", {"\\d\\a", "\\d\\b"}, {"\\d\\a", "  \\b"}},
      {"case ignored, blanks follow the current name", {"\\Data\\a", "\\DATA\\b"}, {"\\Data\\a", "     \\b"}},
      {"a folder coming back after another is printed again",
       {"\\x\\a", "\\y\\b", "\\x\\c"},
       {"\\x\\a", "\\y\\b", "\\x\\c"}},
      {"only the leading run counts", {"\\a\\b\\c\\f", "\\a\\z\\c\\g"}, {"\\a\\b\\c\\f", "  \\z\\c\\g"}},
      {"a name without backslash is printed whole, and so is the next",
       {"nome", "\\d\\e", "\\d\\e2"},
       {"nome", "\\d\\e", "  \\e2"}},
      {"a name that is a folder of the next", {"\\d", "\\d\\e"}, {"\\d", "  \\e"}},
      {"empty names from a cut-off list", {"\\d\\e", "", ""}, {"\\d\\e", "", ""}},
  };
  for (const Caso& c : casi) {
    BarraProva barra;
    const std::string testo = TestoElencoFile(
        Elenco("C:\\B", c.nomi, std::vector<std::int32_t>(c.nomi.size(), 7)), "T", barra, '.');
    V righe = Righe(testo);
    ASSERT_EQ(righe.size(), c.attese.size() + 2) << c.cosa;
    EXPECT_EQ(righe[0], "T (Files = " + std::to_string(c.nomi.size()) + ") ") << c.cosa;
    for (std::size_t i = 0; i < c.attese.size(); ++i)
      EXPECT_EQ(righe[i + 2], "\t" + c.attese[i] + " (7) (7 bytes) ") << c.cosa << " line " << i;
  }
}

// Lists from anywhere: each must end in an orderly report, with a plain message for a real failure.
TEST(Elenchi, ListeOstili) {
  const std::string base = Le32(7) + "C:\\Base";
  struct Caso {
    const char* cosa;
    std::string byte;  // "-": no file at all
    V messaggi;
    std::string testa;
    V voci;
  };
  const std::string nomeLungo = Le32(2) + "\\a" + Le32(collection::kLunghezzaMassimaNome + 1);
  const Caso casi[] = {
      {"missing file", "-", {"plain: Errore in CaricaElencoFile(): File not found"}, "T (Files = 0) ", {}},
      {"empty file", "", {}, "T (Files = 0) ", {}},
      {"negative count",
       Le32(-1) + base,
       {"plain: Errore in CaricaElencoFile(): Subscript out of range"},
       "T (Files = 0) ",
       {}},
      {"count too large",
       Le32(2000000000) + base,
       {"plain: Errore in CaricaElencoFile(): Out of memory"},
       "T (Files = 0) ",
       {}},
      {"cut off in the names",
       Le32(3) + base + Le32(2) + "\\a",
       {},
       "T (Files = 3) ",
       {"\t\\a (0) (0 bytes) ", "\t (0) (0 bytes) ", "\t (0) (0 bytes) "}},
      {"cut off in the sizes",
       Le32(2) + base + Le32(2) + "\\a" + Le32(2) + "\\b" + Le32(9),
       {},
       "T (Files = 2) ",
       {"\t\\a (9) (9 bytes) ", "\t\\b (0) (0 bytes) "}},
      {"length field out of bounds: empty name, read goes on out of step",
       Le32(2) + base + nomeLungo,
       {},
       "T (Files = 2) ",
       {"\t\\a (0) (0 bytes) ", "\t (0) (0 bytes) "}},
  };
  for (const Caso& c : casi) {
    MacchinaProva m;
    if (c.byte != "-") MacchinaProva::ScriviHost(m.C("l.el"), c.byte);
    MessaggiProva messaggi;
    BarraProva barra;
    const auto testo = analysis::MostraElencoFile("C:\\l.el", "T", barra, messaggi);
    ASSERT_TRUE(testo) << c.cosa;
    EXPECT_EQ(messaggi.tutti, c.messaggi) << c.cosa;
    const V righe = Righe(*testo);
    ASSERT_EQ(righe.size(), c.voci.size() + 2) << c.cosa;
    EXPECT_EQ(righe[0], c.testa) << c.cosa;
    // The folder read before a bad count is kept.
    EXPECT_EQ(righe[1], c.byte.size() > 4 ? "C:\\Base" : "") << c.cosa;
    EXPECT_EQ(V(righe.begin() + 2, righe.end()), c.voci) << c.cosa;
    EXPECT_EQ(barra.valore, 0) << c.cosa;
  }
}

}  // namespace
