#include "collection/scoperta.h"

#include <gtest/gtest.h>

#include <string>

#include "esadecimale.h"
#include "finestra_prova.h"
#include "formats/preferenze.h"
#include "macchina_prova.h"
#include "misure_finte.h"

namespace {

// An App Paths entry in Wine's registry text, backslashes escaped inside the value.
std::string AppPath(const std::string& exe, std::string valore) {
  for (std::size_t k = 0; (k = valore.find('\\', k)) != std::string::npos; k += 2) valore.insert(k, 1, '\\');
  return "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\App Paths\\\\" + exe + "] 1\n@=\"" + valore +
         "\"\n\n";
}

// Gives the machine its registry and runs the discovery into the window.
void Cerca(const MacchinaProva& m, const std::string& registro, FinestraProva& f) {
  m.Registro("WINE REGISTRY Version 2\n\n" + registro);
  formats::PrefRecord pref;
  collection::CercaInstallazioni(f.principale, pref);
}

// The rows of tests/data/cartelle/scoperta.txt: the folders shown and put in the header.
TEST(Scoperta, CartelleDalRegistroEDaOrdelio) {
  MisureFinte misure;
  MisureFinte::Figure()['C'] = {0, 0, 5000};
  MisureFinte::Figure()['D'] = {0, 0, 9000};
  const auto righe = LeggiTabella("cartelle/scoperta.txt");
  ASSERT_EQ(righe.size(), 8u);
  for (const auto& r : righe) {
    SCOPED_TRACE(r[0]);
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("Trle/tomb4.exe"), "MZ");
    std::string reg = r[1] != "-" ? AppPath("tomb4.exe", r[1]) : "";
    if (r[2] != "no") reg += AppPath("ordl2009.exe", "C:\\Ordelio\\ordl2009.exe");
    if (r[2] == "installed") MacchinaProva::ScriviHost(m.C("Ordelio/ordl2009.exe"), "MZ");
    if (r[3] != "-") {
      formats::PrefRecord p;
      if (r[3].starts_with("nul:"))
        r[3].copy(p.PathTRLE.byte.data(), r[3].size() - 4, 4);
      else
        p.PathTRLE.Assegna(r[3]);
      MacchinaProva::ScriviHost(m.C("Ordelio/Ordelio.prf"), formats::CodificaPreferenze(p));
    }
    FinestraProva f;
    f.principale.InfoHeader.FlagErrori = 7;
    Cerca(m, reg, f);
    EXPECT_EQ(f.nomeTrle.testo, r[4]);
    EXPECT_EQ(f.dirOrdl.storia, r[5].empty() ? std::vector<std::string>{} : std::vector<std::string>{r[5]});
    EXPECT_EQ(f.principale.InfoHeader.StartFolderTrle.Testo(), r[4] + std::string(256 - r[4].size(), ' '));
    EXPECT_EQ(f.principale.InfoHeader.StartFolderOrdl.Testo(), r[5] + std::string(256 - r[5].size(), ' '));
    EXPECT_TRUE(f.messaggi.tutti.empty());
    EXPECT_EQ(f.dialogo.mostrato, 0);
    // The machine's figures too (the test prefix has D: and its drive types); nothing else of the header.
    const formats::InfoHeader& h = f.principale.InfoHeader;
    EXPECT_TRUE(m.Prefisso().empty() || (h.WindowsXp && h.DiscoMaggiore.Testo() == "D" &&
                                         h.SpazioDiscoMaggiore == 9000 && h.SpazioDiscoC == 5000));
    EXPECT_EQ(h.FlagErrori, 7);
  }
}

}  // namespace
