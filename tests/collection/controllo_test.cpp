#include "collection/controllo.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>

#include "collection/selezione.h"
#include "collection/snapshot.h"
#include "finestra_prova.h"
#include "formats/archivio.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "macchina_prova.h"

namespace {

namespace fs = std::filesystem;
using V = std::vector<std::string>;

// Both installations complete, the archive naming a level folder; the program folder is C:\Prog.
struct Installazioni {
  MacchinaProva m;
  FinestraProva f;

  Installazioni() {
    const std::string exe = std::string(CHECKORDL_DATI_PROVA) + "/versione/prova.exe";
    MacchinaProva::ScriviHost(m.C("Trle/tomb4.exe"), "MZ");
    MacchinaProva::ScriviHost(m.C("Trle/data/title.tr4"), std::string(100, 't'));
    MacchinaProva::ScriviHost(m.C("Trle/script.dat"), std::string(60, 's'));
    MacchinaProva::ScriviHost(m.C("Trle/ordeio.txt"), "ordeio");
    MacchinaProva::ScriviHost(m.C("Ordl/ordl2009.exe"), MacchinaProva::LeggiHost(exe));
    Preferenze("C:\\Ordl\\archivio.qlv");
    formats::ArchivioHeader h;
    h.SecondaryDir.Assegna("  C:\\Livelli  ");
    MacchinaProva::ScriviHost(m.C("Ordl/archivio.qlv"), formats::CodificaArchivioHeader(h));
    MacchinaProva::ScriviHost(m.C("Livelli/uno/a.tr4"), "a");
    fs::create_directories(m.C("Prog"));
    f.principale.CartellaProgramma = "C:\\Prog";
    f.nomeTrle.testo = "C:\\Trle";
    f.dirOrdl.testo = "C:\\Ordl";
    f.principale.InfoHeader.StartFolderTrle.Assegna("C:\\Trle");
  }
  void Preferenze(const std::string& pathArchivio) {
    formats::PrefRecord p;
    p.PathArchivio.Assegna(pathArchivio);
    MacchinaProva::ScriviHost(m.C("Ordl/ordelio.prf"), formats::CodificaPreferenze(p));
  }
  // Runs the check and gives the snapshot's member names with the header it carries.
  V Esegui(formats::InfoHeader* h = nullptr) {
    collection::Pul_Start_Click(f.principale);
    collection::ContenutoSnapshot c;
    fs::create_directories(m.C("Dati"));
    if (!collection::EstraiSnapshot(collection::kNomeSnapshot, "C:\\Dati", c)) return {"no snapshot"};
    if (h) *h = formats::DecodificaInfoHeader(MacchinaProva::LeggiHost(m.C("Dati/Infofile.bin")));
    return c.Nomi;
  }
};

const V kCompleti = {"C:\\Prog\\Infofile.bin", "C:\\Ordl\\ordelio.prf", "C:\\Ordl\\archivio.qlv",
                     "C:\\Prog\\DirArc.el",    "C:\\Prog\\TRLE.el",     "C:\\Prog\\ORDL.el",
                     "C:\\Trle\\ordeio.txt",   "C:\\Trle\\script.dat"};

// Everything below the installation folders and the level folder, names and bytes.
std::map<std::string, std::string> Impronta(const MacchinaProva& m) {
  std::map<std::string, std::string> tutto;
  for (const char* radice : {"Trle", "Ordl", "Livelli"})
    for (const auto& e : fs::recursive_directory_iterator(m.C(radice)))
      tutto[e.path().string()] = e.is_regular_file() ? MacchinaProva::LeggiHost(e.path().string()) : "<dir>";
  return tutto;
}

// kCompleti without the members at the given places.
V Senza(std::initializer_list<std::size_t> via) {
  V v;
  for (std::size_t k = 0; k < kCompleti.size(); ++k)
    if (std::find(via.begin(), via.end(), k) == via.end()) v.push_back(kCompleti[k]);
  return v;
}

// Runs that reach the snapshot: the members and bits for what is missing, the closing message, the window
// closed, the working files gone and the installations as they were.
TEST(Controllo, FileMancantiEBit) {
  struct Caso {
    const char* caso;
    std::function<void(Installazioni&)> prepara;
    std::int32_t flag;
    V membri;
  };
  const auto togli = [](const char* f) { return [f](Installazioni& i) { fs::remove(i.m.C(f)); }; };
  const Caso casi[] = {
      {"complete, over an older snapshot",
       [](Installazioni& i) { MacchinaProva::ScriviHost(i.m.C("INFO_ORDL.BIN"), "older"); }, 0, kCompleti},
      {"no ordelio.prf", togli("Ordl/ordelio.prf"), 0x001, Senza({1, 2, 3})},
      {"blank archive path", [](Installazioni& i) { i.Preferenze(""); }, 0x002, Senza({2, 3})},
      {"archive missing", togli("Ordl/archivio.qlv"), 0x002, Senza({2, 3})},
      {"no ordl2009.exe", togli("Ordl/ordl2009.exe"), 0x040, kCompleti},
      {"ordeio.txt only in the Ordelio folder",
       [](Installazioni& i) { fs::rename(i.m.C("Trle/ordeio.txt"), i.m.C("Ordl/ordeio.txt")); }, 0x080,
       Senza({6})},
      {"no script.dat", togli("Trle/script.dat"), 0x100, Senza({7})},
      {"archive folder blank",
       [](Installazioni& i) {
         MacchinaProva::ScriviHost(i.m.C("Ordl/archivio.qlv"), formats::CodificaArchivioHeader({}));
       },
       0, Senza({3})},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.caso);
    Installazioni i;
    c.prepara(i);
    const auto prima = Impronta(i.m);
    formats::InfoHeader h;
    EXPECT_EQ(i.Esegui(&h), c.membri);
    EXPECT_EQ(h.FlagErrori, c.flag);
    EXPECT_EQ(h.VersioneOrdelio.Testo(),
              c.flag == 0x040 ? std::string(256, '\0') : "1, 0, 0, 5" + std::string(246, ' '));
    EXPECT_EQ(h.StartFolderTrle.Testo().substr(0, 7), "C:\\Trle");
    ASSERT_EQ(i.f.messaggi.tutti.size(), 1u);
    EXPECT_TRUE(i.f.messaggi.tutti[0].starts_with(
        "plain: Scanning is complete\r\nNow you should send following file:\r\nC:\\INFO_ORDL.BIN ("));
    EXPECT_TRUE(i.f.messaggi.tutti[0].ends_with(")\r\nvia email to: " + collection::IndirizzoSupporto()));
    EXPECT_EQ(i.f.chiusure, 1);
    EXPECT_TRUE(fs::is_empty(i.m.C("Prog")));
    EXPECT_EQ(Impronta(i.m), prima);
  }
}

