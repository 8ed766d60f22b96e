#include "analysis/elenchi.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "esadecimale.h"
#include "finestra_prova.h"
#include "macchina_prova.h"
#include "support/valori.h"

namespace {

namespace fs = std::filesystem;

const std::string kCasi = std::string(CHECKORDL_DATI_PROVA) + "/elenchi/";

// `testo` with its line feeds as the report writes them.
std::string ConCrLf(const std::string& testo) {
  std::string r;
  for (const char c : testo) r += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return r;
}

// Each list file of the folder (its .hex; none: no file at all) against what the user sees: the messages
// of the load, one a line, then the report.
TEST(Elenchi, ListeEResoconti) {
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
    formats::ElencoFile e;
    ASSERT_TRUE(analysis::CaricaElencoFile("C:\\l.el", e, barra, messaggi)) << caso;
    std::string visto;
    for (const auto& t : messaggi.tutti) visto += t + "\r\n";
    visto += analysis::TestoElencoFile(e, "DIRECTORY LEVEL EDITOR", barra, '.');
    EXPECT_EQ(visto, ConCrLf(MacchinaProva::LeggiHost(voce.path().string()))) << caso;
  }
  EXPECT_EQ(casi, 9);
}

// The menu item on a list as unpacked (the check run writes the name in its other case): the report with the
// machine's decimal separator, and the bar back at 0.
TEST(Elenchi, VoceDelMenu) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("Dati/TRLE.el"), LeggiEsadecimale(kCasi + "albero.hex"));
  std::string atteso = ConCrLf(MacchinaProva::LeggiHost(kCasi + "albero.txt"));
  atteso[atteso.find("1024.0") + 4] = support::SeparatoreDecimale();
  MessaggiProva messaggi;
  BarraProva barra;
  EXPECT_EQ(analysis::MostraDirectory("C:\\Dati", analysis::kDirectoryTrle, barra, messaggi), atteso);
  EXPECT_TRUE(messaggi.tutti.empty());
  EXPECT_EQ(barra.valore, 0);
  ASSERT_GE(barra.storia.size(), 2u);
  EXPECT_EQ(barra.storia[barra.storia.size() - 2], 100);
}

}  // namespace
