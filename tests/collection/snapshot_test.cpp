#include "collection/snapshot.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "esadecimale.h"
#include "finestra_prova.h"
#include "host/machine.h"
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

}  // namespace
