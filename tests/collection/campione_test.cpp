#include "collection/campione.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "collection/scansione.h"
#include "finestra_prova.h"
#include "host/machine.h"
#include "macchina_prova.h"

namespace {

namespace fs = std::filesystem;

TEST(ElencoCampione, EsitiDelDialogoEDellaScansione) {
  struct Caso {
    const char* caso;
    bool ok;
    std::string cartella;
    std::string programma;
    // The list that stands in the program folder afterwards, by its folder; nothing = no file.
    std::optional<std::string> base;
    std::vector<std::string> messaggi;
  };
  const Caso casi[] = {
      {"chosen",
       true,
       "C:\\Backup",
       "C:\\Prog",
       "C:\\Backup",
       {"plain: Creato file elenco:  C:\\Prog\\backup_trle.le"}},
      {"program at a root",
       true,
       "C:\\Backup",
       "C:\\",
       "C:\\Backup",
       {"plain: Creato file elenco:  C:\\backup_trle.le"}},
      {"cancelled", false, "", "C:\\Prog", "C:\\Vecchio", {}},
      {"folder gone", true, "C:\\Manca", "C:\\Prog", std::nullopt, {"plain: Errore creando file elenco"}},
      {"list unwritable",
       true,
       "C:\\Backup",
       "C:\\Chiusa",
       std::nullopt,
       {"plain: Errore creando file elenco"}},
  };
  for (const auto& c : casi) {
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("Backup/tomb4.exe"), "MZ");
    fs::create_directories(m.C("Prog"));
    fs::create_directories(m.C("Chiusa/backup_trle.le"));  // the name is taken by a folder
    // An earlier sample list of another folder.
    collection::ElencoFile vecchio;
    vecchio.CartellaBase = "C:\\Vecchio";
    for (const char* l : {"C:\\Prog\\backup_trle.le", "C:\\backup_trle.le"})
      ASSERT_TRUE(collection::ScriviElencoFile(l, vecchio));

    FinestraProva f;
    f.dialogo.Rispondi(c.ok, c.cartella);
    collection::CreaElencoCampione(f.principale, c.programma);

    EXPECT_EQ(f.dialogo.titoli,
              std::vector<std::string>{"Seleziona cartella con backup corretto backup_trle"});
    EXPECT_EQ(f.dialogo.inizi, std::vector<std::string>{host::CartellaCorrente()});
    EXPECT_EQ(f.messaggi.tutti, c.messaggi) << c.caso;
    const std::string lista = c.programma + (c.programma.back() == '\\' ? "" : "\\") + "backup_trle.le";
    collection::ElencoFile e;
    EXPECT_EQ(collection::CaricaElencoFile(lista, e), c.base.has_value()) << c.caso;
    EXPECT_EQ(e.CartellaBase, c.base.value_or("")) << c.caso;
  }
}

}  // namespace
