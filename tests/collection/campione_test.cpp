#include "collection/campione.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "finestra_prova.h"
#include "host/macchina.h"
#include "macchina_prova.h"

namespace {

using V = std::vector<std::string>;

// The dialog's side of the sample list; what the list holds and the messages of a scan that fails are the
// headless `sample` verb's tests.
TEST(ElencoCampione, DialogoConfermatoOAnnullato) {
  for (const bool ok : {true, false}) {
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("Backup/tomb4.exe"), "MZ");
    ASSERT_TRUE(
        formats::ScriviElencoFile("C:\\backup_trle.le", {0, "C:\\Vecchio", {}, {}}));  // an earlier one
    FinestraProva f;
    f.dialogo.Rispondi(ok, "C:\\Backup");
    collection::CreaElencoCampione(f.dialogo, "C:\\", {f.info, f.barra, f.eventi}, f.messaggi);
    EXPECT_EQ(f.dialogo.titoli, V{"Seleziona cartella con backup corretto backup_trle"});
    EXPECT_EQ(f.dialogo.inizi, V{host::CartellaCorrente()});
    EXPECT_EQ(f.messaggi.tutti, ok ? V{"plain: Creato file elenco:  C:\\backup_trle.le"} : V{});
    formats::ElencoFile e;
    EXPECT_TRUE(formats::CaricaElencoStretto("C:\\backup_trle.le", e));
    EXPECT_EQ(e.CartellaBase, ok ? "C:\\Backup" : "C:\\Vecchio");
  }
}

}  // namespace
