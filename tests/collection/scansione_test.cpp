#include "collection/scansione.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
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

using Voci = std::vector<std::pair<std::string, std::int32_t>>;

Voci VociDi(const ElencoFile& e) {
  Voci v;
  for (std::int32_t i = 0; i < e.NumeroFile; ++i) v.emplace_back(e.NomiFile[i], e.DimensioniFile[i]);
  return v;
}

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
  const std::string atteso = std::string("\x01\x00\x00\x00\x04\x00\x00\x00", 8) + "C:\\A" +
                             std::string("\x06\x00\x00\x00", 4) + "\\b.txt" +
                             std::string("\x03\x00\x00\x00", 4);
  ASSERT_EQ(atteso.size(), 26u);
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("x.el")), atteso);
  EXPECT_EQ(f.info.storia, (std::vector<std::string>{"Parsing folder \"C:\\A\" in progress...",
                                                     "Saving file list in progress...", ""}));
  EXPECT_EQ(f.info.ridisegni, 3);
  EXPECT_EQ(f.barra.storia, (std::vector<double>{100, 0}));
  EXPECT_EQ(f.eventi.turni, 1);
  EXPECT_TRUE(f.messaggi.tutti.empty());
}

TEST(Scansione, AlberoSenzaFile) {
  MacchinaProva m;
  fs::create_directories(m.C("Vuota/sotto/ancora"));
  FinestraProva f;
  ASSERT_TRUE(CreaElencoFile("C:\\v.el", "C:\\Vuota", f.principale));
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("v.el")), Le32(0) + Le32(8) + "C:\\Vuota");
  EXPECT_EQ(f.eventi.turni, 3);  // one turn per folder, empty ones too
  EXPECT_EQ(f.barra.storia, (std::vector<double>{0}));
}

TEST(Scansione, InProfonditaPrimaIFileDellaCartella) {
  MacchinaProva m;
  for (const char* p : {"T/a", "T/b", "T/s1/c", "T/s1/s2/d", "T/s3/e"}) MacchinaProva::ScriviHost(m.C(p), "");
  FinestraProva f;
  const ElencoFile e = Scansiona("C:\\T", f);
  ASSERT_EQ(e.NumeroFile, 5);
  // Files stand in the platform's order, so only what the walk decides is fixed: the folder's own files
  // first, then each sub-folder's whole tree in one piece.
  EXPECT_EQ(std::set<std::string>(e.NomiFile.begin(), e.NomiFile.begin() + 2),
            (std::set<std::string>{"\\a", "\\b"}));
  const std::vector<std::string> resto(e.NomiFile.begin() + 2, e.NomiFile.end());
  const std::vector<std::string> s1Primo = {"\\s1\\c", "\\s1\\s2\\d", "\\s3\\e"};
  const std::vector<std::string> s3Primo = {"\\s3\\e", "\\s1\\c", "\\s1\\s2\\d"};
  EXPECT_TRUE(resto == s1Primo || resto == s3Primo) << ::testing::PrintToString(resto);
  EXPECT_EQ(f.eventi.turni, 4);
}

TEST(Scansione, CosaEntraNellElenco) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("T/uno.txt"), "12345");
  MacchinaProva::ScriviHost(m.C("T/vuoto.bin"), "");
  MacchinaProva::ScriviHost(m.C("T/sola_lettura.txt"), "ro");
  ::chmod(m.C("T/sola_lettura.txt").c_str(), 0444);
  MacchinaProva::ScriviHost(m.C("T/a.b/dentro.txt"), "abcd");
  MacchinaProva::ScriviHost(m.C("T/.nascosto"), "x");
  MacchinaProva::ScriviHost(m.C("T/.cartella_nascosta/x.txt"), "x");
  // Too large for the 32-bit field: recorded as 0. Sparse, so it costs no disk.
  MacchinaProva::ScriviHost(m.C("T/enorme.bin"), "");
  fs::resize_file(m.C("T/enorme.bin"), std::uintmax_t{3} << 30);
  // Links: a loop to the parent is not entered, a link to a file is listed with its target's size, a
  // dangling one cannot be read and is left out.
  fs::create_directory_symlink("..", m.C("T/a.b/giro"));
  fs::create_symlink("uno.txt", m.C("T/collegato.txt"));
  fs::create_symlink("manca.txt", m.C("T/rotto.txt"));
  // Hidden by attribute, where the file system takes extended attributes.
  MacchinaProva::ScriviHost(m.C("T/attributo.txt"), "x");
  MacchinaProva::ScriviHost(m.C("T/sistema/y.txt"), "y");
  int err = 0;
  const bool conAttributi = host::ImpostaAttributi("C:\\T\\attributo.txt", host::kAttrHidden, &err) &&
                            host::ImpostaAttributi("C:\\T\\sistema", host::kAttrSystem, &err);

  FinestraProva f;
  const ElencoFile e = Scansiona("C:\\T", f);
  Voci atteso = {{"\\uno.txt", 5},         {"\\vuoto.bin", 0},  {"\\sola_lettura.txt", 2},
                 {"\\a.b\\dentro.txt", 4}, {"\\enorme.bin", 0}, {"\\collegato.txt", 5}};
  if (!conAttributi) atteso.insert(atteso.end(), {{"\\attributo.txt", 1}, {"\\sistema\\y.txt", 1}});
  Voci avuto = VociDi(e);
  std::sort(avuto.begin(), avuto.end());
  std::sort(atteso.begin(), atteso.end());
  EXPECT_EQ(avuto, atteso);
  EXPECT_EQ(f.eventi.turni,
            conAttributi ? 2 : 3);  // T and a.b (and sistema): the link is not a folder to walk
}

