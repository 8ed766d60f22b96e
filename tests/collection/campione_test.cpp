#include "collection/campione.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "collection/scansione.h"
#include "finestra_prova.h"
#include "host/machine.h"
#include "macchina_prova.h"

namespace {

TEST(ElencoCampione, EsitiDelDialogoEDellaScansione) {
  struct Caso {
    bool ok;
    std::string cartella, programma, lista;
    std::string base;  // the folder of the list that stands afterwards; "" = no list
    std::string messaggio;
  };
  const std::string creato = "plain: Creato file elenco:  ";
  const Caso casi[] = {
      {true, "C:\\Backup", "C:\\Prog", "C:\\Prog\\backup_trle.le", "C:\\Backup",
       creato + "C:\\Prog\\backup_trle.le"},
      {true, "C:\\Backup", "C:\\", "C:\\backup_trle.le", "C:\\Backup", creato + "C:\\backup_trle.le"},
      {false, "", "C:\\Prog", "C:\\Prog\\backup_trle.le", "C:\\Vecchio", ""},
      {true, "C:\\Manca", "C:\\Prog", "C:\\Prog\\backup_trle.le", "", "plain: Errore creando file elenco"},
  };
  for (const auto& c : casi) {
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("Backup/tomb4.exe"), "MZ");
    std::filesystem::create_directories(m.C("Prog"));
    collection::ElencoFile vecchio;  // an earlier sample list of another folder
    vecchio.CartellaBase = "C:\\Vecchio";
    ASSERT_TRUE(collection::ScriviElencoFile(c.lista, vecchio));

    FinestraProva f;
    f.dialogo.Rispondi(c.ok, c.cartella);
    collection::CreaElencoCampione(f.principale, c.programma);
    EXPECT_EQ(f.dialogo.titoli,
              std::vector<std::string>{"Seleziona cartella con backup corretto backup_trle"});
    EXPECT_EQ(f.dialogo.inizi, std::vector<std::string>{host::CartellaCorrente()});
    EXPECT_EQ(f.messaggi.tutti,
              c.messaggio.empty() ? std::vector<std::string>{} : std::vector<std::string>{c.messaggio});
    collection::ElencoFile e;
    EXPECT_EQ(collection::CaricaElencoFile(c.lista, e), !c.base.empty()) << c.lista;
    EXPECT_EQ(e.CartellaBase, c.base);
  }
}

}  // namespace
