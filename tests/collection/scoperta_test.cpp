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
#include "misure_finte.h"

namespace {

namespace fs = std::filesystem;

// An App Paths entry in Wine's registry text, backslashes escaped inside the value.
std::string AppPath(const std::string& exe, std::string valore) {
  for (std::size_t k = 0; (k = valore.find('\\', k)) != std::string::npos; k += 2) valore.insert(k, 1, '\\');
  return "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\App Paths\\\\" + exe + "] 1\n@=\"" + valore +
         "\"\n\n";
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

// Gives the machine its registry and runs the discovery into the window.
void Cerca(const MacchinaProva& m, const std::string& registro, FinestraProva& f) {
  m.Registro("WINE REGISTRY Version 2\n\n" + registro);
  formats::PrefRecord pref;
  collection::CercaInstallazioni(f.principale, pref);
}

TEST(Scoperta, CartelleDalRegistroEDaOrdelio) {
  MisureFinte misure;
  enum Ordelio { kNo, kInstallato, kSoloNelRegistro };
  struct Caso {
    const char* nome;
    std::optional<std::string> tomb4;  // the App Paths value of tomb4.exe
    Ordelio ordelio;                   // ordl2009.exe in C:\Ordelio
    std::optional<std::string> prf;    // the bytes of C:\Ordelio\Ordelio.prf
    std::string trle, ordl;            // the captions afterwards
  };
  const std::string giusta = Prf("C:\\Trle", false);
  const Caso casi[] = {
      {"the executable's folder", "C:\\Games\\tomb4.exe", kNo, {}, "C:\\Games", ""},
      {"EXE in capitals is a file", "C:\\GAMES\\TOMB4.EXE", kNo, {}, "C:\\GAMES", ""},
      {"a folder as registered", "C:\\Games\\", kNo, {}, "C:\\Games\\", ""},
      {"PathTRLE beats the registry", "C:\\Games\\tomb4.exe", kInstallato, giusta, "C:\\Trle", "C:\\Ordelio"},
      {"PathTRLE padded with NULs", {}, kInstallato, Prf("C:\\Trle", true), "C:\\Trle", "C:\\Ordelio"},
      {"PathTRLE naming a file", "C:\\Games", kInstallato, Prf("C:\\Trle\\tomb4.exe", false), "C:\\Games",
       "C:\\Ordelio"},
      {"an empty registry value", "", kInstallato, {}, "", "C:\\Ordelio"},
      // The editor's folder is shown though its executable is gone; Ordelio's lookup needs the file, so
      // PathTRLE is not looked at.
      {"the registry is not checked on disk", "C:\\Sparito\\tomb4.exe", kSoloNelRegistro, giusta,
       "C:\\Sparito", ""},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.nome);
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("Trle/tomb4.exe"), "MZ");
    std::string reg = c.tomb4 ? AppPath("tomb4.exe", *c.tomb4) : "";
    if (c.ordelio != kNo) reg += AppPath("ordl2009.exe", "C:\\Ordelio\\ordl2009.exe");
    if (c.ordelio == kInstallato) MacchinaProva::ScriviHost(m.C("Ordelio/ordl2009.exe"), "MZ");
    if (c.prf) MacchinaProva::ScriviHost(m.C("Ordelio/Ordelio.prf"), *c.prf);
    FinestraProva f;
    Cerca(m, reg, f);
    EXPECT_EQ(f.nomeTrle.testo, c.trle);
    EXPECT_EQ(f.dirOrdl.storia,
              c.ordl.empty() ? std::vector<std::string>{} : std::vector<std::string>{c.ordl});
    EXPECT_EQ(f.principale.InfoHeader.StartFolderTrle.Testo(),
              c.trle + std::string(256 - c.trle.size(), ' '));
    EXPECT_EQ(f.principale.InfoHeader.StartFolderOrdl.Testo(),
              c.ordl + std::string(256 - c.ordl.size(), ' '));
    EXPECT_TRUE(f.messaggi.tutti.empty());
    EXPECT_EQ(f.dialogo.mostrato, 0);
  }
}

TEST(Scoperta, FigureDellaMacchina) {
#ifdef _WIN32
  GTEST_SKIP() << "needs the test prefix's D: link and drive types";
#endif
  MacchinaProva m;
  MisureFinte misure;
  MisureFinte::Figure()['C'] = {0, 0, 5000};
  MisureFinte::Figure()['D'] = {0, 0, 9000};
  FinestraProva f;
  f.principale.InfoHeader.FlagErrori = 7;
  Cerca(m, "", f);
  const formats::InfoHeader& h = f.principale.InfoHeader;
  EXPECT_TRUE(h.WindowsXp && h.DiscoMaggiore.Testo() == "D" && h.SpazioDiscoMaggiore == 9000 &&
              h.SpazioDiscoC == 5000);
  EXPECT_EQ(h.FlagErrori, 7);  // only the start fields are touched
}

}  // namespace
