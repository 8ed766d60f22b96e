#include "collection/controllo.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>

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
    for (const auto& [nome, byte] :
         std::map<std::string, std::string>{{"Trle/tomb4.exe", "MZ"},
                                            {"Trle/data/title.tr4", "t"},
                                            {"Trle/script.dat", "s"},
                                            {"Trle/ordeio.txt", "o"},
                                            {"Livelli/uno/a.tr4", "a"},
                                            {"Ordl/ordl2009.exe", MacchinaProva::LeggiHost(exe)}})
      MacchinaProva::ScriviHost(m.C(nome), byte);
    Preferenze("C:\\Ordl\\archivio.qlv");
    formats::ArchivioHeader h;
    h.SecondaryDir.Assegna("  C:\\Livelli  ");
    MacchinaProva::ScriviHost(m.C("Ordl/archivio.qlv"), formats::CodificaArchivioHeader(h));
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
  // Everything below the installation folders and the level folder, names and bytes.
  std::map<std::string, std::string> Impronta() const {
    std::map<std::string, std::string> tutto;
    for (const char* radice : {"Trle", "Ordl", "Livelli"})
      for (const auto& e : fs::recursive_directory_iterator(m.C(radice)))
        tutto[e.path().string()] =
            e.is_regular_file() ? MacchinaProva::LeggiHost(e.path().string()) : "<dir>";
    return tutto;
  }
};

// The snapshot's members of a complete run, less those at the places given.
V Membri(std::initializer_list<std::size_t> via = {}) {
  const V tutti = {"C:\\Prog\\Infofile.bin", "C:\\Ordl\\ordelio.prf", "C:\\Ordl\\archivio.qlv",
                   "C:\\Prog\\DirArc.el",    "C:\\Prog\\TRLE.el",     "C:\\Prog\\ORDL.el",
                   "C:\\Trle\\ordeio.txt",   "C:\\Trle\\script.dat"};
  V v;
  for (std::size_t k = 0; k < tutti.size(); ++k)
    if (std::find(via.begin(), via.end(), k) == via.end()) v.push_back(tutti[k]);
  return v;
}

// Each run: the snapshot's members and the bits for what is missing, or no snapshot; the one message; a
// folder caption left empty opens the dialog (cancelled here) and keeps the window open, every other run
// closes it; the working files gone and the installations as they were.
TEST(Controllo, Corse) {
  const std::string fine =
      "plain: Scanning is complete\r\nNow you should send following file:\r\nC:\\INFO_ORDL.BIN (";
  const auto togli = [](const char* f) { return [f](Installazioni& i) { fs::remove(i.m.C(f)); }; };
  struct Caso {
    const char* caso;
    std::function<void(Installazioni&)> prepara;
    std::int32_t flag;
    V membri;  // none: no snapshot
    std::string messaggio;
    const char* dialogo = nullptr;
  };
  const Caso casi[] = {
      {"complete, over an older snapshot",
       [](Installazioni& i) { MacchinaProva::ScriviHost(i.m.C("INFO_ORDL.BIN"), "older"); }, 0, Membri(),
       fine},
      {"no ordelio.prf", togli("Ordl/ordelio.prf"), 0x001, Membri({1, 2, 3}), fine},
      {"blank archive path", [](Installazioni& i) { i.Preferenze(""); }, 0x002, Membri({2, 3}), fine},
      {"archive missing", togli("Ordl/archivio.qlv"), 0x002, Membri({2, 3}), fine},
      {"no ordl2009.exe", togli("Ordl/ordl2009.exe"), 0x040, Membri(), fine},
      {"ordeio.txt only in the Ordelio folder",
       [](Installazioni& i) { fs::rename(i.m.C("Trle/ordeio.txt"), i.m.C("Ordl/ordeio.txt")); }, 0x080,
       Membri({6}), fine},
      {"no script.dat", togli("Trle/script.dat"), 0x100, Membri({7}), fine},
      {"archive folder blank",
       [](Installazioni& i) {
         MacchinaProva::ScriviHost(i.m.C("Ordl/archivio.qlv"), formats::CodificaArchivioHeader({}));
       },
       0, Membri({3}), fine},
      {"no editor folder",
       [](Installazioni& i) { i.f.nomeTrle.testo.clear(); },
       0,
       {},
       "plain: Please select folder where is installated the program Tomb Raider Level Editor",
       "Select TRLE folder"},
      {"no Ordelio folder",
       [](Installazioni& i) { i.f.dirOrdl.testo.clear(); },
       0,
       {},
       "plain: Please select folder where is installated the program Ordelio",
       "Select folder where is Ordelio"},
      {"program folder missing",
       [](Installazioni& i) { i.f.principale.CartellaProgramma = "C:\\Manca"; },
       0,
       {},
       "critical: ERROR: I cann't write in current folder: C:\\Manca"},
      {"snapshot name taken by a folder",
       [](Installazioni& i) { fs::create_directories(i.m.C("INFO_ORDL.BIN")); },
       0,
       {},
       "critical: Error saving C:\\INFO_ORDL.BIN"},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.caso);
    Installazioni i;
    c.prepara(i);
    if (c.dialogo) i.f.dialogo.Rispondi(false, "");
    const auto prima = i.Impronta();
    collection::Pul_Start_Click(i.f.principale);
    fs::create_directories(i.m.C("Dati"));
    collection::ContenutoSnapshot s;
    const bool snapshot = collection::EstraiSnapshot(collection::kNomeSnapshot, "C:\\Dati", s);
    EXPECT_EQ(s.Nomi, snapshot ? c.membri : V{});
    EXPECT_EQ(snapshot, !c.membri.empty());
    EXPECT_EQ(i.f.dialogo.titoli, c.dialogo ? V{c.dialogo} : V{});
    ASSERT_EQ(i.f.messaggi.tutti.size(), 1u);
    EXPECT_EQ(i.f.messaggi.tutti[0].substr(0, c.messaggio.size()), c.messaggio);
    EXPECT_EQ(i.f.chiusure, c.dialogo ? 0 : 1);
    EXPECT_TRUE(fs::is_empty(i.m.C("Prog")));
    EXPECT_EQ(i.Impronta(), prima);
    if (!snapshot) continue;
    EXPECT_TRUE(i.f.messaggi.tutti[0].ends_with(")\r\nvia email to: " + collection::IndirizzoSupporto()));
    const auto h = formats::DecodificaInfoHeader(MacchinaProva::LeggiHost(i.m.C("Dati/Infofile.bin")));
    EXPECT_EQ(h.FlagErrori, c.flag);
    EXPECT_EQ(h.VersioneOrdelio.Testo(),
              c.flag == 0x040 ? std::string(256, '\0') : "1, 0, 0, 5" + std::string(246, ' '));
    EXPECT_EQ(h.StartFolderTrle.Testo().substr(0, 7), "C:\\Trle");
  }
}

}  // namespace
