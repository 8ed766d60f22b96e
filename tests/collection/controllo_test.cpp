#include "collection/controllo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <stdexcept>
#ifdef _WIN32
#include <windows.h>

#include <cwchar>
#endif

#include "collection/snapshot.h"
#include "esadecimale.h"
#include "finestra_prova.h"
#include "formats/ambiente.h"
#include "formats/archivio.h"
#include "formats/elenco.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "host/accesso_registro.h"
#include "host/macchina.h"
#include "illeggibile.h"
#include "macchina_prova.h"
#include "support/files.h"
#include "support/installazioni.h"

namespace {

namespace fs = std::filesystem;
using V = std::vector<std::string>;

// The clock of every run: the environment member records this moment.
collection::Ora OraFerma() {
  return {"2026-11-25T17:05:03", 60};
}

// Both installations complete, the archive naming a level folder; the program folder is C:\Prog.
struct Installazioni {
  MacchinaProva m;
  FinestraProva f;

  Installazioni() {
    const std::string exe = std::string(CHECKORDL_DATI_PROVA) + "/versione/prova.exe";
    for (const auto& [nome, byte] :
         std::map<std::string, std::string>{{"Trle/tomb4.exe", "MZ"},
                                            {"Trle/data/title.tr4", "t"},
                                            {"Trle/script.dat", "s"},
                                            {"Trle/ordeio.txt", "o"},
                                            {"Livelli/uno/a.tr4", "a"},
                                            {"Ordl/ordl2009.exe", MacchinaProva::LeggiHost(exe)}})
      MacchinaProva::ScriviHost(m.C(nome), byte);
    Preferenze("C:\\Ordl\\archivio.qlv");
    formats::ArchivioHeader h;
    h.SecondaryDir.Assegna("  C:\\Livelli  ");
    MacchinaProva::ScriviHost(m.C("Ordl/archivio.qlv"), formats::CodificaArchivioHeader(h));
    fs::create_directories(m.C("Prog"));
    f.principale.CartellaProgramma = "C:\\Prog";
    f.nomeTrle.testo = "C:\\Trle";
    f.dirOrdl.testo = "C:\\Ordl";
    f.principale.InfoHeader.StartFolderTrle.Assegna("C:\\Trle");
    f.principale.LeggiOra = OraFerma;
  }
  void Preferenze(const std::string& pathArchivio) {
    formats::PrefRecord p;
    p.PathArchivio.Assegna(pathArchivio);
    MacchinaProva::ScriviHost(m.C("Ordl/ordelio.prf"), formats::CodificaPreferenze(p));
  }
  // The user's desktop, made where the machine has none (a test prefix); its snapshot goes with the test.
  std::string Scrivania() {
#ifndef _WIN32
    MacchinaProva::ScriviHost(
        m.Prefisso() + "/user.reg",
        "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Explorer\\\\"
        "Shell Folders]\n\"Desktop\"=\"C:\\\\Scrivania\"\n");
    fs::create_directories(m.C("Scrivania"));
#endif
    scrivania = support::GetCartellaSpeciale(host::kCsidlDesktopDirectory) + "\\INFO_ORDL.BIN";
    return scrivania;
  }
  ~Installazioni() {
    std::error_code ec;
    if (!scrivania.empty()) fs::remove_all(host::PercorsoHost(scrivania, nullptr), ec);
  }
  std::string scrivania;
  // Everything below the installation folders and the level folder, names and bytes.
  std::map<std::string, std::string> Impronta() const {
    std::map<std::string, std::string> tutto;
    for (const char* radice : {"Trle", "Ordl", "Livelli"})
      for (const auto& e : fs::recursive_directory_iterator(m.C(radice)))
        tutto[e.path().string()] =
            e.is_regular_file() ? MacchinaProva::LeggiHost(e.path().string()) : "<dir>";
    return tutto;
  }
};

// The rows of tests/data/cartelle/controllo.txt. Each run: the snapshot's members and the bits for what is
// missing, or no snapshot; the one message; a folder caption left empty opens the dialog and keeps the window
// open, every other run closes it; the working files gone and the installations as they were.
TEST(Controllo, Corse) {
  const V completi = {"C:\\Prog\\Infofile.bin", "C:\\Ordl\\ordelio.prf", "C:\\Ordl\\archivio.qlv",
                      "C:\\Prog\\DirArc.el",    "C:\\Prog\\TRLE.el",     "C:\\Prog\\ORDL.el",
                      "C:\\Trle\\ordeio.txt",   "C:\\Trle\\script.dat"};
  const auto righe = LeggiTabella("cartelle/controllo.txt");
  ASSERT_EQ(righe.size(), 13u);
  for (const auto& r : righe) {
    SCOPED_TRACE(r[0]);
    Installazioni i;
    const std::string scrivania = i.Scrivania();
    const std::string& x = r[2];
    if (r[1] == "write") MacchinaProva::ScriviHost(i.m.C(x), "older");
    if (r[1] == "remove") fs::remove(i.m.C(x));
    if (r[1] == "move") fs::rename(i.m.C("Trle/ordeio.txt"), i.m.C(x));
    if (r[1] == "folder" || r[1] == "folders") fs::create_directories(i.m.C(x));
    if (r[1] == "folders") fs::create_directories(host::PercorsoHost(scrivania, nullptr));
    const std::string snapshot = r.size() > 7 && r[7] == "desktop" ? scrivania : collection::kNomeSnapshot;
    if (r[1] == "prf") i.Preferenze("");
    if (r[1] == "qlv")
      MacchinaProva::ScriviHost(i.m.C("Ordl/archivio.qlv"), formats::CodificaArchivioHeader({}));
    if (r[1] == "caption") (x == "editor" ? i.f.nomeTrle : i.f.dirOrdl).testo.clear();
    if (r[1] == "program") i.f.principale.CartellaProgramma = x;
    if (!r[6].empty()) i.f.dialogo.Rispondi(false, "");
    V membri;
    for (std::size_t k = 0; k < completi.size(); ++k)
      if (r[4].find(std::to_string(k)) == std::string::npos) membri.push_back(completi[k]);
    membri.push_back("C:\\Prog\\ambiente.json");
    const auto prima = i.Impronta();
    collection::Pul_Start_Click(i.f.principale);
    fs::create_directories(i.m.C("Dati"));
    collection::ContenutoSnapshot s;
    const bool estratto = collection::EstraiSnapshot(snapshot, "C:\\Dati", s);
    EXPECT_EQ(estratto, r[4] != "none");
    EXPECT_EQ(i.f.principale.SnapshotScritto, estratto ? snapshot : "");
    EXPECT_EQ(i.f.dialogo.titoli, r[6].empty() ? V{} : V{r[6]});
    ASSERT_EQ(i.f.messaggi.tutti.size(), 1u);
    const std::string& messaggio = i.f.messaggi.tutti[0];
    EXPECT_TRUE(messaggio.starts_with(r[5])) << messaggio;
    EXPECT_EQ(i.f.chiusure, r[6].empty() ? 1 : 0);
    EXPECT_TRUE(fs::is_empty(i.m.C("Prog")));
    EXPECT_EQ(i.Impronta(), prima);
    if (!estratto) continue;
    EXPECT_EQ(s.Nomi, membri);
    EXPECT_TRUE(
        messaggio.starts_with(r[5] + "\r\nNow you should send following file:\r\n" + snapshot + " ("));
    EXPECT_TRUE(messaggio.ends_with(")\r\nvia email to: " + collection::IndirizzoSupporto()));
    const auto h = formats::DecodificaInfoHeader(MacchinaProva::LeggiHost(i.m.C("Dati/Infofile.bin")));
    EXPECT_EQ(h.FlagErrori, std::stoi(r[3], nullptr, 16));
    EXPECT_EQ(h.VersioneOrdelio.Testo(),
              r[3] == "0x040" ? std::string(256, '\0') : "1, 0, 0, 5" + std::string(246, ' '));
    EXPECT_EQ(h.StartFolderTrle.Testo().substr(0, 7), "C:\\Trle");
  }
}

}  // namespace