TEST(Scansione, NomiRelativiAllaCartellaComeData) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("Dati/Sotto/f.txt"), "f");
  struct Caso {
    std::string cartella;
    std::string nome;
  };
  const Caso casi[] = {
      {"C:\\Dati", "\\Sotto\\f.txt"},
      {"c:\\dATI", "\\Sotto\\f.txt"},  // the platform's own form of the name
                                       // differs in case
      {"C:\\Dati\\", "Sotto\\f.txt"},
      {"C:\\Dati\\Sotto", "\\f.txt"},
      {"C:", "\\Dati\\Sotto\\f.txt"},
  };
  for (const auto& c : casi) {
    FinestraProva f;
    const ElencoFile e = Scansiona(c.cartella, f);
    EXPECT_EQ(e.CartellaBase, c.cartella);
    EXPECT_EQ(e.NomiFile, std::vector<std::string>{c.nome}) << c.cartella;
  }
}

TEST(Scansione, NomeRelativo) {
  struct Caso {
    const char* percorso;
    const char* base;
    const char* atteso;
  };
  const Caso casi[] = {
      {"C:\\A\\b.txt", "C:\\A", "\\b.txt"},        {"C:\\A\\b.txt", "c:\\a", "\\b.txt"},
      {"C:\\X\\C:\\X\\y", "C:\\X", "\\C:\\X\\y"},  // only the first occurrence goes
      {"D:\\Su\\A\\A\\z", "a\\a", "D:\\Su\\\\z"},  // found wherever it stands
      {"C:\\altro\\f", "C:\\A\\", "C:\\altro\\f"},
  };
  for (const auto& c : casi) EXPECT_EQ(collection::NomeRelativo(c.percorso, c.base), c.atteso) << c.percorso;
}

TEST(Scansione, UnaChiamataFallitaNonLasciaIlVecchioElenco) {
  struct Caso {
    const char* nomeFile;
    const char* cartella;
    std::vector<std::string> didascalie;
  };
  const std::vector<std::string> finoAlSalvataggio = {"Parsing folder \"C:\\T\" in progress...",
                                                      "Saving file list in progress...", ""};
  const Caso casi[] = {
      {"C:\\vecchio.el", "", {}},
      {"C:\\vecchio.el", "C:\\Manca", {}},
      {"C:\\vecchio.el", "C:\\T\\f.txt", {}},           // a file is no folder
      {"C:\\vecchio.el", "D:\\T", {}},                  // drive not ready
      {"C:\\Cartella.el", "C:\\T", finoAlSalvataggio},  // the name is taken by a folder
      {"C:\\Manca\\x.el", "C:\\T", finoAlSalvataggio},
  };
  for (const auto& c : casi) {
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("T/f.txt"), "f");
    MacchinaProva::ScriviHost(m.C("vecchio.el"), "old");
    fs::create_directories(m.C("Cartella.el"));
    FinestraProva f;
    EXPECT_FALSE(CreaElencoFile(c.nomeFile, c.cartella, f.principale)) << c.cartella;
    if (std::string(c.nomeFile) == "C:\\vecchio.el") {
      EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("vecchio.el"))) << c.cartella;
    }
    EXPECT_EQ(f.info.storia, c.didascalie) << c.cartella;
    EXPECT_TRUE(f.messaggi.tutti.empty());
  }
}

TEST(Scansione, BarraUnRidisegnoPerPercento) {
  MacchinaProva m;
  for (int i = 0; i < 7; ++i) MacchinaProva::ScriviHost(m.C("Sette/" + std::to_string(i)), "");
  for (int i = 0; i < 250; ++i) MacchinaProva::ScriviHost(m.C("Molti/" + std::to_string(i)), "");
  FinestraProva sette;
  Scansiona("C:\\Sette", sette);
  EXPECT_EQ(sette.barra.storia, (std::vector<double>{14, 28, 42, 57, 71, 85, 100, 0}));
  FinestraProva molti;
  Scansiona("C:\\Molti", molti);
  std::vector<double> atteso;
  for (int p = 1; p <= 100; ++p) atteso.push_back(p);
  atteso.push_back(0);
  EXPECT_EQ(molti.barra.storia, atteso);
  EXPECT_EQ(molti.barra.ridisegni, 101);
}

