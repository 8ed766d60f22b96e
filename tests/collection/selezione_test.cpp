#include "collection/selezione.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "esadecimale.h"
#include "finestra_prova.h"
#include "macchina_prova.h"

namespace {

using V = std::vector<std::string>;

// The rows of tests/data/cartelle/selezione.txt.
TEST(Selezione, CartelleAccettateERifiutate) {
  const auto righe = LeggiTabella("cartelle/selezione.txt");
  ASSERT_EQ(righe.size(), 13u);
  for (const auto& r : righe) {
    SCOPED_TRACE(r[1]);
    const bool trle = r[0] == "editor";
    MacchinaProva m;
    std::istringstream voci(r[1]);
    for (std::string v; voci >> v;)
      v.back() == '/' ? (void)std::filesystem::create_directories(m.C(v))
                      : MacchinaProva::ScriviHost(m.C(v), "x");
    FinestraProva f;
    f.nomeTrle.testo = "C:\\Prima";
    f.dialogo.Rispondi(r[3] != "cancelled", r[2]);
    trle ? collection::Pul_CambiaTrle_Click(f.principale) : collection::Pul_CambiaORDL_Click(f.principale);
    EXPECT_EQ(f.dialogo.titoli, V{trle ? "Select TRLE folder" : "Select folder where is Ordelio"});
    // An empty caption is handed over as it is: the dialog then opens on the current folder.
    EXPECT_EQ(f.dialogo.inizi, V{trle ? "C:\\Prima" : ""});
    EXPECT_EQ((trle ? f.nomeTrle : f.dirOrdl).storia, r[3] == "taken" ? V{r[2]} : V{});
    EXPECT_EQ((trle ? f.dirOrdl : f.nomeTrle).storia, V{});
    const std::string rifiuto =
        trle ? "critical: This is not a correct Level Editor folder: " + r[2]
             : "critical: In this folder is missing file ordl2009.exe this cannot be ORDL folder";
    EXPECT_EQ(f.messaggi.tutti, r[3] == "refused" ? V{rifiuto} : V{});
  }
}

}  // namespace