namespace {

// The user's local application data folder below a profile whose name the ANSI code page cannot show
// ("Łukasz"), put back as it was when the test ends.
struct AppDataFuoriDalCodice {
#ifdef _WIN32
  static constexpr const wchar_t* kChiave =
      L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
  explicit AppDataFuoriDalCodice(const MacchinaProva&) {
    DWORD n = sizeof prima;
    salvato = ::RegGetValueW(HKEY_CURRENT_USER, kChiave, L"Local AppData", RRF_RT_ANY | RRF_NOEXPAND, &tipo,
                             prima, &n) == ERROR_SUCCESS;
    fs::create_directories(fs::path(kCartella));
    ::RegSetKeyValueW(HKEY_CURRENT_USER, kChiave, L"Local AppData", REG_SZ, kCartella,
                      static_cast<DWORD>((std::wcslen(kCartella) + 1) * sizeof(wchar_t)));
    host::UsaPrefisso({});
  }
  ~AppDataFuoriDalCodice() {
    if (salvato)
      ::RegSetKeyValueW(HKEY_CURRENT_USER, kChiave, L"Local AppData", tipo, prima,
                        static_cast<DWORD>((std::wcslen(prima) + 1) * sizeof(wchar_t)));
    std::error_code ec;
    fs::remove_all(fs::path(L"C:\\users\\\u0141ukasz"), ec);
    host::UsaPrefisso({});
  }
  static constexpr const wchar_t* kCartella = L"C:\\users\\\u0141ukasz\\AppData\\Local";
  wchar_t prima[1024] = {};
  DWORD tipo = REG_SZ;
  bool salvato = false;
#else
  explicit AppDataFuoriDalCodice(const MacchinaProva& m) {
    MacchinaProva::ScriviHost(
        m.Prefisso() + "/user.reg",
        "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\"
        "Explorer\\\\Shell Folders]\n\"Local "
        "AppData\"=\"C:\\\\users\\\\\\x0141ukasz\\\\AppData\\\\Local\"\n");
    fs::create_directories(m.C("users/Łukasz/AppData/Local"));
    host::UsaPrefisso(m.Prefisso());
  }
#endif
};

// The editor installed below "Program Files (x86)" by its 32-bit installer, its script compiled and a level
// converted since, which UAC virtualization (EnableLUA `lua`, EnableVirtualization `virtualizzazione`) put
// into the user's VirtualStore. The user's local application data folder, as the machine names it.
std::string EditorSottoProgramFiles(Installazioni& i, const char* lua, const char* virtualizzazione) {
  i.m.Registro(
      std::string(
          "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Policies\\\\"
          "System]\n\"EnableLUA\"=dword:0000000") +
      lua + "\n\"EnableVirtualization\"=dword:0000000" + virtualizzazione + "\n");
  const std::string trle = "Program Files (x86)\\Trle";
  for (const char* f : {"tomb4.exe", "ordeio.txt", "data\\title.tr4"})
    MacchinaProva::ScriviHost(i.m.C(trle + "\\" + f), "x");
  MacchinaProva::ScriviHost(i.m.C(trle + "\\script.dat"), "originale");
  long esito = 0;
  const std::string locale = host::CartellaSpeciale(host::kCsidlLocalAppData, &esito);
  // Planted through the machine layer, which reaches a folder below a profile the code page cannot show.
  const std::string copia = locale + "\\VirtualStore\\" + trle;
  for (const std::string& c :
       {locale + "\\VirtualStore", locale + "\\VirtualStore\\Program Files (x86)", copia, copia + "\\data"})
    support::CreaCartella(c);
  EXPECT_TRUE(support::ScriviFileIntero(copia + "\\data\\karnak.tr4", {"livello"}));
  EXPECT_TRUE(support::ScriviFileIntero(copia + "\\script.dat", {"compilato"}));
  i.f.nomeTrle.testo = "C:\\" + trle;
  return locale;
}

// The snapshot packs and lists what the editor itself reads. Rows: EnableLUA, EnableVirtualization, the
// script packed, the level listed, the VirtualStore below a profile whose name the ANSI code page cannot
// show.
TEST(Controllo, FileDegliStrumentiSottoUac) {
  const struct {
    const char* lua;
    const char* virtualizzazione;
    const char* script;
    bool livello;
    bool fuoriDalCodice;
  } righe[] = {{"1", "1", "compilato", true, false},
               {"1", "0", "originale", false, false},
               {"0", "1", "originale", false, false},
               {"1", "1", "compilato", true, true}};
  for (const auto& r : righe) {
    SCOPED_TRACE(std::string(r.lua) + r.virtualizzazione +
                 (r.fuoriDalCodice ? " outside the code page" : ""));
    Installazioni i;
    i.m.AppDataLocale();
    std::optional<AppDataFuoriDalCodice> appData;
    if (r.fuoriDalCodice) appData.emplace(i.m);
    const std::string locale = EditorSottoProgramFiles(i, r.lua, r.virtualizzazione);
    EXPECT_EQ(locale.find('?') != std::string::npos, r.fuoriDalCodice) << locale;
    collection::Pul_Start_Click(i.f.principale);
    fs::create_directories(i.m.C("Dati"));
    collection::ContenutoSnapshot s;
    ASSERT_TRUE(collection::EstraiSnapshot(collection::kNomeSnapshot, "C:\\Dati", s));
    EXPECT_EQ(MacchinaProva::LeggiHost(i.m.C("Dati/script.dat")), r.script);
    formats::ElencoFile elenco;
    ASSERT_TRUE(formats::CaricaElencoStretto("C:\\Dati\\TRLE.el", elenco));
    const bool livello = std::find(elenco.NomiFile.begin(), elenco.NomiFile.end(), "\\data\\karnak.tr4") !=
                         elenco.NomiFile.end();
    EXPECT_EQ(livello, r.livello);
  }
}

// The environment member behind the eight, from the run on the machine above with ordeio.txt held open by
// another program: the run's date, the script Windows served from the VirtualStore, the file left out and
// why. A clock that fails leaves the member out, and the run goes on as without it.
TEST(Controllo, Ambiente) {
  const struct {
    collection::Orologio orologio;
    bool membro;
  } righe[] = {{OraFerma, true},
               {[]() -> collection::Ora { throw std::runtime_error("no clock"); }, false},
               {[] { return collection::Ora{}; }, false}};
  for (const auto& r : righe) {
    Installazioni i;
    i.m.AppDataLocale();
    EditorSottoProgramFiles(i, "1", "1");
    i.f.principale.LeggiOra = r.orologio;
    const std::string trle = "C:\\Program Files (x86)\\Trle";
    fs::remove(i.m.C("Program Files (x86)/Trle/ordeio.txt"));
    {
      const Illeggibile tenuto(i.m.C("Program Files (x86)/Trle/ordeio.txt"));
      collection::Pul_Start_Click(i.f.principale);
    }
    collection::SnapshotInMemoria s;
    ASSERT_TRUE(collection::DecodificaSnapshot(MacchinaProva::LeggiHost(i.m.C("INFO_ORDL.BIN")), s));
    V nomi = {"C:\\Prog\\Infofile.bin", "C:\\Ordl\\ordelio.prf", "C:\\Ordl\\archivio.qlv",
              "C:\\Prog\\DirArc.el",    "C:\\Prog\\TRLE.el",     "C:\\Prog\\ORDL.el",
              trle + "\\script.dat"};
    if (r.membro) nomi.push_back("C:\\Prog\\ambiente.json");
    ASSERT_EQ(s.tabella.Nomi, nomi);
    EXPECT_EQ(s.corpi[1], MacchinaProva::LeggiHost(i.m.C("Ordl/ordelio.prf")));
    EXPECT_EQ(s.corpi[2], MacchinaProva::LeggiHost(i.m.C("Ordl/archivio.qlv")));
    EXPECT_EQ(s.corpi[6], "compilato");
    ASSERT_EQ(i.f.messaggi.tutti.size(), 2u);
    EXPECT_NE(i.f.messaggi.tutti[0].find(trle + "\\ordeio.txt"), std::string::npos);
    EXPECT_TRUE(fs::is_empty(i.m.C("Prog")));
    if (!r.membro) continue;
    formats::Ambiente a;
    std::string motivo;
    ASSERT_TRUE(formats::DecodificaAmbiente(s.corpi.back(), &a, &motivo)) << motivo;
    EXPECT_EQ(a.programma, "CheckORDL");
    EXPECT_EQ(a.bitProgramma, static_cast<int>(sizeof(void*) * 8));
    EXPECT_EQ(a.dataLocale, "2026-11-25T17:05:03");
    EXPECT_EQ(a.scartoUtcMinuti, 60);
    EXPECT_EQ(a.membriVirtuali, V{trle + "\\script.dat"});
    ASSERT_EQ(a.nonLetti.size(), 1u);
    EXPECT_EQ(a.nonLetti[0].percorso, trle + "\\ordeio.txt");
    EXPECT_EQ(a.nonLetti[0].errore, Illeggibile::kErrore);
  }
}

}  // namespace

namespace {

// The support contact: the first line of contatto.txt beside the program, trimmed; else the build's.
TEST(Controllo, IndirizzoDiSupporto) {
  MacchinaProva m;
  const std::string predefinito = collection::IndirizzoSupporto("C:\\Nessuno");
  const struct {
    const char* testo;
    std::string atteso;
  } righe[] = {{"aiuto@esempio.it\r\n", "aiuto@esempio.it"},
               {"  chi@dove.org  \nseconda riga", "chi@dove.org"},
               {"senza.fine@riga.it", "senza.fine@riga.it"},
               {"", predefinito},
               {"\r\n", predefinito},
               {"   \t\r\naltro@x.it", predefinito}};
  for (const auto& r : righe) {
    SCOPED_TRACE(r.testo);
    MacchinaProva::ScriviHost(m.C("Prog/contatto.txt"), r.testo);
    EXPECT_EQ(collection::IndirizzoSupporto("C:\\Prog"), r.atteso);
  }
}

}  // namespace
