#include <unistd.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "host/machine.h"
#include "macchina_prova.h"
#include "support/registro.h"

namespace {

// The App Paths entries of the real system.reg of the registry tests, a few more, and the files that some
// of them name.
class TrovaEseguibileTest : public testing::Test {
 protected:
  void SetUp() override {
    Registro(MacchinaProva::LeggiHost(CHECKORDL_DATI_PROVA "/registro/system.reg") + R"(
[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\sparito.exe] 1
@="C:\\Vecchio\\sparito.exe"
[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\x.exe] 1
@="C:\\Tools.exe\\Ordelio"
[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\solopath.exe] 1
"Path"="C:\\Ordelio"
)");
    for (const char* f :
         {"Ordelio/ordl2009.exe", "Ordelio/cartella.exe", "Ordelio/barra.exe", "Ordelio/solopath.exe",
          "Program Files/sparito.exe", "Program Files/vuoto.exe", "Program Files/libero.exe",
          "Program Files/tool.exe", "Tools.exe/Ordelio/x.exe", "Perch\xc3\xa9/ordl2009.exe"})
      MacchinaProva::ScriviHost(m_.C(f), "MZ");
  }
  void Registro(const std::string& testo) { m_.Registro(testo); }
  MacchinaProva m_;
};

TEST_F(TrovaEseguibileTest, PrimaLaVoceDelRegistroPoiProgramFiles) {
  const std::pair<std::string, std::string> casi[] = {
      {"ordl2009.exe", "C:\\Ordelio\\ordl2009.exe"},
      // Only the file name asks the registry.
      {"D:\\Altrove\\ordl2009.exe", "C:\\Ordelio\\ordl2009.exe"},
      {"cartella.exe", "C:\\Ordelio\\cartella.exe"},
      // A folder registered with its closing backslash keeps the doubled one.
      {"barra.exe", "C:\\Ordelio\\\\barra.exe"},
      // The registry's answer stands even when it names nothing: no second look in Program Files.
      {"sparito.exe", ""},
      {"x.exe", ""},
      // The first value, whichever it is, even one that is not the default value.
      {"solopath.exe", "C:\\Ordelio\\solopath.exe"},
      {"accento.exe", "C:\\Perch\xe9\\ordl2009.exe"},
      // An empty first value is no value at all.
      {"vuoto.exe", "C:\\Program Files\\vuoto.exe"},
      // Only the program-files path loses a quoted "%1".
      {"tool.exe \"%1\"", "C:\\Program Files\\tool.exe"},
  };
  for (const auto& [nome, atteso] : casi) EXPECT_EQ(support::TrovaEseguibile(nome), atteso) << nome;
}

TEST_F(TrovaEseguibileTest, PrimoValoreECartelleSpeciali) {
  // Whatever the type: a number gives its bytes up to the first NUL.
  EXPECT_EQ(support::LeggiPrimoValoreRegistro(std::string(support::kAppPaths) + "numero.exe"), "\xd9\x07");
  EXPECT_EQ(support::LeggiPrimoValoreRegistro(std::string(support::kAppPaths) + "manca.exe"), "");
#ifndef _WIN32
  EXPECT_EQ(support::GetCartellaSpeciale(5), "");  // a prefix knows the program-files folder only
#endif
  // The room is trimmed, but the NUL after the path shields the blanks inside it (the folder is found
  // without them, as the platform finds a path).
  MacchinaProva::ScriviHost(m_.C("Pf/x"), "");
  Registro(
      "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion]\n"
      "\"ProgramFilesDir\"=\"C:\\\\Pf  \"\n");
  EXPECT_EQ(support::GetCartellaSpeciale(38), "C:\\Pf  ");
  // A closing backslash there is doubled by the join and mended: only this path is mended.
  Registro(
      "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion]\n"
      "\"ProgramFilesDir\"=\"C:\\\\Program Files\\\\\"\n");
  EXPECT_EQ(support::TrovaEseguibile("libero.exe"), "C:\\Program Files\\libero.exe");
}

TEST(TrovaEseguibileSenzaProgramFiles, CercaNellaRadiceDelDriveCorrente) {
#ifdef _WIN32
  GTEST_SKIP() << "a machine without a program-files folder is a Wine prefix without system.reg";
#endif
  MacchinaProva m;  // no system.reg: no program-files folder
  MacchinaProva::ScriviHost(m.C("radice.exe"), "MZ");
  MacchinaProva::ScriviHost(m.C("Lavoro/x.txt"), "x");
  char prima[PATH_MAX];
  ASSERT_NE(::getcwd(prima, sizeof prima), nullptr);
  ASSERT_EQ(::chdir(m.C("Lavoro").c_str()), 0);
  const std::string trovato = support::TrovaEseguibile("radice.exe");
  const std::string assente = support::TrovaEseguibile("altro.exe");
  ASSERT_EQ(::chdir(prima), 0);
  EXPECT_EQ(trovato, "\\radice.exe");
  EXPECT_EQ(assente, "");
}

}  // namespace
