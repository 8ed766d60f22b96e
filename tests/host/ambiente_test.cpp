// The machine around the installations: PE import tables, hostile ones included, the Zone.Identifier text,
// and a planted machine read through the back end this build has (a Wine prefix natively; under the Windows
// build, the throwaway prefix Wine runs the suite in, put back as it was).
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "host/accesso_registro.h"
#include "host/ambiente.h"
#include "host/byte_le.h"
#include "host/macchina.h"
#include "host/pe_importazioni.h"
#include "host/vista_virtuale.h"
#include "macchina_prova.h"
#include "osservatore_allocazioni.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

struct FormaPe {
  bool piu = false;  // PE32+
  std::uint16_t macchina = 0x14C;
  std::vector<std::string> dll;
  // Overrides the import directory's address (0: where the table is).
  std::uint32_t rvaImportazioni = 0;
  // Leaves the descriptors without the empty one that ends them, the section ending right after them.
  bool senzaFine = false;
  // Points the first name outside every section.
  bool nomeFuori = false;
};

// A PE file with one section at RVA 0x1000, file offset 0x400: the descriptors, then the names.
std::string Pe(const FormaPe& f) {
  const std::size_t opzionale = f.piu ? 240 : 224;
  std::string b(0x400, '\0');
  b[0] = 'M';
  b[1] = 'Z';
  host::ScriviLE<std::uint32_t>(b, 0x3C, 0x40);
  b.replace(0x40, 4, std::string("PE\0\0", 4));
  host::ScriviLE<std::uint16_t>(b, 0x44, f.macchina);
  host::ScriviLE<std::uint16_t>(b, 0x46, 1);
  host::ScriviLE<std::uint16_t>(b, 0x54, static_cast<std::uint16_t>(opzionale));
  const std::size_t o = 0x58;
  host::ScriviLE<std::uint16_t>(b, o, f.piu ? 0x20B : 0x10B);
  host::ScriviLE<std::uint32_t>(b, o + (f.piu ? 108 : 92), 16);
  // The names first, then the descriptors, which end the section.
  std::string dati;
  std::vector<std::uint32_t> nomi;
  for (const std::string& d : f.dll) {
    nomi.push_back(f.nomeFuori && nomi.empty() ? 0x900000u
                                               : 0x1000u + static_cast<std::uint32_t>(dati.size()));
    dati += d + '\0';
  }
  const auto tabella = static_cast<std::uint32_t>(0x1000 + dati.size());
  host::ScriviLE<std::uint32_t>(b, o + (f.piu ? 112 : 96) + 8,
                                f.rvaImportazioni ? f.rvaImportazioni : tabella);
  for (const std::uint32_t n : nomi) {
    host::AccodaLE<std::uint32_t>(dati, 0);
    host::AccodaLE<std::uint32_t>(dati, 0);
    host::AccodaLE<std::uint32_t>(dati, 0);
    host::AccodaLE<std::uint32_t>(dati, n);
    host::AccodaLE<std::uint32_t>(dati, 0x2000);
  }
  if (!f.senzaFine) dati.append(20, '\0');
  const std::size_t s = o + opzionale;
  host::ScriviLE<std::uint32_t>(b, s + 12, 0x1000);
  host::ScriviLE<std::uint32_t>(b, s + 16, static_cast<std::uint32_t>(dati.size()));
  host::ScriviLE<std::uint32_t>(b, s + 20, 0x400);
  return b + dati;
}