TEST(Scansione, CartellaIlleggibileNonFermaIlGiro) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("T/a.txt"), "a");
  MacchinaProva::ScriviHost(m.C("T/chiusa/segreto.txt"), "s");
  MacchinaProva::ScriviHost(m.C("T/zeta/z.txt"), "z");
  ::chmod(m.C("T/chiusa").c_str(), 0);
  // Permissions do not stop root: the walk then runs in a child that has given root up.
  ::chmod(m.Prefisso().c_str(), 0755);
  int tubo[2];
  ASSERT_EQ(::pipe(tubo), 0);
  const pid_t figlio = ::fork();
  ASSERT_GE(figlio, 0);
  if (figlio == 0) {
    ::close(tubo[0]);
    if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(3);
    collection::Scansione s;
    support::CicloMuto eventi;
    collection::ScansioneCartella(s, "C:\\T", eventi);
    std::string fuori;
    for (const auto& p : s.FileTrovati) fuori += p + "\n";
    if (::write(tubo[1], fuori.data(), fuori.size()) != static_cast<ssize_t>(fuori.size())) ::_exit(4);
    ::_exit(0);
  }
  ::close(tubo[1]);
  std::string letto;
  char buf[256];
  for (ssize_t n; (n = ::read(tubo[0], buf, sizeof buf)) > 0;) letto.append(buf, static_cast<std::size_t>(n));
  ::close(tubo[0]);
  int stato = 0;
  ::waitpid(figlio, &stato, 0);
  if (WIFEXITED(stato) && WEXITSTATUS(stato) == 3) GTEST_SKIP() << "cannot give root up";
  ASSERT_TRUE(WIFEXITED(stato) && WEXITSTATUS(stato) == 0);
  EXPECT_EQ(letto, "C:\\T\\a.txt\nC:\\T\\zeta\\z.txt\n");
}

std::string Nome(const std::string& n) {
  return Le32(static_cast<std::int32_t>(n.size())) + n;
}

TEST(ElencoOstile, CaricaSoloQuelloCheIlFileContiene) {
  const std::int32_t kMax = 0x7FFFFFFF;
  const std::string testa = Nome("C:\\B");
  struct Caso {
    const char* caso;
    std::string byte;
    bool risultato;
  };
  const Caso casi[] = {
      {"valid", Le32(2) + testa + Nome("\\a") + Nome("\\bb") + Le32(1) + Le32(0), true},
      {"valid and empty", Le32(0) + testa, true},
      {"empty file", "", false},
      {"three bytes", std::string("\x01\x00\x00", 3), false},
      {"no base", Le32(0), false},
      {"negative count", Le32(-1) + testa, false},
      {"absurd count", Le32(kMax) + testa + Nome("\\a") + Le32(1), false},
      {"count past the entries", Le32(3) + testa + Nome("\\a") + Nome("\\b") + Le32(1) + Le32(2), false},
      {"base length past the end", Le32(0) + Le32(kMax) + "C:\\B", false},
      {"negative base length", Le32(0) + Le32(-4) + "C:\\B", false},
      {"name length past the end", Le32(1) + testa + Le32(kMax - 8) + "\\a" + Le32(1), false},
      {"name eating the sizes", Le32(2) + testa + Le32(10) + "\\a" + Nome("\\b") + Le32(1) + Le32(2), false},
      {"negative name length", Le32(1) + testa + Le32(-1) + Le32(1), false},
      {"truncated sizes", Le32(2) + testa + Nome("\\a") + Nome("\\b") + Le32(1) + "\x02", false},
      {"negative size", Le32(1) + testa + Nome("\\a") + Le32(-1), false},
      {"trailing bytes", Le32(1) + testa + Nome("\\a") + Le32(1) + "x", false},
  };
  for (const auto& c : casi) {
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("l.el"), c.byte);
    ElencoFile e;
    e.NumeroFile = 9;
    bool r = false;
    std::size_t allocazione = 0;
    {
      OsservaAllocazioni o;
      r = CaricaElencoFile("C:\\l.el", e);
      allocazione = o.Massima();
    }
    EXPECT_EQ(r, c.risultato) << c.caso;
    EXPECT_LT(allocazione, std::size_t{1} << 20) << c.caso;
    if (!r) {
      EXPECT_EQ(e.NumeroFile, 0) << c.caso;
      EXPECT_TRUE(e.NomiFile.empty() && e.DimensioniFile.empty() && e.CartellaBase.empty()) << c.caso;
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
  EXPECT_EQ(letto.NumeroFile, e.NumeroFile);
  EXPECT_EQ(letto.CartellaBase, e.CartellaBase);
  EXPECT_EQ(letto.NomiFile, e.NomiFile);
  EXPECT_EQ(letto.DimensioniFile, e.DimensioniFile);
  EXPECT_EQ(barra.valore, 100);
}

}  // namespace
