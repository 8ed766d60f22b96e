#include "collection/scoperta.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "finestra_prova.h"
#include "formats/preferenze.h"
#include "host/dischi.h"
#include "host/machine.h"
#include "macchina_prova.h"

namespace {

namespace fs = std::filesystem;

// A registry text in Wine's form: backslashes and quotes escaped inside the value.
std::string Valore(const std::string& v) {
  std::string out = "\"";
  for (char c : v)
    out += c == '\\' ? std::string("\\\\") : c == '"' ? std::string("\\\"") : std::string(1, c);
  return out + "\"";
}

std::string AppPath(const std::string& exe, const std::string& valore) {
  return "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\App Paths\\\\" + exe +
         "] 1\n@=" + Valore(valore) + "\n\n";
}

// Ordelio's record with PathTRLE written as the record's own (blank-filled) or as raw bytes.
std::string Prf(const std::string& pathTrle, bool conNul) {
  formats::PrefRecord p;
  if (conNul)
    pathTrle.copy(p.PathTRLE.byte.data(), pathTrle.size());
  else
    p.PathTRLE.Assegna(pathTrle);
  return formats::CodificaPreferenze(p);
}

std::map<char, host::MisureVolume>& Figure() {
  static std::map<char, host::MisureVolume> f;
  return f;
}

bool MisuraFinta(const std::string& radice, host::MisureVolume* m) {
  const auto it = Figure().find(radice.empty() ? '\0' : radice[0]);
  if (it == Figure().end()) return false;
  *m = it->second;
  return true;
}

class ScopertaTest : public testing::Test {
 protected:
  void SetUp() override {
    Figure().clear();
    host::SostituisciMisuraVolume(MisuraFinta);
  }
  void TearDown() override { host::SostituisciMisuraVolume(nullptr); }

  void Registro(const std::string& corpo) {
    MacchinaProva::ScriviHost(m_.Prefisso() + "/system.reg", "WINE REGISTRY Version 2\n\n" + corpo);
    host::UsaPrefisso(m_.Prefisso());
  }
  MacchinaProva m_;
};

TEST_F(ScopertaTest, CartelleDalRegistroEDaOrdelio) {
  struct Caso {
    const char* nome;
    std::optional<std::string> tomb4;  // the App Paths value of tomb4.exe
    bool ordelio;                      // ordl2009.exe installed in C:\Ordelio
    std::optional<std::string> prf;    // the bytes of C:\Ordelio\Ordelio.prf
    std::string trle, ordl;            // the captions afterwards
  };
  const std::string giusta = Prf("C:\\Trle", false);
  const Caso casi[] = {
      {"the executable's folder", "C:\\Games\\tomb4.exe", false, {}, "C:\\Games", ""},
      {"EXE in capitals is a file", "C:\\GAMES\\TOMB4.EXE", false, {}, "C:\\GAMES", ""},
      {".exe inside the path counts too", "C:\\Tools.exe\\Editor", false, {}, "C:\\Tools.exe", ""},
      {"a folder as registered", "C:\\Games\\", false, {}, "C:\\Games\\", ""},
      {"PathTRLE beats the registry", "C:\\Games\\tomb4.exe", true, giusta, "C:\\Trle", "C:\\Ordelio"},
      {"PathTRLE without a registry entry", {}, true, giusta, "C:\\Trle", "C:\\Ordelio"},
      {"PathTRLE padded with NULs", "C:\\Games", true, Prf("C:\\Trle", true), "C:\\Trle", "C:\\Ordelio"},
      {"PathTRLE naming a file", "C:\\Games", true, Prf("C:\\Trle\\tomb4.exe", false), "C:\\Games",
       "C:\\Ordelio"},
      {"PathTRLE naming nothing", "C:\\Games", true, Prf("C:\\Altrove", false), "C:\\Games", "C:\\Ordelio"},
      {"a short prf still holds PathTRLE", "C:\\Games", true, giusta.substr(0, 600), "C:\\Trle",
       "C:\\Ordelio"},
      {"a long prf still holds PathTRLE",
       {},
       true,
       giusta + std::string(100, 'x'),
       "C:\\Trle",
       "C:\\Ordelio"},
      {"no prf: the registry stands", "C:\\Games", true, {}, "C:\\Games", "C:\\Ordelio"},
      {"an empty registry value", "", true, {}, "", "C:\\Ordelio"},
      {"nothing installed", {}, false, {}, "", ""},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.nome);
    MacchinaProva m;
    fs::create_directories(m.C("Trle"));
    MacchinaProva::ScriviHost(m.C("Trle/tomb4.exe"), "MZ");
    std::string reg;
    if (c.tomb4) reg += AppPath("tomb4.exe", *c.tomb4);
    if (c.ordelio) {
      MacchinaProva::ScriviHost(m.C("Ordelio/ordl2009.exe"), "MZ");
      reg += AppPath("ordl2009.exe", "C:\\Ordelio\\ordl2009.exe");
    }
    if (c.prf) MacchinaProva::ScriviHost(m.C("Ordelio/Ordelio.prf"), *c.prf);
    MacchinaProva::ScriviHost(m.Prefisso() + "/system.reg", "WINE REGISTRY Version 2\n\n" + reg);
    host::UsaPrefisso(m.Prefisso());

    FinestraProva f;
    formats::PrefRecord pref;
    collection::CercaInstallazioni(f.principale, pref);
    EXPECT_EQ(f.nomeTrle.testo, c.trle);
    EXPECT_EQ(f.dirOrdl.testo, c.ordl);
    EXPECT_EQ(f.principale.InfoHeader.StartFolderTrle.Testo(),
              c.trle + std::string(256 - c.trle.size(), ' '));
    EXPECT_EQ(f.principale.InfoHeader.StartFolderOrdl.Testo(),
              c.ordl + std::string(256 - c.ordl.size(), ' '));
    EXPECT_TRUE(f.messaggi.tutti.empty());
    EXPECT_EQ(f.dialogo.mostrato, 0);
  }
}

