#include "collection/snapshot.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#endif

#include <filesystem>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "esadecimale.h"
#include "finestra_prova.h"
#include "host/macchina.h"
#include "illeggibile.h"
#include "macchina_prova.h"
#include "osservatore_allocazioni.h"
#include "support/files.h"

namespace {

using collection::ContenutoSnapshot;
namespace fs = std::filesystem;
using V = std::vector<std::string>;

bool Salva(const std::string& nome, const V& membri) {
  support::DidascaliaMuta d;
  support::BarraMuta b;
  return collection::SalvaSnapshot(nome, membri, static_cast<std::int32_t>(membri.size()), d, b);
}

// Files below `radice`, with their sizes; `profondo` false: its top level only.
std::set<std::string> Albero(const std::string& radice, bool profondo = true) {
  std::set<std::string> tutti;
  for (auto it = fs::recursive_directory_iterator(radice); it != fs::end(it); ++it) {
    if (!profondo) it.disable_recursion_pending();
    std::string voce = fs::relative(it->path(), radice).generic_string();
    // Appended, not prepended: GCC 12 warns falsely of an overlapping copy at -O3 on "x" + string (its
    // bug 105329).
    if (it->is_regular_file()) voce.append(":").append(std::to_string(it->file_size()));
    tutti.insert(voce);
  }
  return tutti;
}

// The table, then the bodies; members that are blank or missing left out; an older read-only snapshot
// replaced. Unpacked, each member lands under its last component.
TEST(Snapshot, FormatoEAndataERitorno) {
  MacchinaProva m;
  std::string grande(3 * 1024 * 1024 + 17, '\0');  // more than one piece of the copy
  for (std::size_t i = 0; i < grande.size(); ++i) grande[i] = static_cast<char>(i * 7 + i / 1000);
  MacchinaProva::ScriviHost(m.C("Trle/script.dat"), grande);
  MacchinaProva::ScriviHost(m.C("A/abc.txt"), "abc");
  MacchinaProva::ScriviHost(m.C("Trle/vuoto.txt"), "");
  MacchinaProva::ScriviHost(m.C("Ordl/ordelio.prf"), "prima");
  MacchinaProva::ScriviHost(m.C("Ordl/sub/ORDELIO.PRF"), "seconda");
  MacchinaProva::ScriviHost(m.C("INFO_ORDL.BIN"), "an older one");
  ASSERT_TRUE(host::ImpostaAttributi("C:\\INFO_ORDL.BIN", host::kAttrReadOnly, nullptr));
  DidascaliaProva d;
  BarraProva b;
  const V membri = {"C:\\A\\abc.txt",
                    "",
                    "C:\\manca.txt",
                    "C:\\Trle\\script.dat",
                    "C:\\Trle\\vuoto.txt",
                    "C:\\Ordl\\ordelio.prf",
                    "C:\\Ordl\\sub\\ORDELIO.PRF"};
  ASSERT_TRUE(collection::SalvaSnapshot("C:\\INFO_ORDL.BIN", membri, 7, d, b));
  std::string atteso = Le32(5);
  for (const auto& [nome, corpo] : std::vector<std::pair<std::string, std::string>>{{membri[0], "abc"},
                                                                                    {membri[3], grande},
                                                                                    {membri[4], ""},
                                                                                    {membri[5], "prima"},
                                                                                    {membri[6], "seconda"}})
    atteso +=
        Le32(static_cast<std::int32_t>(nome.size())) + nome + Le32(static_cast<std::int32_t>(corpo.size()));
  atteso += "abc" + grande + "prima" + "seconda";
  EXPECT_TRUE(MacchinaProva::LeggiHost(m.C("INFO_ORDL.BIN")) == atteso);
  EXPECT_EQ(d.storia, (V{"Saving ordl_info file", ""}));
  EXPECT_EQ(d.ridisegni, 2);
  EXPECT_EQ(b.storia, (std::vector<double>{20, 40, 60, 80, 100, 0}));

  fs::create_directories(m.C("Dati"));
  ContenutoSnapshot c;
  ASSERT_TRUE(collection::EstraiSnapshot("C:\\INFO_ORDL.BIN", "C:\\Dati", c));
  EXPECT_EQ(c.Dimensioni, (std::vector<std::int32_t>{3, static_cast<std::int32_t>(grande.size()), 0, 5, 7}));
  EXPECT_TRUE(MacchinaProva::LeggiHost(m.C("Dati/script.dat")) == grande);
  // Same last component: one target, the later wins (names match without regard to case).
  EXPECT_EQ(Albero(m.C("Dati")),
            (std::set<std::string>{"abc.txt:3", "script.dat:3145745", "vuoto.txt:0", "ordelio.prf:7"}));
}

TEST(Snapshot, TabellaECorpiConcordanoSempre) {
  MacchinaProva m;
  // Files whose measured length is not what a read gives: a kernel attribute (4096 measured, fewer read)
  // shrinks, a process status file (0 measured, more read) grows.
  const std::string cala = "Z:\\sys\\kernel\\mm\\transparent_hugepage\\enabled";
  const std::string cresce = "Z:\\proc\\self\\status";
  if (!support::FileExists(cala) || !support::FileExists(cresce)) GTEST_SKIP() << "no sysfs or procfs";
  MacchinaProva::ScriviHost(m.C("dopo.txt"), "dopo");
  ASSERT_TRUE(Salva("C:\\s.bin", {cala, cresce, "C:\\dopo.txt"}));
  fs::create_directories(m.C("Dati"));
  ContenutoSnapshot c;
  ASSERT_TRUE(collection::EstraiSnapshot("C:\\s.bin", "C:\\Dati", c));
  ASSERT_EQ(c.Numero, 3);
  const std::string corpo = MacchinaProva::LeggiHost(m.C("Dati/enabled"));
  EXPECT_EQ(corpo.size(), static_cast<std::size_t>(c.Dimensioni[0]));
  EXPECT_EQ(corpo.back(), '\0');
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("Dati/status")), "");
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("Dati/dopo.txt")), "dopo");
}

