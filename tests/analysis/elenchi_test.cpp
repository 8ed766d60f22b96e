// The two readers of file lists: the strict one for the lists this program writes and reads back, the
// lenient one for a snapshot's lists, whose failures the user sees.
#include "analysis/elenchi.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "esadecimale.h"
#include "finestra_prova.h"
#include "macchina_prova.h"
#include "osservatore_allocazioni.h"

namespace {

namespace fs = std::filesystem;
using formats::ElencoFile;

const std::string kCasi = std::string(CHECKORDL_DATI_PROVA) + "/elenchi/";

// The strict reader takes a list whole or not at all, and never makes room for more than the file holds.
TEST(Elenchi, LettoreStretto) {
  const auto casi = LeggiCasi("elenchi/stretti.hex");
  ASSERT_EQ(casi.size(), 12u);
  for (const auto& c : casi) {
    SCOPED_TRACE(c.campi[0]);
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("l.el"), c.byte);
    ElencoFile e;
    e.NumeroFile = 9;
    OsservaAllocazioni o;
    EXPECT_EQ(formats::CaricaElencoStretto("C:\\l.el", e), c.campi[1] == "1");
    EXPECT_LT(o.Massima(), std::size_t{1} << 20);
    if (c.campi[1] == "0") {
      EXPECT_EQ(e, ElencoFile{});
    }
  }
  ElencoFile e;
  EXPECT_FALSE(formats::CaricaElencoStretto("C:\\manca.el", e));
}

// Longer than one piece of the writer; both readers take it back whole.
TEST(Elenchi, UnElencoLungo) {
  MacchinaProva m;
  ElencoFile e{0, "C:\\Giochi\\Trle", {}, {}};
  for (e.NumeroFile = 0; e.NumeroFile < 30000; ++e.NumeroFile) {
    e.NomiFile.push_back("\\data\\f" + std::to_string(e.NumeroFile) + std::string(40, 'x'));
    e.DimensioniFile.push_back(e.NumeroFile * 7);
  }
  ASSERT_TRUE(formats::ScriviElencoFile("C:\\r.le", e));
  ElencoFile stretto, tollerante;
  BarraProva barra;
  ASSERT_TRUE(formats::CaricaElencoStretto("C:\\r.le", stretto, &barra));
  EXPECT_TRUE(stretto == e);
  EXPECT_EQ(barra.valore, 100);
  EXPECT_EQ(formats::CaricaElencoTollerante("C:\\r.le", tollerante), formats::GuastoElenco::kNessuno);
  EXPECT_TRUE(tollerante == e);
}

// The lenient reader on damaged lists (each .hex of the folder; none: no file at all) against what the user
// sees: the messages of the load, one a line, then the report.
TEST(Elenchi, LettoreTollerante) {
  int casi = 0;
  for (const auto& voce : fs::directory_iterator(kCasi)) {
    if (voce.path().extension() != ".txt") continue;
    ++casi;
    const std::string caso = voce.path().stem().string();
    MacchinaProva m;
    if (fs::exists(kCasi + caso + ".hex"))
      MacchinaProva::ScriviHost(m.C("l.el"), LeggiEsadecimale(kCasi + caso + ".hex"));
    MessaggiProva messaggi;
    BarraProva barra;
    ElencoFile e;
    ASSERT_TRUE(analysis::CaricaElencoFile("C:\\l.el", e, barra, messaggi)) << caso;
    std::string visto;
    for (const auto& t : messaggi.tutti) visto += t + "\n";
    visto += analysis::TestoElencoFile(e, "DIRECTORY LEVEL EDITOR", barra, '.');
    std::erase(visto, '\r');
    EXPECT_EQ(visto, MacchinaProva::LeggiHost(voce.path().string())) << caso;
  }
  EXPECT_EQ(casi, 8);
}

}  // namespace
