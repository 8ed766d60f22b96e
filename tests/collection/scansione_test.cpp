#include "collection/scansione.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "finestra_prova.h"
#include "host/machine.h"
#include "macchina_prova.h"
#include "osservatore_allocazioni.h"

namespace {

using collection::CaricaElencoFile;
using collection::CreaElencoFile;
using collection::ElencoFile;
namespace fs = std::filesystem;
using V = std::vector<std::string>;

// Scans and reads the list back; the list must load for the test to mean anything.
ElencoFile Scansiona(const std::string& cartella, FinestraProva& f) {
  EXPECT_TRUE(CreaElencoFile("C:\\lista.el", cartella, f.principale)) << cartella;
  ElencoFile e;
  EXPECT_TRUE(CaricaElencoFile("C:\\lista.el", e)) << cartella;
  return e;
}

TEST(Scansione, FormatoAlByteEStatoDellaFinestra) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("A/b.txt"), "abc");
  FinestraProva f;
  ASSERT_TRUE(CreaElencoFile("C:\\x.el", "C:\\A", f.principale));
  const std::string atteso = Le32(1) + Le32(4) + "C:\\A" + Le32(6) + "\\b.txt" + Le32(3);
  ASSERT_EQ(atteso.size(), 26u);
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("x.el")), atteso);
  EXPECT_EQ(f.info.storia,
            (V{"Parsing folder \"C:\\A\" in progress...", "Saving file list in progress...", ""}));
  EXPECT_EQ(f.info.ridisegni, 3);
  EXPECT_EQ(f.barra.storia, (std::vector<double>{100, 0}));
  EXPECT_EQ(f.eventi.turni, 1);
  EXPECT_TRUE(f.messaggi.tutti.empty());
}

TEST(Scansione, InProfonditaPrimaIFileDellaCartella) {
  MacchinaProva m;
  for (const char* p : {"T/a", "T/b", "T/s1/c", "T/s1/s2/d", "T/s3/e"}) MacchinaProva::ScriviHost(m.C(p), "");
  fs::create_directories(m.C("T/vuota/ancora"));
  FinestraProva f;
  const ElencoFile e = Scansiona("C:\\T", f);
  ASSERT_EQ(e.NumeroFile, 5);
  // Files stand in the platform's order, so only what the walk decides is fixed: the folder's own files
  // first, then each sub-folder's whole tree in one piece.
  EXPECT_EQ(std::set<std::string>(e.NomiFile.begin(), e.NomiFile.begin() + 2),
            (std::set<std::string>{"\\a", "\\b"}));
  const V resto(e.NomiFile.begin() + 2, e.NomiFile.end());
  EXPECT_TRUE(resto == (V{"\\s1\\c", "\\s1\\s2\\d", "\\s3\\e"}) ||
              resto == (V{"\\s3\\e", "\\s1\\c", "\\s1\\s2\\d"}))
      << ::testing::PrintToString(resto);
  EXPECT_EQ(f.eventi.turni, 6);  // one turn per folder, empty ones too
}

TEST(Scansione, CosaEntraNellElenco) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("T/uno.txt"), "12345");
  MacchinaProva::ScriviHost(m.C("T/a.b/dentro.txt"), "abcd");
  MacchinaProva::ScriviHost(m.C("T/.nascosto"), "x");
  MacchinaProva::ScriviHost(m.C("T/.cartella_nascosta/x.txt"), "x");
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
  MacchinaProva::ScriviHost(m.C("T/attributo.txt"), "x");
  MacchinaProva::ScriviHost(m.C("T/sistema/y.txt"), "y");
  int err = 0;
  const bool conAttributi = host::ImpostaAttributi("C:\\T\\attributo.txt", host::kAttrHidden, &err) &&
                            host::ImpostaAttributi("C:\\T\\sistema", host::kAttrSystem, &err);

  FinestraProva f;
  const ElencoFile e = Scansiona("C:\\T", f);
  std::set<std::pair<std::string, std::int32_t>> atteso = {
      {"\\uno.txt", 5}, {"\\a.b\\dentro.txt", 4}, {"\\enorme.bin", 0}, {"\\collegato.txt", 5}};
  if (!conAttributi) atteso.insert({{"\\attributo.txt", 1}, {"\\sistema\\y.txt", 1}});
  std::set<std::pair<std::string, std::int32_t>> avuto;
  for (std::int32_t i = 0; i < e.NumeroFile; ++i) avuto.emplace(e.NomiFile[i], e.DimensioniFile[i]);
  EXPECT_EQ(avuto, atteso);
  EXPECT_EQ(e.NumeroFile, static_cast<std::int32_t>(atteso.size()));
  // T and a.b (and sistema): the link is not a folder to walk.
  EXPECT_EQ(f.eventi.turni, conAttributi ? 2 : 3);
}

