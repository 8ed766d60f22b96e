#include "collection/selezione.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "finestra_prova.h"
#include "host/machine.h"
#include "macchina_prova.h"
#include "picker/dialog_getdir.h"

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

TEST(Selezione, CartellaDellEditor) {
  struct Caso {
    const char* nome;
    std::vector<std::string> voci;
    std::string scelta;  // PathDir as the dialog gives it
    bool accettata;
  };
  const Caso casi[] = {
      {"complete", {"T/tomb4.exe", "T/data/a.tr4", "T/script.dat"}, "C:\\T", true},
      {"names in capitals", {"T/TOMB4.EXE", "T/DATA/A.TR4", "T/Script.Dat"}, "C:\\T", true},
      {"at a drive root", {"tomb4.exe", "data/x.tr4", "script.dat"}, "C:", true},
      {"empty data folder", {"T/tomb4.exe", "T/data/", "T/script.dat"}, "C:\\T", false},
      {"data holds other files", {"T/tomb4.exe", "T/data/a.tr2", "T/script.dat"}, "C:\\T", false},
      {"script.dat alone", {"T/script.dat"}, "C:\\T", false},
      {"tomb4.exe is a folder", {"T/tomb4.exe/", "T/data/a.tr4", "T/script.dat"}, "C:\\T", false},
      {"no script.dat", {"T/tomb4.exe", "T/data/a.tr4"}, "C:\\T", false},
      {"folder gone", {}, "C:\\T", false},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.nome);
    MacchinaProva m;
    Crea(m, c.voci);
    FinestraProva f;
    f.nomeTrle.testo = "C:\\Prima";
    f.dialogo.Rispondi(true, c.scelta);
    collection::Pul_CambiaTrle_Click(f.principale);
    EXPECT_EQ(f.dialogo.titoli, std::vector<std::string>{"Select TRLE folder"});
    EXPECT_EQ(f.dialogo.inizi, std::vector<std::string>{"C:\\Prima"});
    EXPECT_EQ(f.nomeTrle.testo, c.accettata ? c.scelta : "C:\\Prima");
    EXPECT_EQ(f.messaggi.tutti,
              c.accettata ? std::vector<std::string>{} : std::vector<std::string>{kNonEditor + c.scelta});
    EXPECT_EQ(f.dirOrdl.storia, std::vector<std::string>{});
  }
}

TEST(Selezione, CartellaDiOrdelio) {
  struct Caso {
    const char* nome;
    std::vector<std::string> voci;
    std::string scelta;
    bool accettata;
  };
  const Caso casi[] = {
      {"with the executable", {"O/ordl2009.exe"}, "C:\\O", true},
      {"in capitals", {"O/ORDL2009.EXE"}, "C:\\O", true},
      {"at a drive root", {"ordl2009.exe"}, "C:", true},
      {"nothing else is asked for", {"O/ordl2009.exe", "O/ordelio.prf/"}, "C:\\O", true},
      {"without it", {"O/ordelio.prf"}, "C:\\O", false},
      {"the executable is a folder", {"O/ordl2009.exe/"}, "C:\\O", false},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.nome);
    MacchinaProva m;
    Crea(m, c.voci);
    FinestraProva f;
    f.dialogo.Rispondi(true, c.scelta);
    collection::Pul_CambiaORDL_Click(f.principale);
    EXPECT_EQ(f.dialogo.titoli, std::vector<std::string>{"Select folder where is Ordelio"});
    // An empty caption is handed over as it is: the dialog then opens on the current folder.
    EXPECT_EQ(f.dialogo.inizi, std::vector<std::string>{""});
    EXPECT_EQ(f.dirOrdl.testo, c.accettata ? c.scelta : "");
    EXPECT_EQ(f.messaggi.tutti,
              c.accettata ? std::vector<std::string>{} : std::vector<std::string>{kNonOrdelio});
    EXPECT_EQ(f.nomeTrle.storia, std::vector<std::string>{});
  }
}

TEST(Selezione, AnnullareNonCambiaNulla) {
  MacchinaProva m;
  Crea(m, {"O/ordl2009.exe", "T/tomb4.exe", "T/data/a.tr4", "T/script.dat"});
  FinestraProva f;
  f.dirOrdl.testo = "C:\\Vecchio";
  f.nomeTrle.testo = "C:\\Vecchio";
  // The dialog's PathDir after a cancel must not be read, even when it names a good folder.
  f.dialogo.Rispondi(false, "C:\\O");
  collection::Pul_CambiaORDL_Click(f.principale);
  f.dialogo.Rispondi(false, "C:\\T");
  collection::Pul_CambiaTrle_Click(f.principale);
  EXPECT_EQ(f.dialogo.mostrato, 2);
  EXPECT_TRUE(f.dirOrdl.storia.empty());
  EXPECT_TRUE(f.nomeTrle.storia.empty());
  EXPECT_TRUE(f.messaggi.tutti.empty());
}

TEST(Selezione, UnRifiutoNonRiapreIlDialogo) {
  // A folder from discovery that fails the test: OK on it again shows the message, once, and it stays.
  MacchinaProva m;
  Crea(m, {"T/tomb4.exe"});
  FinestraProva f;
  f.nomeTrle.testo = "C:\\T";
  f.dialogo.Rispondi(true, "C:\\T");
  collection::Pul_CambiaTrle_Click(f.principale);
  EXPECT_EQ(f.dialogo.mostrato, 1);
  EXPECT_EQ(f.nomeTrle.testo, "C:\\T");
  EXPECT_EQ(f.messaggi.tutti, std::vector<std::string>{std::string(kNonEditor) + "C:\\T"});
}

TEST(Selezione, ConIlVeroDialogo) {
  // The user walks to drive C's root and presses OK: "C:" comes back, and C:\tomb4.exe is what is tested.
  MacchinaProva m;
  Crea(m, {"tomb4.exe", "data/x.tr4", "script.dat"});
  FinestraProva f;
  std::vector<std::string> visti;
  picker::DialogoGetDir dialogo(f.messaggi, [&](picker::Dialog_GetDir& d) {
    visti.push_back(d.Caption + "|" + d.Text_Path);
    picker::ImpostaPath(d, "C:\\");
    picker::OKButton_Click(d);
  });
  collection::Principale p{f.dirOrdl, f.nomeTrle, f.info, f.barra, f.messaggi, dialogo, f.eventi, [] {}, {}};
  f.nomeTrle.testo = "C:\\Manca";
  collection::Pul_CambiaTrle_Click(p);
  EXPECT_EQ(f.nomeTrle.testo, "C:");
  EXPECT_TRUE(f.messaggi.tutti.empty());
  // The start folder is missing, so the dialog opened on the current folder.
  EXPECT_EQ(visti, std::vector<std::string>{"Select TRLE folder|" + host::CartellaCorrente()});
}

}  // namespace
