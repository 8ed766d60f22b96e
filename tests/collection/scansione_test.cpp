#include "collection/scansione.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "finestra_prova.h"
#include "host/macchina.h"
#include "macchina_prova.h"

namespace {

using formats::ElencoFile;
namespace fs = std::filesystem;
using V = std::vector<std::string>;

struct Vista {
  DidascaliaProva info;
  BarraProva barra;
  CicloProva eventi;
  collection::VistaScansione vista{info, barra, eventi};

  // Scans into a list and reads it back; the list must load for the test to mean anything.
  ElencoFile Scansiona(const std::string& cartella) {
    EXPECT_TRUE(collection::CreaElencoFile("C:\\lista.el", cartella, vista)) << cartella;
    ElencoFile e;
    EXPECT_TRUE(formats::CaricaElencoStretto("C:\\lista.el", e)) << cartella;
    return e;
  }
};

TEST(Scansione, InProfonditaPrimaIFileDellaCartella) {
  MacchinaProva m;
  for (const char* p : {"T/a", "T/b", "T/s1/c", "T/s1/s2/d", "T/s3/e"})
    MacchinaProva::ScriviHost(m.C(p), "xy");
  fs::create_directories(m.C("T/vuota/ancora"));
  Vista v;
  const ElencoFile e = v.Scansiona("C:\\T");
  ASSERT_EQ(e.NumeroFile, 5);
  EXPECT_EQ(e.DimensioniFile, std::vector<std::int32_t>(5, 2));
  // Files stand in the platform's order, so only what the walk decides is fixed: the folder's own files
  // first, then each sub-folder's whole tree in one piece.
  EXPECT_EQ(std::set(e.NomiFile.begin(), e.NomiFile.begin() + 2), (std::set<std::string>{"\\a", "\\b"}));
  const V resto(e.NomiFile.begin() + 2, e.NomiFile.end());
  EXPECT_TRUE(resto == (V{"\\s1\\c", "\\s1\\s2\\d", "\\s3\\e"}) ||
              resto == (V{"\\s3\\e", "\\s1\\c", "\\s1\\s2\\d"}))
      << ::testing::PrintToString(resto);
  EXPECT_EQ(v.eventi.turni, 6);  // one turn per folder, empty ones too
  EXPECT_EQ(v.info.storia,
            (V{"Parsing folder \"C:\\T\" in progress...", "Saving file list in progress...", ""}));
  EXPECT_EQ(v.info.ridisegni, 3);
  EXPECT_EQ(v.barra.storia, (std::vector<double>{20, 40, 60, 80, 100, 0}));
}

TEST(Scansione, CosaEntraNellElenco) {
  MacchinaProva m;
  for (const char* p : {"T/a.b/dentro.txt", "T/.nascosto", "T/.cartella_nascosta/x.txt", "T/attributo.txt",
                        "T/sistema/y.txt"})
    MacchinaProva::ScriviHost(m.C(p), "x");
  MacchinaProva::ScriviHost(m.C("T/uno.txt"), "12345");
  // Too large for the 32-bit field: recorded as 0. Sparse, so it costs no disk.
  MacchinaProva::ScriviHost(m.C("T/enorme.bin"), "");
  fs::resize_file(m.C("T/enorme.bin"), std::uintmax_t{3} << 30);
  // Links: a loop to the parent is not entered, a link to a file is listed with its target's size, a
  // dangling one cannot be read and is left out.
#ifdef _WIN32
  // Wine makes no links for the program; a copy stands for the one to a file.
  MacchinaProva::ScriviHost(m.C("T/collegato.txt"), "12345");
#else
  fs::create_directory_symlink("..", m.C("T/a.b/giro"));
  fs::create_symlink("uno.txt", m.C("T/collegato.txt"));
  fs::create_symlink("manca.txt", m.C("T/rotto.txt"));
#endif
  // Hidden by attribute, where the file system takes extended attributes.
  const bool attributi = host::ImpostaAttributi("C:\\T\\attributo.txt", host::kAttrHidden, nullptr) &&
                         host::ImpostaAttributi("C:\\T\\sistema", host::kAttrSystem, nullptr);
  Vista v;
  const ElencoFile e = v.Scansiona("C:\\T");
  std::set<std::pair<std::string, std::int32_t>> atteso = {
      {"\\uno.txt", 5}, {"\\a.b\\dentro.txt", 1}, {"\\enorme.bin", 0}, {"\\collegato.txt", 5}};
  if (!attributi) atteso.insert({{"\\attributo.txt", 1}, {"\\sistema\\y.txt", 1}});
  std::set<std::pair<std::string, std::int32_t>> avuto;
  for (std::int32_t i = 0; i < e.NumeroFile; ++i) avuto.emplace(e.NomiFile[i], e.DimensioniFile[i]);
  EXPECT_EQ(avuto, atteso);
  EXPECT_EQ(e.NumeroFile, static_cast<std::int32_t>(atteso.size()));
  EXPECT_EQ(v.eventi.turni, attributi ? 2 : 3);  // T and a.b (and sistema): the link is no folder to walk
}

TEST(Scansione, NomiRelativiAllaCartellaComeData) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("Dati/Sotto/f.txt"), "f");
  // The platform's own form of the name differs in case; the machine's own C: holds the system too.
  for (const auto& [cartella, nome] : std::vector<std::pair<std::string, std::string>>{
           {"c:\\dATI", "\\Sotto\\f.txt"}, {"C:\\Dati\\", "Sotto\\f.txt"}, {"C:", "\\Dati\\Sotto\\f.txt"}}) {
    if (cartella == "C:" && m.Prefisso().empty()) continue;
    Vista v;
    const ElencoFile e = v.Scansiona(cartella);
    EXPECT_EQ(e.CartellaBase, cartella);
    EXPECT_EQ(e.NomiFile, V{nome}) << cartella;
  }
  // Off the usual path: only the first occurrence goes, found wherever it stands; none, nothing goes.
  EXPECT_EQ(collection::NomeRelativo("C:\\X\\C:\\X\\y", "C:\\X"), "\\C:\\X\\y");
  EXPECT_EQ(collection::NomeRelativo("D:\\Su\\A\\A\\z", "a\\a"), "D:\\Su\\\\z");
  EXPECT_EQ(collection::NomeRelativo("C:\\altro\\f", "C:\\A\\"), "C:\\altro\\f");
}

