#include <unistd.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "host/machine.h"
#include "macchina_prova.h"
#include "support/registro.h"

namespace {

// App Paths entries in Wine's own text form, with the files that some of them name.
const char kRegistro[] = R"(WINE REGISTRY Version 2
;; All keys relative to REGISTRY\\Machine

[Software\\Microsoft\\Windows\\CurrentVersion] 1795380016
"ProgramFilesDir"="C:\\Program Files"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\ordl2009.exe] 1795380034
@="C:\\Ordelio\\ordl2009.exe"
"Path"="C:\\Ordelio"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\MAIUSCOLO.EXE] 1
@="C:\\ORDELIO\\ORDL2009.EXE"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\cartella.exe] 1
@="C:\\Ordelio"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\barra.exe] 1
@="C:\\Ordelio\\"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\sparito.exe] 1
@="C:\\Vecchio\\sparito.exe"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\virgolette.exe] 1
@="\"C:\\Ordelio\\ordl2009.exe\" \"%1\""

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\x.exe] 1
@="C:\\Tools.exe\\Ordelio"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\vuoto.exe] 1
@=""

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\solopath.exe] 1
"Path"="C:\\Ordelio"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\accento.exe] 1
@="C:\\Perch\xe9\\ordl2009.exe"

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\numero.exe] 1
"Versione"=dword:000007d9

[Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\multi.exe] 1
"Multi"=str(7):"uno\0due\0"
"Zeta"="dopo"
)";

std::string Lungo() {
  std::string s = "C:";
  for (int i = 0; i < 30; ++i) s += "\\Cartella";
  return s + "\\lungo.exe";
}

class TrovaEseguibileTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string reg = kRegistro;
    std::string valore;
    for (char c : Lungo()) valore += c == '\\' ? std::string("\\\\") : std::string(1, c);
    reg += "\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\App Paths\\\\lungo.exe] 1\n@=\"" +
           valore + "\"\n";
    Registro(reg);
    for (const char* f :
         {"Ordelio/ordl2009.exe", "Ordelio/cartella.exe", "Ordelio/barra.exe", "Ordelio/solopath.exe",
          "Program Files/sparito.exe", "Program Files/vuoto.exe", "Program Files/libero.exe",
          "Program Files/tool.exe", "Tools.exe/Ordelio/x.exe", "Perch\xc3\xa9/ordl2009.exe"})
      MacchinaProva::ScriviHost(m_.C(f), "MZ");
    std::string lungo = Lungo().substr(3);
    for (char& c : lungo)
      if (c == '\\') c = '/';
    MacchinaProva::ScriviHost(m_.C(lungo), "MZ");
  }
  void Registro(const std::string& testo) {
    MacchinaProva::ScriviHost(m_.Prefisso() + "/system.reg", testo);
    host::UsaPrefisso(m_.Prefisso());
  }
  MacchinaProva m_;
};

TEST_F(TrovaEseguibileTest, PrimaLaVoceDelRegistroPoiProgramFiles) {
  struct Caso {
    std::string nome, atteso;
  };
  const Caso casi[] = {
      {"ordl2009.exe", "C:\\Ordelio\\ordl2009.exe"},
      // Only the file name asks the registry.
      {"D:\\Altrove\\ordl2009.exe", "C:\\Ordelio\\ordl2009.exe"},
      {"maiuscolo.exe", "C:\\ORDELIO\\ORDL2009.EXE"},
      {"cartella.exe", "C:\\Ordelio\\cartella.exe"},
      // A folder registered with its closing backslash keeps the doubled one.
      {"barra.exe", "C:\\Ordelio\\\\barra.exe"},
      // The registry's answer stands even when it names nothing: no second look in Program Files.
      {"sparito.exe", ""},
      {"virgolette.exe", ""},
      {"x.exe", ""},
      // The first value, whichever it is, even one that is not the default value.
      {"solopath.exe", "C:\\Ordelio\\solopath.exe"},
      {"lungo.exe", Lungo()},
      {"accento.exe", "C:\\Perch\xe9\\ordl2009.exe"},
      // An empty first value is no value at all.
      {"vuoto.exe", "C:\\Program Files\\vuoto.exe"},
      {"libero.exe", "C:\\Program Files\\libero.exe"},
      {"assente.exe", ""},
      // Only the program-files path loses a quoted "%1".
      {"tool.exe \"%1\"", "C:\\Program Files\\tool.exe"},
  };
  for (const auto& c : casi) EXPECT_EQ(support::TrovaEseguibile(c.nome), c.atteso) << c.nome;
}

TEST_F(TrovaEseguibileTest, PrimoValoreECartelleSpeciali) {
  struct Caso {
    std::string chiave, atteso;
  };
  const std::string ap = support::kAppPaths;
  const Caso casi[] = {
      {ap + "ordl2009.exe", "C:\\Ordelio\\ordl2009.exe"},
      // Whatever the type: a number gives its bytes up to the first NUL, a multi-string its first string.
      {ap + "numero.exe", "\xd9\x07"},
      {ap + "multi.exe", "uno"},
      {ap + "manca.exe", ""},
      {"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths", ""},
  };
  for (const auto& c : casi) EXPECT_EQ(support::LeggiPrimoValoreRegistro(c.chiave), c.atteso) << c.chiave;

  EXPECT_EQ(support::GetCartellaSpeciale(38), "C:\\Program Files");
  EXPECT_EQ(support::GetCartellaSpeciale(5), "");
  // The room is trimmed at both ends, but the NUL after the path shields the blanks inside it.
  Registro(
      "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion]\n"
      "\"ProgramFilesDir\"=\"  C:\\\\Pf  \"\n");
  EXPECT_EQ(support::GetCartellaSpeciale(38), "C:\\Pf  ");
  // A closing backslash there is doubled by the join and mended: only this path is mended.
  Registro(
      "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion]\n"
      "\"ProgramFilesDir\"=\"C:\\\\Program Files\\\\\"\n");
  EXPECT_EQ(support::TrovaEseguibile("libero.exe"), "C:\\Program Files\\libero.exe");
}

TEST(TrovaEseguibileSenzaProgramFiles, CercaNellaRadiceDelDriveCorrente) {
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
