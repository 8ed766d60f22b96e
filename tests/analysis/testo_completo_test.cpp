// "Salva tutto in un file di testo..." without a toolkit: nothing open, the dialog, the file written as the
// tool writes the text, the window left as it was, and a file that cannot be written named with why.
#include "analysis/testo_completo.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "analysis/voci.h"
#include "finestra_prova.h"
#include "macchina_prova.h"
#include "support/testo_uscita.h"

namespace {

using V = std::vector<std::string>;

TEST(TestoCompleto, SalvaTutto) {
  MacchinaProva m;
  std::filesystem::create_directories(m.C("Snap/cartella"));
  std::filesystem::create_directories(m.C("Prog"));
  std::filesystem::copy_file(std::string(CHECKORDL_DATI_PROVA) + "/prospetti/INFO_ORDL.BIN",
                             m.C("Snap/INFO_ORDL.BIN"));

  AnalisiProva vuota;
  analysis::mnu_SalvaTutto_Click(vuota.d);
  EXPECT_EQ(vuota.messaggi.tutti, V{"critical: No snapshot is open: open one with \"Leggi Dati\" first"});
  EXPECT_TRUE(vuota.dialogo.mostrati.empty());

  AnalisiProva a;
  analysis::ImpostaValori(a.d, "C:\\Snap\\INFO_ORDL.BIN");
  analysis::mnu_ShowPref_Click(a.d);
  a.area.Seleziona(5, 3);
  const std::string area = a.area.Testo();
  a.dialogo.Annulla();
  analysis::mnu_SalvaTutto_Click(a.d);
  EXPECT_EQ(a.dialogo.mostrati, V{"save"});
  EXPECT_EQ(a.dialogo.titolo, analysis::kTitoloTestoCompleto);
  EXPECT_EQ(a.dialogo.filtro, "Text files (*.txt)|*.txt|All files (*.*)|*.*");
  EXPECT_EQ(a.dialogo.cartella, "C:\\Snap");
  EXPECT_EQ(a.dialogo.NomeFile(), "INFO_ORDL.txt");

  a.barra.storia.clear();
  a.dialogo.Scegli("C:\\Snap\\tutto.txt");
  analysis::mnu_SalvaTutto_Click(a.d);
  const std::string testo = analysis::TestoCompleto(a.d);
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("Snap/tutto.txt")), support::TestoLocale(testo));
  EXPECT_FALSE(a.barra.storia.empty());  // the listings show their progress on the window's bar
  // The window as it was: its text, selection and marks; the messages of the items are in the text.
  EXPECT_EQ(a.area.Testo(), area);
  EXPECT_EQ(a.area.SelText(), area.substr(5, 3));
  EXPECT_EQ(a.Segnate(), std::vector{analysis::Voce::mnu_ShowPref});
  EXPECT_TRUE(a.messaggi.tutti.empty());

  // Each item's caption once, in menu order, between the members and the findings.
  V sezioni;
  for (std::size_t i = testo.find("\r\n== "); i != std::string::npos; i = testo.find("\r\n== ", i + 1))
    sezioni.push_back(testo.substr(i + 5, testo.find("\r\n", i + 2) - i - 5));
  V attese{analysis::kSezioneMembri};
  for (const auto& v : analysis::kVoci) attese.emplace_back(v.didascalia);
  attese.emplace_back("Riepilogo problemi");
  EXPECT_EQ(sezioni, attese);
  EXPECT_NE(testo.find("\r\n== Ambiente\r\ncritical: The snapshot holds no ambiente.json"),
            std::string::npos);

  for (const auto& [nome, motivo] : {std::pair{"C:\\manca\\tutto.txt", "the folder does not exist"},
                                     std::pair{"C:\\Snap\\cartella", "access denied"}}) {
    a.dialogo.Scegli(nome);
    analysis::mnu_SalvaTutto_Click(a.d);
    EXPECT_EQ(a.messaggi.tutti.back(), std::string("critical: Could not write ") + nome + ": " + motivo);
  }
  EXPECT_FALSE(MacchinaProva::EsisteHost(m.C("Snap/cartella.part")));
}

TEST(TestoCompleto, NomeProposto) {
  for (const auto& [snapshot, nome] :
       {std::pair{"C:\\Snap\\INFO_ORDL.BIN", "INFO_ORDL.txt"}, std::pair{"C:\\a.b\\08-user", "08-user.txt"},
        std::pair{"C:\\x\\snap.v2.bin", "snap.v2.txt"}, std::pair{"C:\\x\\.bin", ".bin.txt"}})
    EXPECT_EQ(analysis::NomeTestoCompleto(snapshot), nome) << snapshot;
}

}  // namespace
