#include "collection/selezione.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "finestra_prova.h"
#include "macchina_prova.h"

namespace {

namespace fs = std::filesystem;

const char kNonEditor[] = "critical: This is not a correct Level Editor folder: ";
const char kNonOrdelio[] = "critical: In this folder is missing file ordl2009.exe this cannot be ORDL folder";

// Files (or folders, ending in "/") to make below C:\.
void Crea(const MacchinaProva& m, const std::vector<std::string>& voci) {
  for (const auto& v : voci) {
    if (v.back() == '/')
      fs::create_directories(m.C(v));
    else
      MacchinaProva::ScriviHost(m.C(v), "x");
  }
}

TEST(Selezione, CartelleAccettateERifiutate) {
  struct Caso {
    bool trle;  // the editor's button, else Ordelio's
    std::vector<std::string> voci;
    std::string scelta;  // PathDir as the dialog gives it
    bool accettata;
    bool ok = true;  // false: Cancel, which changes nothing and shows nothing
  };
  const Caso casi[] = {
      {true, {"T/tomb4.exe", "T/data/a.tr4", "T/script.dat"}, "C:\\T", true},
      {true, {"T/TOMB4.EXE", "T/DATA/A.TR4", "T/Script.Dat"}, "C:\\T", true},
      {true, {"tomb4.exe", "data/x.tr4", "script.dat"}, "C:", true},
      {true, {"T/tomb4.exe", "T/data/a.tr2", "T/script.dat"}, "C:\\T", false},
      {true, {"T/script.dat"}, "C:\\T", false},
      {true, {"T/tomb4.exe/", "T/data/a.tr4", "T/script.dat"}, "C:\\T", false},
      {true, {"T/tomb4.exe", "T/data/a.tr4"}, "C:\\T", false},
      {false, {"O/ordl2009.exe"}, "C:\\O", true},
      {false, {"O/ORDL2009.EXE"}, "C:\\O", true},
      {false, {"O/ordelio.prf"}, "C:\\O", false},
      {false, {"O/ordl2009.exe/"}, "C:\\O", false},
      {true, {"T/tomb4.exe", "T/data/a.tr4", "T/script.dat"}, "C:\\T", false, false},
      {false, {"O/ordl2009.exe"}, "C:\\O", false, false},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(::testing::PrintToString(c.voci));
    MacchinaProva m;
    Crea(m, c.voci);
    FinestraProva f;
    f.nomeTrle.testo = "C:\\Prima";
    f.dialogo.Rispondi(c.ok, c.scelta);
    c.trle ? collection::Pul_CambiaTrle_Click(f.principale) : collection::Pul_CambiaORDL_Click(f.principale);
    EXPECT_EQ(f.dialogo.titoli,
              std::vector<std::string>{c.trle ? "Select TRLE folder" : "Select folder where is Ordelio"});
    // An empty caption is handed over as it is: the dialog then opens on the current folder.
    EXPECT_EQ(f.dialogo.inizi, std::vector<std::string>{c.trle ? "C:\\Prima" : ""});
    DidascaliaProva& scelta = c.trle ? f.nomeTrle : f.dirOrdl;
    EXPECT_EQ(scelta.storia, c.accettata ? std::vector<std::string>{c.scelta} : std::vector<std::string>{});
    EXPECT_EQ((c.trle ? f.dirOrdl : f.nomeTrle).storia, std::vector<std::string>{});
    const std::string rifiuto = c.trle ? kNonEditor + c.scelta : kNonOrdelio;
    EXPECT_EQ(f.messaggi.tutti,
              c.accettata || !c.ok ? std::vector<std::string>{} : std::vector<std::string>{rifiuto});
  }
}

}  // namespace