// Snapshots from outside (tests/data/snapshot/ostili.hex): none may write outside the target folder,
// crash, or allocate anything near the sizes it claims.
TEST(Snapshot, OstiliNonFannoDanniFuoriDallaCartella) {
  // On Windows C:\ is the machine's own drive; a name that climbs out can only land at the top of it.
  const bool tuttoIlDrive = fs::path::preferred_separator == '/';
  const auto casi = LeggiCasi("snapshot/ostili.hex");
  ASSERT_EQ(casi.size(), 14u);
  for (const auto& c : casi) {
    SCOPED_TRACE(c.campi[0]);
    MacchinaProva m;
    fs::create_directories(m.C("Dati"));
    MacchinaProva::ScriviHost(m.C("snap.bin"), c.byte);
    const auto fuoriPrima = Albero(m.C(""), tuttoIlDrive);
    ContenutoSnapshot contenuto;
    std::optional<OsservaAllocazioni> osserva(std::in_place);
    EXPECT_EQ(collection::EstraiSnapshot("C:\\snap.bin", "C:\\Dati", contenuto), c.campi[1] == "1");
    EXPECT_LT(osserva->Massima(), std::size_t{4} << 20);
    osserva.reset();
    EXPECT_EQ(Albero(m.C("Dati")), c.campi[2].empty() ? std::set<std::string>{} : std::set{c.campi[2]});
    auto fuoriDopo = Albero(m.C(""), tuttoIlDrive);
    std::erase_if(fuoriDopo, [](const std::string& s) { return s.starts_with("Dati/"); });
    EXPECT_EQ(fuoriDopo, fuoriPrima);
    if (!m.Prefisso().empty()) {
      EXPECT_EQ(Albero(m.Prefisso() + "/dosdevices").size(), 2u);
    }
  }
}

// A member that exists but cannot be read is left out, and named with the reason the platform gave: held
// open without sharing on Windows, a pipe (no file to read) on the host. The members around it are packed.
TEST(Snapshot, MembriIlleggibiliNominati) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("prima.txt"), "prima");
  MacchinaProva::ScriviHost(m.C("dopo.txt"), "dopo");
  support::DidascaliaMuta d;
  support::BarraMuta b;
  std::vector<collection::MembroEscluso> esclusi;
  {
    const Illeggibile tenuto(m.C("tenuto.txt"));
    const V membri = {"C:\\prima.txt", "C:\\tenuto.txt", "C:\\manca.txt", "C:\\dopo.txt"};
    EXPECT_TRUE(collection::SalvaSnapshot("C:\\s.bin", membri, 4, d, b, &esclusi));
  }
  ASSERT_EQ(esclusi.size(), 1u);
  EXPECT_EQ(esclusi[0].percorso, "C:\\tenuto.txt");
  EXPECT_EQ(esclusi[0].errore, Illeggibile::kErrore);
  collection::LettoreSnapshot l;
  ASSERT_TRUE(l.Apri("C:\\s.bin"));
  EXPECT_EQ(l.Tabella().Nomi, (V{"C:\\prima.txt", "C:\\dopo.txt"}));

  EXPECT_EQ(collection::MessaggioEsclusi({}), "");
  EXPECT_EQ(
      collection::MessaggioEsclusi({{"C:\\a", host::kErrFileAlreadyOpen},
                                    {"C:\\b", host::kErrPermissionDenied},
                                    {"C:\\c", host::kErrPathFileAccess}}),
      "These files could not be read and are not in the snapshot:\r\n"
      "C:\\a (another program holds it open)\r\nC:\\b (access is denied)\r\nC:\\c (it cannot be read)\r\n"
      "Close Ordelio and the level editor, then run the check again.");
}