TEST(Ambiente, TabelleDiImportazione) {
  const std::vector<std::string> tre = {"d3dx9_43.dll", "MSVCR71.dll", "api-ms-win-crt-runtime-l1-1-0.dll"};
  std::vector<std::string> tante(10000);
  for (std::size_t i = 0; i < tante.size(); ++i) tante[i] = std::to_string(i).append(".dll");
  const std::vector<std::string> primi(tante.begin(), tante.begin() + host::kMassimoImportazioni);
  constexpr std::string_view kFuori = "the import table reaches outside the file";
  const struct {
    const char* caso;
    FormaPe forma;
    host::MacchinaPe macchina;
    std::vector<std::string> dll;
    // How the problem the reader names begins; empty: none.
    std::string_view problema;
  } righe[] = {
      {"PE32", {false, 0x14C, tre}, host::MacchinaPe::x86, tre, ""},
      {"PE32+", {true, 0x8664, tre}, host::MacchinaPe::x64, tre, ""},
      {"other machine", {false, 0x1C4, {}}, host::MacchinaPe::altra, {}, ""},
      {"table outside the file", {false, 0x14C, tre, 0x7FFFFFF0}, host::MacchinaPe::x86, {}, kFuori},
      {"no closing descriptor", {false, 0x14C, tre, 0, true}, host::MacchinaPe::x86, tre, kFuori},
      {"name outside", {false, 0x14C, tre, 0, false, true}, host::MacchinaPe::x86, {}, "a DLL name"},
      {"10,000 imports", {false, 0x14C, tante}, host::MacchinaPe::x86, primi, "the import table names more"},
  };
  for (const auto& r : righe) {
    SCOPED_TRACE(r.caso);
    const std::string byte = Pe(r.forma);
    host::LettoreMemoria l(byte);
    const host::ImportazioniPe imp = host::LeggiImportazioniPe(l);
    EXPECT_EQ(imp.macchina, r.macchina);
    EXPECT_EQ(imp.dll, r.dll);
    EXPECT_EQ(imp.problema.substr(0, r.problema.size()), r.problema);
    EXPECT_EQ(imp.problema.empty(), r.problema.empty()) << imp.problema;
  }
  // Not a PE file, and every cut of a good one: read safely, never more than the file holds.
  const std::string intero = Pe({false, 0x14C, tre});
  for (std::size_t n = 0; n < intero.size(); n += 7) {
    const std::string parte = intero.substr(0, n);
    host::LettoreMemoria l(parte);
    OsservaAllocazioni o;
    const host::ImportazioniPe imp = host::LeggiImportazioniPe(l);
    EXPECT_LT(o.Massima(), 4096u) << n;
    EXPECT_FALSE(imp.problema.empty()) << n;
  }
}

TEST(Ambiente, TestoDellaZona) {
  const struct {
    const char* testo;
    int zona;
  } righe[] = {{"[ZoneTransfer]\r\nZoneId=3\r\n", 3},
               {"\xEF\xBB\xBF[zonetransfer]\nReferrerUrl=x\n zoneid = 4 \n", 4},
               {"[Other]\r\nZoneId=3\r\n[ZoneTransfer]\r\nHostUrl=y\r\n", host::kZonaNessuna},
               {"ZoneId=3\r\n", host::kZonaNessuna},
               {"[ZoneTransfer]\r\nZoneId=-1\r\n", host::kZonaNessuna},
               {"[ZoneTransfer]\r\nZoneId=99999\r\n", host::kZonaNessuna},
               {"", host::kZonaNessuna}};
  for (const auto& r : righe) EXPECT_EQ(host::ZonaDelTesto(r.testo), r.zona) << r.testo;
}

#ifdef _WIN32
// A value of HKEY_CURRENT_USER set for one test and taken away after it.
struct ValoreUtente {
  std::string chiave, nome;
  ValoreUtente(std::string c, std::string n, const std::string& dati)
      : chiave(std::move(c)), nome(std::move(n)) {
    HKEY h = nullptr;
    ::RegCreateKeyExA(HKEY_CURRENT_USER, chiave.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &h, nullptr);
    ::RegSetValueExA(h, nome.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(dati.c_str()),
                     static_cast<DWORD>(dati.size() + 1));
    ::RegCloseKey(h);
  }
  ~ValoreUtente() { ::RegDeleteKeyValueA(HKEY_CURRENT_USER, chiave.c_str(), nome.c_str()); }
};
#endif

// Files planted for one test; on Windows (a real prefix) taken away after it.
struct Piantati {
  std::vector<std::string> host;
  void Scrivi(const std::string& h, const std::string& byte) {
    MacchinaProva::ScriviHost(h, byte);
    host.push_back(h);
  }
  ~Piantati() {
#ifdef _WIN32
    // The folders made for them too, as far as they are left empty.
    for (const std::string& h : host) {
      std::remove(h.c_str());
      for (std::size_t k = h.find_last_of('\\'); k > 3 && k != std::string::npos;
           k = h.find_last_of('\\', k - 1))
        if (!::RemoveDirectoryA(h.substr(0, k).c_str())) break;
    }
#endif
  }
};