// A call that fails deletes the old list all the same: no folder, a file for a folder, and a list whose name
// is taken by a folder (the scan runs, the writing fails).
TEST(Scansione, UnaChiamataFallitaNonLasciaIlVecchioElenco) {
  for (const auto& [nome, cartella] : std::vector<std::pair<std::string, std::string>>{
           {"C:\\vecchio.el", ""}, {"C:\\vecchio.el", "C:\\T\\f.txt"}, {"C:\\Cartella.el", "C:\\T"}}) {
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("T/f.txt"), "f");
    MacchinaProva::ScriviHost(m.C("vecchio.el"), "old");
    fs::create_directories(m.C("Cartella.el"));
    Vista v;
    EXPECT_FALSE(collection::CreaElencoFile(nome, cartella, v.vista)) << cartella;
    EXPECT_EQ(MacchinaProva::EsisteHost(m.C("vecchio.el")), nome != "C:\\vecchio.el") << cartella;
    EXPECT_EQ(v.info.storia.size(), nome != "C:\\vecchio.el" ? 3u : 0u) << cartella;
  }
}

TEST(Scansione, CartellaIlleggibileNonFermaIlGiro) {
#ifdef _WIN32
  GTEST_SKIP() << "a folder no one may read is made with Unix permissions";
#else
  MacchinaProva m;
  for (const char* p : {"T/a.txt", "T/chiusa/segreto.txt", "T/zeta/z.txt"})
    MacchinaProva::ScriviHost(m.C(p), "");
  ::chmod(m.C("T/chiusa").c_str(), 0);
  // Permissions do not stop root: the walk then runs as nobody.
  ::chmod(m.Prefisso().c_str(), 0755);
  const bool root = ::geteuid() == 0;
  if (root && ::seteuid(65534) != 0) GTEST_SKIP() << "cannot give root up";
  collection::Scansione s;
  support::CicloMuto eventi;
  collection::ScansioneCartella(s, "C:\\T", eventi);
  ASSERT_EQ(root ? ::seteuid(0) : 0, 0);
  EXPECT_EQ(s.FileTrovati, (V{"C:\\T\\a.txt", "C:\\T\\zeta\\z.txt"}));
#endif
}

}  // namespace
