// The program's working files below its own folder: a link there (made by accident, or by a sync tool) never
// lets a write or a deletion reach the folder it names; and the folder's lock nests within one process.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>

#include "host/macchina.h"
#include "macchina_prova.h"
#include "support/files.h"

namespace {

namespace fs = std::filesystem;

// Every name and its bytes below a host folder, links and all, to compare before and after.
std::map<std::string, std::string> Impronta(const fs::path& cartella) {
  std::map<std::string, std::string> tutto;
  for (const auto& e : fs::recursive_directory_iterator(cartella))
    tutto[e.path().string()] = e.is_regular_file() ? MacchinaProva::LeggiHost(e.path().string()) : "/";
  return tutto;
}

TEST(CartellaProgramma, NienteAttraversoUnCollegamento) {
  const std::string p = "C:\\Prog";
  struct Caso {
    const char* collegamento;  // below C:\Prog
    const char* bersaglio;     // below C:\Fuori
    std::function<bool()> opera;
    bool riuscita;
  };
  const Caso casi[] = {
      {"Dati", "", [&] { return support::SvuotaCartella(p + "\\Dati", "*"); }, false},
      {"Dati", "", [&] { return support::ScriviFileSotto(p, p + "\\dati\\A.TXT", "x"); }, false},
      {"Dati", "", [&] { return support::CancellaFileSotto(p, p + "\\Dati\\a.txt"); }, false},
      {"Dati/sub", "", [&] { return support::ScriviFileSotto(p, p + "\\Dati\\sub\\new.txt", "x"); }, false},
      // The link itself is replaced, or goes; what it names stays.
      {"TRLE.el", "a.txt", [&] { return support::ScriviFileSotto(p, p + "\\trle.el", "x"); }, true},
      {"TRLE.el", "a.txt", [&] { return support::CancellaFileSotto(p, p + "\\TRLE.EL"); }, true},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(std::string(c.collegamento) + " " + c.bersaglio);
    MacchinaProva m;
    fs::create_directories(m.C("Prog/Dati"));
    fs::create_directories(m.C("Fuori/sub"));
    MacchinaProva::ScriviHost(m.C("Fuori/a.txt"), "a");
    const fs::path link = m.C(std::string("Prog/") + c.collegamento);
    fs::remove(link);
    std::error_code ec;
    fs::create_symlink(fs::path(m.C("Fuori")) / c.bersaglio, link, ec);
    // A system that makes no links here (Wine's own links cannot be made from inside it) has no case.
    if (ec || !fs::is_symlink(link)) GTEST_SKIP() << "no links on this system";
    const auto prima = Impronta(m.C("Fuori"));
    EXPECT_EQ(c.opera(), c.riuscita);
    EXPECT_EQ(Impronta(m.C("Fuori")), prima);
    EXPECT_EQ(fs::is_symlink(link), !c.riuscita);
  }
}

TEST(CartellaProgramma, SenzaCollegamentiComeOgniFile) {
  MacchinaProva m;
  fs::create_directories(m.C("Prog/Dati"));
  MacchinaProva::ScriviHost(m.C("Prog/Dati/a.txt"), "vecchio");
  // Names match without regard to case: the file there is replaced, not joined by another.
  ASSERT_TRUE(support::ScriviFileSotto("C:\\Prog", "C:\\PROG\\dati\\A.TXT", "nuovo"));
  EXPECT_EQ(MacchinaProva::LeggiHost(m.C("Prog/Dati/a.txt")), "nuovo");
  EXPECT_EQ(std::distance(fs::directory_iterator(m.C("Prog/Dati")), fs::directory_iterator()), 1);
  int err = 0;
  ASSERT_TRUE(host::ImpostaAttributi("C:\\Prog\\Dati\\a.txt", host::kAttrReadOnly, &err));
  EXPECT_TRUE(support::SvuotaCartella("C:\\Prog\\Dati", "*"));
  EXPECT_FALSE(fs::exists(m.C("Prog/Dati/a.txt")));
  EXPECT_FALSE(support::ScriviFileSotto("C:\\Prog", "C:\\Prog\\..\\fuori.txt", "x"));
}

TEST(CartellaProgramma, IlBloccoSiAnnidaESeNeVa) {
  MacchinaProva m;
  fs::create_directories(m.C("Prog"));
  {
    const host::BloccoCartella primo("C:\\Prog");
    const host::BloccoCartella secondo("c:\\prog\\");
    EXPECT_FALSE(primo.Occupato() || secondo.Occupato());
    EXPECT_TRUE(fs::exists(m.C("Prog/checkordl.lock")));
  }
  EXPECT_TRUE(fs::is_empty(m.C("Prog")));
}

}  // namespace