constexpr const char* kTomb4 = "C:\\Giochi\\Trle\\tomb4.exe";

// A 32-bit tomb4.exe and the DLLs it imports, planted on a 64-bit and a 32-bit Windows. Each row: a DLL, and
// where the loader finds it for that program on each kind of system.
TEST(Ambiente, MacchinaPiantata) {
#ifdef _WIN32
  BOOL wow = FALSE;
  if (sizeof(void*) == 4 && ::IsWow64Process(::GetCurrentProcess(), &wow) && wow)
    GTEST_SKIP() << "the planted registry is written through the 32-bit view here";
#endif
  using O = host::Origine;
  const struct {
    const char* dll;
    const char* dove;  // below C:\, "" nowhere
    O su64, su32;
  } dll[] = {{"solo32.dll", "windows\\system32", O::nonTrovata, O::sistema},
             {"solowow.dll", "windows\\syswow64", O::sistema, O::nonTrovata},
             {"accanto.dll", "Giochi\\Trle", O::cartellaEseguibile, O::cartellaEseguibile},
             {"inwindows.dll", "windows", O::cartellaWindows, O::cartellaWindows},
             {"nessuna.dll", "", O::nonTrovata, O::nonTrovata},
             {"api-ms-win-crt-runtime-l1-1-0.dll", "", O::apiSet, O::apiSet}};
  for (const bool a64 : {true, false}) {
    SCOPED_TRACE(a64 ? "64-bit Windows" : "32-bit Windows");
#ifdef _WIN32
    MacchinaProva m;
    if (!a64 || !m.Windows64()) {
      std::cout << "the planted 32-bit Windows is not tried: it needs a 32-bit Wine to run this build in\n";
      continue;
    }
    ValoreUtente hkcu("Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\Layers", kTomb4,
                      "~ HIGHDPIAWARE");
#else
    MacchinaProva m;
    m.AppDataLocale();
    const std::string utente = MacchinaProva::LeggiHost(m.Prefisso() + "/user.reg");
    MacchinaProva::ScriviHost(
        m.Prefisso() + "/user.reg",
        utente +
            "\n[Control Panel\\\\Desktop]\n\"LogPixels\"=dword:00000090\n"
            "[Software\\\\Microsoft\\\\Windows NT\\\\CurrentVersion\\\\AppCompatFlags\\\\Layers]\n"
            "\"c:\\\\giochi\\\\trle\\\\TOMB4.EXE\"=\"~ HIGHDPIAWARE\"\n");
#endif
    m.Registro(MacchinaProva::LeggiHost(CHECKORDL_DATI_PROVA "/ambiente/system.reg") +
               (a64 ? "" : "#arch=win32\n"));
    host::DimenticaVistaVirtuale();
    Piantati p;
    std::vector<std::string> nomi;
    for (const auto& d : dll) {
      nomi.push_back(d.dll);
      if (*d.dove) p.Scrivi(m.C(std::string(d.dove) + "\\" + d.dll), "MZ");
    }
#ifdef CHECKORDL_TOMB4
    const std::string tomb4 = MacchinaProva::LeggiHost(CHECKORDL_TOMB4);
#else
    std::cout << "no i686-w64-mingw32-gcc at build time: tomb4.exe is the tests' own PE file\n";
    const std::string tomb4 = Pe({false, 0x14C, nomi});
#endif
    p.Scrivi(m.C("Giochi\\Trle\\tomb4.exe"), tomb4);
    for (const char* altro : {"Zeta.exe", "alfa.EXE", "ngle.exe", "leggimi.txt", "b.exe1"})
      p.Scrivi(m.C(std::string("Giochi\\Trle\\") + altro), "x");

    const host::SistemaWindows s = host::LeggiSistemaWindows();
    EXPECT_EQ(s.windows64, a64);
    EXPECT_EQ(s.prodotto, "Windows 10 Pro");
    EXPECT_EQ(s.rilascio, "22H2");
    EXPECT_EQ(s.accessoControllato, std::optional<std::uint32_t>(1));
    EXPECT_TRUE(s.wine);
    EXPECT_FALSE(s.zoneLeggibili);
#ifndef _WIN32
    EXPECT_EQ(s.maggiore, 10u);
    EXPECT_EQ(s.build, 19045u);
    EXPECT_EQ(s.dpi, 144u);
    EXPECT_EQ(s.codePage, 1250u);
    EXPECT_EQ(s.wow64, a64 && sizeof(void*) == 4);
#endif

    EXPECT_EQ(host::EseguibiliInCima("C:\\Giochi\\Trle", {"ngle.exe", "TOMB4.EXE"}),
              (std::vector<std::string>{"C:\\Giochi\\Trle\\ngle.exe", "C:\\Giochi\\Trle\\tomb4.exe",
                                        "C:\\Giochi\\Trle\\alfa.EXE", "C:\\Giochi\\Trle\\Zeta.exe"}));
    // A folder of many programs: the first ones asked for still lead, the list stops at the limit.
    for (int i = 0; i < 70; ++i)
      p.Scrivi(m.C(std::string("Giochi\\Molti\\p").append(std::to_string(100 + i)).append(".exe")), "x");
    const auto molti = host::EseguibiliInCima("C:\\Giochi\\Molti", {"p169.exe"});
    ASSERT_EQ(molti.size(), host::kMassimoEseguibili);
    EXPECT_EQ(molti.front(), "C:\\Giochi\\Molti\\p169.exe");
    EXPECT_EQ(molti.back(), "C:\\Giochi\\Molti\\p162.exe");

    const host::Eseguibile e = host::StudiaEseguibile(kTomb4, s);
    EXPECT_EQ(e.macchina, host::MacchinaPe::x86);
    EXPECT_EQ(e.problema, "");
    ASSERT_EQ(e.importazioni.size(), std::size(dll));
    // The linker orders the table its own way.
    for (const auto& imp : e.importazioni) {
      SCOPED_TRACE(imp.nome);
      const auto* r =
          std::find_if(std::begin(dll), std::end(dll), [&](const auto& d) { return imp.nome == d.dll; });
      ASSERT_NE(r, std::end(dll));
      EXPECT_EQ(imp.origine, a64 ? r->su64 : r->su32);
      const bool trovata = imp.origine != O::nonTrovata && imp.origine != O::apiSet;
      EXPECT_EQ(imp.percorso.empty(), !trovata) << imp.percorso;
    }
    std::vector<std::string> livelli;
    for (const auto& l : e.livelli) livelli.push_back(l.radice + "=" + l.dati);
    std::vector<std::string> attesi = {"HKCU=~ HIGHDPIAWARE", "HKLM=~ RUNASADMIN"};
    if (a64) attesi.push_back("HKLM (32-bit)=~ WINXPSP3");
    EXPECT_EQ(livelli, attesi);
    EXPECT_EQ(host::StudiaEseguibile("C:\\Giochi\\Trle\\Zeta.exe", s).problema,
              "not a PE file that can be read");
  }
}