// A member made in memory goes behind the files, made again once a file is left out so that it names it;
// one that gives no bytes, or throws, leaves the files packed as they would be without it.
TEST(Snapshot, MembroGenerato) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("a.txt"), "abc");
  const Illeggibile tenuto(m.C("tenuto.txt"));
  const struct {
    const char* come;
    V nomi;
  } righe[] = {
      {"made", {"C:\\a.txt", "C:\\Prog\\fatto.json"}}, {"empty", {"C:\\a.txt"}}, {"throws", {"C:\\a.txt"}}};
  for (const auto& r : righe) {
    SCOPED_TRACE(r.come);
    int volte = 0;
    const collection::MembroGenerato generato{
        "C:\\Prog\\fatto.json", [&](const V& packati, const std::vector<collection::MembroEscluso>& esclusi) {
          ++volte;
          if (std::string(r.come) == "throws") throw std::runtime_error("no");
          if (std::string(r.come) == "empty") return std::string();
          std::string corpo = "packed";
          for (const auto& p : packati) corpo += " " + p;
          corpo += " out";
          for (const auto& e : esclusi) corpo += " " + e.percorso;
          return corpo;
        }};
    support::DidascaliaMuta d;
    support::BarraMuta b;
    std::vector<collection::MembroEscluso> esclusi;
    ASSERT_TRUE(collection::SalvaSnapshot("C:\\s.bin", {"C:\\tenuto.txt", "C:\\a.txt"}, 2, d, b, &esclusi,
                                          &generato));
    EXPECT_EQ(volte, 2);
    EXPECT_EQ(esclusi.size(), 1u);
    collection::SnapshotInMemoria s;
    ASSERT_TRUE(collection::DecodificaSnapshot(MacchinaProva::LeggiHost(m.C("s.bin")), s));
    EXPECT_EQ(s.tabella.Nomi, r.nomi);
    EXPECT_EQ(s.corpi.back(), r.nomi.size() == 2 ? "packed C:\\a.txt out C:\\tenuto.txt" : "abc");
  }
}

// A folder whose name the code page cannot show is named with '?' for each such letter, and the snapshot is
// written there, replaced and read back by that name; a '?' that no entry of its folder matches names
// nothing.
TEST(Snapshot, CartellaFuoriDalCodice) {
  MacchinaProva m;
#ifdef _WIN32
  ASSERT_TRUE(::CreateDirectoryW(L"C:\\Scrivania \u0141\u00f3d\u017a", nullptr));
  const fs::path cartella(L"C:\\Scrivania \u0141\u00f3d\u017a");
#else
  const fs::path cartella(m.C("Scrivania Łódź"));
  fs::create_directories(cartella);
#endif
  MacchinaProva::ScriviHost(m.C("a.txt"), "abc");
  const std::string nome = "C:\\Scrivania ?\363d?\\s.bin";
  for (int volta = 0; volta < 2; ++volta) ASSERT_TRUE(Salva(nome, {"C:\\a.txt"})) << volta;
  EXPECT_EQ(std::distance(fs::directory_iterator(cartella), fs::directory_iterator()), 1);
  EXPECT_EQ(fs::file_size(cartella / "s.bin"), 23u);
  int err = 0;
  EXPECT_EQ(host::LunghezzaFile(nome, &err), 23);
  EXPECT_TRUE(support::FileExists(nome));
  {
    collection::LettoreSnapshot l;
    ASSERT_TRUE(l.Apri(nome));
    EXPECT_EQ(l.Tabella().Nomi, V{"C:\\a.txt"});
  }
  const std::string nessuna = "C:\\Scrivania ?\363dx?\\s.bin";
  EXPECT_FALSE(Salva(nessuna, {"C:\\a.txt"}));
  EXPECT_EQ(host::LeggiAttributi(nessuna, &err), -1);
  EXPECT_EQ(err, host::kErrBadFileName);
  fs::remove_all(cartella);
}

}  // namespace