// Runs that stop short of a snapshot: an empty folder caption prompts and opens the dialog (cancelled
// here) with the window left open; a folder that cannot be written ends the program.
TEST(Controllo, CorseInterrotte) {
  struct Caso {
    std::function<void(Installazioni&)> prepara;
    V messaggi, dialoghi;
    int chiusure;
  };
  const Caso casi[] = {
      {[](Installazioni& i) { i.f.nomeTrle.testo.clear(); },
       {"plain: Please select folder where is installated the program Tomb Raider Level Editor"},
       {"Select TRLE folder"},
       0},
      {[](Installazioni& i) { i.f.dirOrdl.testo.clear(); },
       {"plain: Please select folder where is installated the program Ordelio"},
       {"Select folder where is Ordelio"},
       0},
      {[](Installazioni& i) { i.f.principale.CartellaProgramma = "C:\\Manca"; },
       {"critical: ERROR: I cann't write in current folder: C:\\Manca"},
       {},
       1},
      // The snapshot's name is taken by a folder.
      {[](Installazioni& i) { fs::create_directories(i.m.C("INFO_ORDL.BIN")); },
       {"critical: Error saving C:\\INFO_ORDL.BIN"},
       {},
       1},
  };
  for (const auto& c : casi) {
    Installazioni i;
    c.prepara(i);
    for (std::size_t k = 0; k < c.dialoghi.size(); ++k) i.f.dialogo.Rispondi(false, "");
    collection::Pul_Start_Click(i.f.principale);
    EXPECT_EQ(i.f.messaggi.tutti, c.messaggi);
    EXPECT_EQ(i.f.dialogo.titoli, c.dialoghi);
    EXPECT_EQ(i.f.chiusure, c.chiusure);
    EXPECT_TRUE(fs::is_empty(i.m.C("Prog")));
    EXPECT_FALSE(fs::is_regular_file(i.m.C("INFO_ORDL.BIN")));
  }
}

}  // namespace