TEST_F(ScopertaTest, IlRegistroNonGuardaIlDisco) {
  // The registry's folder is shown although the executable is gone; the lookup of Ordelio, which needs
  // the file, finds nothing and PathTRLE is not looked at.
  MacchinaProva::ScriviHost(m_.C("Ordelio/Ordelio.prf"), Prf("C:\\Trle", false));
  fs::create_directories(m_.C("Trle"));
  Registro(AppPath("tomb4.exe", "C:\\Sparito\\tomb4.exe") +
           AppPath("ordl2009.exe", "C:\\Ordelio\\ordl2009.exe"));
  FinestraProva f;
  formats::PrefRecord pref;
  collection::CercaInstallazioni(f.principale, pref);
  EXPECT_EQ(f.nomeTrle.testo, "C:\\Sparito");
  EXPECT_EQ(f.dirOrdl.storia, std::vector<std::string>{});
}

TEST_F(ScopertaTest, FigureDellaMacchina) {
  Registro("");
  Figure()['C'] = {0, 0, 5000};
  Figure()['D'] = {0, 0, 9000};
  FinestraProva f;
  formats::PrefRecord pref;
  collection::CercaInstallazioni(f.principale, pref);
  const formats::InfoHeader& h = f.principale.InfoHeader;
  EXPECT_TRUE(h.WindowsXp);
  EXPECT_EQ(h.DiscoMaggiore.Testo(), "D");
  EXPECT_EQ(h.SpazioDiscoMaggiore, 9000);
  EXPECT_EQ(h.SpazioDiscoC, 5000);
  // Only the start fields are touched.
  EXPECT_EQ(h.FlagErrori, 0);
  EXPECT_EQ(h.VersioneOrdelio, formats::InfoHeader{}.VersioneOrdelio);
}

TEST_F(ScopertaTest, NessunDiscoFissoLasciaIlDiscoMaggiore) {
  Registro("[Software\\\\Wine\\\\Drives] 1\n\"c:\"=\"cdrom\"\n\"d:\"=\"cdrom\"\n\"z:\"=\"cdrom\"\n\n" +
           AppPath("tomb4.exe", "C:\\Games"));
  Figure()['C'] = {0, 0, 7};
  FinestraProva f;
  f.principale.InfoHeader.DiscoMaggiore.Assegna("Q");
  f.principale.InfoHeader.SpazioDiscoMaggiore = 42;
  formats::PrefRecord pref;
  collection::CercaInstallazioni(f.principale, pref);
  EXPECT_EQ(f.principale.InfoHeader.DiscoMaggiore.Testo(), "Q");
  EXPECT_EQ(f.principale.InfoHeader.SpazioDiscoMaggiore, 42);
  EXPECT_EQ(f.principale.InfoHeader.SpazioDiscoC, 7);
  EXPECT_EQ(f.nomeTrle.testo, "C:\\Games");
}

}  // namespace