TEST(Scansione, NomiRelativiAllaCartellaComeData) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("Dati/Sotto/f.txt"), "f");
  const std::pair<std::string, std::string> casi[] = {
      {"c:\\dATI", "\\Sotto\\f.txt"},  // the platform's own form of the name differs in case
      {"C:\\Dati\\", "Sotto\\f.txt"},
#ifndef _WIN32  // the machine's own C: holds the system too
      {"C:", "\\Dati\\Sotto\\f.txt"},
#endif
  };
  for (const auto& [cartella, nome] : casi) {
    FinestraProva f;
    const ElencoFile e = Scansiona(cartella, f);
    EXPECT_EQ(e.CartellaBase, cartella);
    EXPECT_EQ(e.NomiFile, V{nome}) << cartella;
  }
  // Off the usual path: only the first occurrence goes, found wherever it stands; none, nothing goes.
  EXPECT_EQ(collection::NomeRelativo("C:\\X\\C:\\X\\y", "C:\\X"), "\\C:\\X\\y");
  EXPECT_EQ(collection::NomeRelativo("D:\\Su\\A\\A\\z", "a\\a"), "D:\\Su\\\\z");
  EXPECT_EQ(collection::NomeRelativo("C:\\altro\\f", "C:\\A\\"), "C:\\altro\\f");
}

TEST(Scansione, UnaChiamataFallitaNonLasciaIlVecchioElenco) {
  struct Caso {
    std::string nomeFile, cartella;
    V didascalie;
  };
  const Caso casi[] = {
      {"C:\\vecchio.el", "", {}},
      {"C:\\vecchio.el", "C:\\T\\f.txt", {}},  // a file is no folder
      // The list's name is taken by a folder: the scan runs, the writing fails.
      {"C:\\Cartella.el",
       "C:\\T",
       {"Parsing folder \"C:\\T\" in progress...", "Saving file list in progress...", ""}},
  };
  for (const auto& c : casi) {
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("T/f.txt"), "f");
    MacchinaProva::ScriviHost(m.C("vecchio.el"), "old");
    fs::create_directories(m.C("Cartella.el"));
    FinestraProva f;
    EXPECT_FALSE(CreaElencoFile(c.nomeFile, c.cartella, f.principale)) << c.cartella;
    EXPECT_EQ(MacchinaProva::EsisteHost(m.C("vecchio.el")), c.nomeFile != "C:\\vecchio.el") << c.cartella;
    EXPECT_EQ(f.info.storia, c.didascalie) << c.cartella;
    EXPECT_TRUE(f.messaggi.tutti.empty());
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

std::string Nome(const std::string& n) {
  return Le32(static_cast<std::int32_t>(n.size())) + n;
}

TEST(ElencoOstile, CaricaSoloQuelloCheIlFileContiene) {
  const std::int32_t kMax = 0x7FFFFFFF;
  const std::string testa = Nome("C:\\B");
  const std::pair<std::string, bool> casi[] = {
      {Le32(2) + testa + Nome("\\a") + Nome("\\bb") + Le32(1) + Le32(0), true},
      {Le32(0) + testa, true},
      {Le32(0), false},                                             // no base
      {Le32(-1) + testa, false},                                    // negative count
      {Le32(kMax) + testa + Nome("\\a") + Le32(1), false},          // absurd count
      {Le32(0) + Le32(kMax) + "C:\\B", false},                      // base length past the end
      {Le32(0) + Le32(-4) + "C:\\B", false},                        // negative base length
      {Le32(1) + testa + Le32(kMax - 8) + "\\a" + Le32(1), false},  // name length past the end
      {Le32(2) + testa + Le32(10) + "\\a" + Nome("\\b") + Le32(1) + Le32(2), false},  // name eating the sizes
      {Le32(2) + testa + Nome("\\a") + Nome("\\b") + Le32(1) + "\x02", false},        // truncated sizes
      {Le32(1) + testa + Nome("\\a") + Le32(-1), false},                              // negative size
      {Le32(1) + testa + Nome("\\a") + Le32(1) + "x", false},                         // trailing bytes
  };
  for (const auto& [byte, risultato] : casi) {
    SCOPED_TRACE(::testing::PrintToString(byte));
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("l.el"), byte);
    ElencoFile e;
    e.NumeroFile = 9;
    bool r = false;
    std::size_t allocazione = 0;
    {
      OsservaAllocazioni o;
      r = CaricaElencoFile("C:\\l.el", e);
      allocazione = o.Massima();
    }
    EXPECT_EQ(r, risultato);
    EXPECT_LT(allocazione, std::size_t{1} << 20);
    if (!r) {
      EXPECT_TRUE(e.NumeroFile == 0 && e.NomiFile.empty() && e.DimensioniFile.empty() &&
                  e.CartellaBase.empty());
    }
  }
  ElencoFile e;
  EXPECT_FALSE(CaricaElencoFile("C:\\manca.el", e));
}

TEST(ElencoFile, IlLettoreRileggeLoScrittore) {
  MacchinaProva m;
  ElencoFile e;
  e.CartellaBase = "C:\\Giochi\\Trle";
  for (int i = 0; i < 3000; ++i) {  // more than one piece of the reader's buffer
    e.NomiFile.push_back("\\data\\f" + std::to_string(i) +
                         std::string(static_cast<std::size_t>(i % 50), 'x'));
    e.DimensioniFile.push_back(i * 7);
  }
  e.NumeroFile = 3000;
  ASSERT_TRUE(collection::ScriviElencoFile("C:\\r.le", e));
  ElencoFile letto;
  BarraProva barra;
  ASSERT_TRUE(CaricaElencoFile("C:\\r.le", letto, &barra));
  const auto campi = [](const ElencoFile& x) {
    return std::tie(x.NumeroFile, x.CartellaBase, x.NomiFile, x.DimensioniFile);
  };
  EXPECT_TRUE(campi(letto) == campi(e));
  EXPECT_EQ(barra.valore, 100);
}

}  // namespace