// What a legacy program reads of a folder from the user's VirtualStore: paths as it sees them, sorted, cut
// at the limit, all counted; nothing where UAC does not virtualize.
TEST(Ambiente, FileDaVirtualStore) {
  const std::string trle = "C:\\Program Files (x86)\\Trle";
  for (const char* lua : {"1", "0"}) {
    MacchinaProva m;
    m.AppDataLocale();
    const std::string politiche =
        "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Policies\\\\"
        "System]\n\"EnableLUA\"=dword:0000000";
    // Planted where the machine puts the copy when it virtualizes.
    m.Registro(politiche + "1\n");
    host::DimenticaVistaVirtuale();
    const std::string copia = host::CopiaVirtuale(trle);
    ASSERT_FALSE(copia.empty());
    Piantati p;
    int err = 0;
    for (const char* f : {"\\script.dat", "\\data\\karnak.tr4", "\\DATA\\alfa.tr4"})
      p.Scrivi(host::PercorsoHost(copia + f, &err), "x");
    m.Registro(politiche + lua + "\n");
    host::DimenticaVistaVirtuale();
    std::size_t totale = 99;
    const auto file = host::FileDaVirtualStore(trle, 2, &totale);
    if (*lua == '1') {
      EXPECT_EQ(totale, 3u);
      EXPECT_EQ(file, (std::vector<std::string>{trle + "\\data\\alfa.tr4", trle + "\\data\\karnak.tr4"}));
    } else {
      EXPECT_EQ(totale, 0u);
      EXPECT_TRUE(file.empty());
    }
  }
}

}  // namespace
