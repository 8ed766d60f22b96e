#include "collection/campione.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "finestra_prova.h"
#include "host/machine.h"
#include "macchina_prova.h"

namespace {

using V = std::vector<std::string>;

TEST(ElencoCampione, EsitiDelDialogoEDellaScansione) {
  struct Caso {
    bool ok;
    std::string cartella, programma, lista;
    std::string base;  // the folder of the list that stands afterwards; "" = no list
    V messaggi;
  };
  const std::string creato = "plain: Creato file elenco:  ";
  const Caso casi[] = {
      {true,
       "C:\\Backup",
       "C:\\Prog",
       "C:\\Prog\\backup_trle.le",
       "C:\\Backup",
       {creato + "C:\\Prog\\backup_trle.le"}},
      {true, "C:\\Backup", "C:\\", "C:\\backup_trle.le", "C:\\Backup", {creato + "C:\\backup_trle.le"}},
      {false, "", "C:\\Prog", "C:\\Prog\\backup_trle.le", "C:\\Vecchio", {}},
      {true, "C:\\Manca", "C:\\Prog", "C:\\Prog\\backup_trle.le", "", {"plain: Errore creando file elenco"}},
  };
  for (const auto& c : casi) {
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("Backup/tomb4.exe"), "MZ");
    std::filesystem::create_directories(m.C("Prog"));
    ASSERT_TRUE(formats::ScriviElencoFile(c.lista, {0, "C:\\Vecchio", {}, {}}));  // an earlier sample list

    FinestraProva f;
    f.dialogo.Rispondi(c.ok, c.cartella);
    collection::CreaElencoCampione(f.dialogo, c.programma, {f.info, f.barra, f.eventi}, f.messaggi);
    EXPECT_EQ(f.dialogo.titoli, V{"Seleziona cartella con backup corretto backup_trle"});
    EXPECT_EQ(f.dialogo.inizi, V{host::CartellaCorrente()});
    EXPECT_EQ(f.messaggi.tutti, c.messaggi);
    formats::ElencoFile e;
    EXPECT_EQ(formats::CaricaElencoStretto(c.lista, e), !c.base.empty()) << c.lista;
    EXPECT_EQ(e.CartellaBase, c.base);
  }
}

}  // namespace
