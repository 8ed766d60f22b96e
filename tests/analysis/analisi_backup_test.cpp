// The backup analysis on lists made by hand, with the good copies' lengths given by the test.
#include "analysis/analisi_backup.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "finestra_prova.h"

namespace {

using analysis::ListeBackup;
using collection::ElencoFile;

ElencoFile Elenco(const std::string& base, const std::vector<std::pair<std::string, std::int32_t>>& voci) {
  ElencoFile e{static_cast<std::int32_t>(voci.size()), base, {}, {}};
  for (const auto& [nome, dimensione] : voci) {
    e.NomiFile.push_back(nome);
    e.DimensioniFile.push_back(dimensione);
  }
  return e;
}

// The good copies on this computer: full path to length; a path not named cannot be measured.
analysis::MisuraFile Copie(std::map<std::string, std::int64_t> lunghezze) {
  return [lunghezze](const std::string& p) -> std::int64_t {
    const auto it = lunghezze.find(p);
    return it == lunghezze.end() ? -1 : it->second;
  };
}

std::string Analizza(const ListeBackup& liste, const analysis::MisuraFile& misura) {
  std::vector<std::string> trovati;
  BarraProva barra;
  return analysis::TestoAnalisiBackup(liste, "C:\\Supporto\\backup_trle.le", misura, trovati, barra, '.');
}

// The rows between the two rules of hyphens.
std::vector<std::string> Righe(const std::string& t) {
  std::vector<std::string> righe;
  const std::size_t da = t.find(std::string(77, '-')) + 79;
  for (std::size_t i = da, a; (a = t.find("\r\n", i)) != std::string::npos && t[i] != '-'; i = a + 2)
    righe.push_back(t.substr(i, a - i));
  return righe;
}

TEST(AnalisiBackup, QuattroFileAlByte) {
  const std::string base = "C:\\Campione\\backup_trle";
  ListeBackup liste;
  liste.Campione =
      Elenco(base, {{"\\data\\a.tr4", 1}, {"\\data\\b.tr4", 1}, {"\\nuovo.tr4", 1}, {"\\c.tr4", 1}});
  // The user's names in another case are the same files; files outside backup_trle play no part.
  liste.Utente = Elenco("D:\\Giochi\\Ordelio", {{"\\ordelio.prf", 2606},
                                                {"\\BACKUP_TRLE\\Data\\A.TR4", 2000},
                                                {"\\backup_trle\\data\\b.tr4", 800000},
                                                {"\\backup_trle\\c.tr4", 10},
                                                {"\\backup_trle\\extra.txt", 5}});
  liste.Cd = Elenco("D:\\", {{"\\data\\b.tr4", 800000}});
  const auto misura =
      Copie({{base + "\\data\\a.tr4", 1500}, {base + "\\data\\b.tr4", 800500}, {base + "\\c.tr4", 10}});
  EXPECT_EQ(Analizza(liste, misura),
            "Controllo file di backup_trle\r\n"
            "------------------------------\r\n"
            "Cartella da controllare : D:\\Giochi\\Ordelio\\backup_trle (4 files)\r\n"
            "Elenco files campione in: C:\\Supporto\\backup_trle.le (4 files)\r\n"
            "\r\n"
            "File_Sorgente e dimensione                         Esito\r\n"
            "-----------------------------------------------------------------------------\r\n"
            "\\data\\a.tr4  1 Kb (2000 bytes)                     DIMENSIONE MAGGIORE DI 500 bytes\r\n"
            "\\data\\b.tr4  781 Kb (800000 bytes)                 ORIGINALE CD\r\n"
            "\\nuovo.tr4  0 (0 bytes)                            FILE MANCANTE\r\n"
            "--------------------------------------------------------------------------\r\n"
            "FILE CORRETTI = 1\r\n"
            "FILE MANCANTI = 1\r\n"
            "FILE IN PIU'  = 0\r\n"
            "FILE CON DIMENSIONE MAGGIORE = 1\r\n"
            "FILE CON DIMENSIONE MINORE   = 1\r\n"
            "FILE ORIGINALI CD (VECCHI)   = 1\r\n");
}

TEST(AnalisiBackup, RigheECasiLimite) {
  const std::string base = "C:\\Cmp";
  const std::string lungo = "\\una\\cartella\\dal\\nome\\molto\\lungo\\livello.tr4";
  ListeBackup liste;
  liste.Campione = Elenco(base, {{"\\a", 0}, {"\\b", 0}, {"\\c", 0}, {lungo, 0}, {"\\d", 0}, {"\\e", 0}});
  liste.Utente = Elenco("U:", {{"\\backup_trle\\a", 7},
                               {"\\backup_trle\\A", 9},  // a later entry of the same name is never seen
                               {"\\backup_trle\\b", 0},
                               {"\\backup_trle\\c", 11},
                               {"\\backup_trle" + lungo, 1},
                               {"\\backup_trle\\d", 3},
                               {"\\x\\backup_trle\\y", 1}});  // counts, but matches no key
  // Only the first CD entry of a name is tried.
  liste.Cd = Elenco("D:", {{"\\c", 5}, {"\\c", 11}, {"\\d", 3}});
  const auto misura =
      Copie({{base + "\\a", 7}, {base + "\\b", 1}, {base + "\\c", 10}, {base + lungo, 2}, {base + "\\d", 4}});
  const std::string t = Analizza(liste, misura);
  EXPECT_EQ(Righe(t),
            (std::vector<std::string>{
                "\\b  0 (0 bytes)                                    DIMENSIONE INFERIORE DI 1 bytes",
                "\\c  11 (11 bytes)                                  DIMENSIONE MAGGIORE DI 1 bytes",
                lungo + "  1 (1 bytes) DIMENSIONE INFERIORE DI 1 bytes",
                "\\d  3 (3 bytes)                                    ORIGINALE CD",
                "\\e  0 (0 bytes)                                    FILE MANCANTE",
            }));
  EXPECT_NE(t.find("Cartella da controllare : U:\\backup_trle (7 files)\r\n"), std::string::npos);
  EXPECT_NE(t.find("FILE CORRETTI = 1\r\nFILE MANCANTI = 1\r\nFILE IN PIU'  = 1\r\n"
                   "FILE CON DIMENSIONE MAGGIORE = 1\r\nFILE CON DIMENSIONE MINORE   = 3\r\n"
                   "FILE ORIGINALI CD (VECCHI)   = 1\r\n"),
            std::string::npos);

  // A good copy that cannot be measured gets a row of its own and counts nowhere.
  liste.Campione = Elenco(base, {{"\\a", 0}, {"\\z", 0}});
  liste.Utente.NomiFile.push_back("\\backup_trle\\z");
  liste.Utente.DimensioniFile.push_back(4);
  ++liste.Utente.NumeroFile;
  const std::string u = Analizza(liste, misura);
  EXPECT_EQ(Righe(u), std::vector<std::string>{"\\z  4 (4 bytes)                                    " +
                                               std::string(analysis::kCampioneMancante)});
  EXPECT_NE(u.find("FILE CORRETTI = 1\r\nFILE MANCANTI = 0\r\n"), std::string::npos);
  EXPECT_NE(u.find("MAGGIORE = 0\r\nFILE CON DIMENSIONE MINORE   = 0\r\n"), std::string::npos);

  // No differences: the two rules meet; an empty sample leaves every user file as one too many.
  liste.Campione = Elenco(base, {});
  const std::string v = Analizza(liste, misura);
  EXPECT_NE(v.find(std::string(77, '-') + "\r\n" + std::string(74, '-') + "\r\n"), std::string::npos);
  EXPECT_NE(v.find("FILE IN PIU'  = 8\r\n"), std::string::npos);
}

}  // namespace
