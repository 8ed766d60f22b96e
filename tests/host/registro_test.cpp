#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "host/machine.h"
#include "host/registro.h"
#include "host/registro_file.h"
#include "macchina_prova.h"

// tests/data/registro/system.reg holds lines cut from the system.reg of a real prefix: Wine 8.0 (Debian
// 8.0~repack-4, 64-bit), `WINEPREFIX=... wineboot -i`, then `wine reg add` of the App Paths entries,
// Software\Prova and Software\Wine\Drives, then `wineserver -w`. The header, the CurrentVersion key, the
// Wow6432Node link and an Environment key with str(2) values came with the prefix.

namespace {

namespace fs = std::filesystem;

const std::string kDati = CHECKORDL_DATI_PROVA "/registro/system.reg";
const std::string kAp = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";

using Valore = std::tuple<std::string, int, std::string>;  // name, type, data

// The values of a key, in order; none when there is no such key.
std::vector<Valore> Valori(const std::vector<host::ChiaveRegistro>& chiavi, const std::string& nome) {
  std::vector<Valore> valori;
  for (const auto& k : chiavi)
    if (k.nome == nome)
      for (const auto& v : k.valori) valori.emplace_back(v.nome, v.tipo, v.dati);
  return valori;
}

std::vector<std::string> Nomi(const std::vector<Valore>& valori) {
  std::vector<std::string> nomi;
  for (const auto& v : valori) nomi.push_back(std::get<0>(v));
  return nomi;
}

TEST(FileRegistro, ValoriDiUnFileVero) {
  const auto chiavi = host::LeggiFileRegistro(kDati);
  const std::tuple<std::string, std::string, int, std::string> casi[] = {
      {kAp + "ordl2009.exe", "", host::kRegSz, "C:\\Ordelio\\ordl2009.exe"},
      {kAp + "numero.exe", "Versione", host::kRegDword, std::string("\xd9\x07\0\0", 4)},
      {kAp + "multi.exe", "Multi", host::kRegMultiSz, std::string("uno\0due\0", 8)},
      {kAp + "multi.exe", "Bin", host::kRegBinary, "\x01\x02\xff"},
      {kAp + "multi.exe", "Nome \"strano\"\\x", host::kRegSz, "tab\ta capo"},
      // U+00E9 padded to four digits before a hex digit, the euro sign, a character the code page lacks.
      {"Software\\Prova\\a]b[c", "x", host::kRegSz,
       "\xe9"
       "a\x80?\t\nq"},
      {"Software\\Prova\\a]b[c", "q", host::kRegQword, std::string("\x05\0\0\0\0\0\0\0", 8)},
      {"System\\CurrentControlSet\\Control\\Session Manager\\Environment", "windir", host::kRegExpandSz,
       "%SystemRoot%"},
  };
  for (const auto& [chiave, nome, tipo, dati] : casi) {
    const auto valori = Valori(chiavi, chiave);
    const auto it =
        std::find_if(valori.begin(), valori.end(), [&](auto& v) { return std::get<0>(v) == nome; });
    ASSERT_NE(it, valori.end()) << chiave << " / " << nome;
    EXPECT_EQ(*it, Valore(nome, tipo, dati));
  }

  // `wine reg add` of zeta, Beta, alfa, _under, ZZ and the default value, in that order; `wine reg query`
  // lists them as the file has them: lower case decides, so '_' and '[' come before letters.
  EXPECT_EQ(Nomi(Valori(chiavi, kAp + "ordine.exe")),
            (std::vector<std::string>{"", "_under", "alfa", "Beta", "zeta", "ZZ"}));
  EXPECT_EQ(Nomi(Valori(chiavi, "Software\\Prova\\a]b[c")),
            (std::vector<std::string>{"[", "a", "ab", "n", "q", "x", "xm", "Z", "\xe9"}));
}

// Hand-written keys, loaded by Wine 8.0 as a prefix's system.reg (with "#arch=win64" after the header, as a
// 64-bit prefix wants) and listed with `wine reg query`: what it showed is expected here, down to the
// values whose data it called malformed (kept, empty, of no type).
TEST(FileRegistro, ComeWineCaricaUnTestoScrittoAMano) {
  const std::string testo =
      "WINE REGISTRY Version 2\n"
      "\n"
      "\"orfano\"=\"no key yet\"\n"
      "[Software\\\\Esperimento]\n"
      "\"zeta\"=\"1\"\n"
      "\"gamma\"=dword:123456789\n"
      "\"eps\"=hex:1 ,2\n"
      "@=\"def\"\n"
      "\"multi\"=hex(7):41,00,00,00,42,00,00,00,00,00\n"
      "\"u8\"=\"caff\xc3\xa8\"\n"
      "\"oct\"=\"\\101\\7a\"\n"
      "\"hx\"=\"\\x41\\x4g\\x\"\n"
      "\"cont\"=hex:01,02,\\\n"
      "  03,04\n"
      "\"sz16\"=hex(1):41,00,42,00,00,00,43,00,00,00\n"
      "\"troppo\"=hex:100\n"
      "\"s4\"=str(4):\"ab\"\n"
      "\"aperta\"=\"unterminated\n"
      "\"senza uguale\" \"x\"\n"
      "\n"
      "[software\\\\esperimento] 1234\n"
      "\"Zeta\"=\"4\"\n"
      "\"omega\"=str(2):\"5\" trailing\n"
      "[\\\\Software\\\\\\\\Altra\\\\]\n"
      "\"v\"=\"x\"\n"
      "[Software\\\\Chiusa\n"
      "\"persa\"=\"x\"\n"
      "[]\n"
      "\"radice\"=\"r\"\n";
  const auto chiavi = host::AnalizzaTestoRegistro(testo);
  std::vector<std::string> nomi;
  for (const auto& k : chiavi) nomi.push_back(k.nome + "=" + std::to_string(k.valori.size()));
  EXPECT_EQ(nomi, (std::vector<std::string>{"Software\\Esperimento=14", "Software\\Altra=1", "=1"}));
  EXPECT_EQ(Valori(chiavi, "Software\\Esperimento"),
            (std::vector<Valore>{{"", host::kRegSz, "def"},
                                 {"aperta", host::kRegNone, ""},
                                 {"cont", host::kRegBinary, "\x01\x02\x03\x04"},
                                 {"eps", host::kRegBinary, "\x01\x02"},
                                 {"gamma", host::kRegDword, "\x89\x67\x45\x23"},
                                 {"hx", host::kRegSz, "A\x04gx"},
                                 {"multi", host::kRegMultiSz, std::string("A\0B\0", 4)},
                                 {"oct", host::kRegSz, "A\aa"},
                                 {"omega", host::kRegExpandSz, "5"},
                                 {"s4", host::kRegNone, ""},
                                 {"sz16", host::kRegSz, std::string("AB\0C", 4)},
                                 {"troppo", host::kRegNone, ""},
                                 {"u8", host::kRegSz, "caff\xe8"},
                                 {"zeta", host::kRegSz, "4"}}));

  // Wine refuses a file whose first line is not its header, whole.
  EXPECT_TRUE(host::AnalizzaTestoRegistro("WINE REGISTRY Version 3\n[A]\n\"v\"=\"1\"\n").empty());
  EXPECT_TRUE(host::AnalizzaTestoRegistro("").empty());
  // Line ends of another system, no final line end, blanks around the equals sign.
  EXPECT_EQ(Valori(host::AnalizzaTestoRegistro(
                       "WINE REGISTRY Version 2\r\n  [A\\\\B\\\\] 1\r\n\"v\" = \"1\"\r\n@=hex:\\"),
                   "A\\B"),
            (std::vector<Valore>{{"", host::kRegBinary, ""}, {"v", host::kRegSz, "1"}}));
}

TEST(RegistroPrefisso, EnumerazioneEApertura) {
  MacchinaProva m;
  m.Registro(MacchinaProva::LeggiHost(kDati));
  const std::string ap = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
  const std::tuple<std::string, int, long, std::string, std::string> casi[] = {
      {ap + "ordl2009.exe", 0, host::kRegOk, "", "C:\\Ordelio\\ordl2009.exe"},
      {ap + "ordl2009.exe", 2, host::kRegNessunAltro, "", ""},
      {ap + "ORDINE.EXE", 1, host::kRegOk, "_under", "u"},
      {ap + "perch\xc9.exe", 0, host::kRegOk, "", "x"},
      // Separators collapse and a trailing one is dropped, as in Wine; a leading one is refused.
      {"software\\\\microsoft\\Windows\\CurrentVersion\\App Paths\\ordl2009.exe\\", 0, host::kRegOk, "",
       "C:\\Ordelio\\ordl2009.exe"},
      {"\\" + ap + "ordl2009.exe", 0, host::kRegPercorsoErrato, "", ""},
      {ap + "manca.exe", 0, host::kRegNonTrovato, "", ""},
      // App Paths itself has no line of its own but exists, without values; so does the root.
      {ap, 0, host::kRegNessunAltro, "", ""},
      {"", 0, host::kRegNessunAltro, "", ""},
      // The 32-bit view of App Paths is a link to the shared key; its target is UTF-16 spread over
      // continuation lines.
      {"Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths\\ordl2009.exe", 1, host::kRegOk,
       "Path", "C:\\Ordelio"},
  };
  for (const auto& [chiave, indice, esito, nome, dati] : casi) {
    SCOPED_TRACE(chiave + " " + std::to_string(indice));
    std::string n = "?", d = "?";
    int tipo = -1;
    ASSERT_EQ(host::LeggiValoreRegistroIndice(chiave, indice, &n, &d, &tipo), esito);
    if (esito != host::kRegOk) continue;
    EXPECT_EQ(Valore(n, tipo, d), Valore(nome, host::kRegSz, dati));
  }
  std::string dati;
  EXPECT_EQ(host::LeggiValoreRegistroNome("Software\\Wine\\Drives", "D:", &dati), host::kRegOk);
  EXPECT_EQ(dati, "cdrom");
  EXPECT_EQ(host::LeggiValoreRegistroNome("Software\\Wine\\Drives", "q:", &dati), host::kRegNonTrovato);
}

TEST(RegistroPrefisso, FileCambiatoEFileAssente) {
#ifdef _WIN32
  GTEST_SKIP() << "about the prefix's system.reg file itself";
#endif
  MacchinaProva m;
  long esito = 0;
  // No system.reg: not a machine Wine has set up, so no program-files folder either.
  EXPECT_EQ(host::CartellaSpeciale(38, &esito), "");
  EXPECT_NE(esito, 0);
  std::string nome, dati;
  EXPECT_EQ(host::LeggiValoreRegistroIndice("Software", 0, &nome, &dati), host::kRegNonTrovato);

  const auto cartella = [&](const std::string& valore) {
    MacchinaProva::ScriviHost(
        m.Prefisso() + "/system.reg",
        "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion]\n"
        "\"ProgramFilesDir\"=\"" +
            valore + "\"\n");
    return host::CartellaSpeciale(38, &esito);
  };
  fs::create_directories(m.C("Pf"));
  fs::create_directories(m.C("Qf"));
  EXPECT_EQ(cartella("C:\\\\Pf"), "C:\\Pf");
  // The same size, written within the same tick of the file clock: the new content still counts.
  EXPECT_EQ(cartella("C:\\\\Qf"), "C:\\Qf");
  EXPECT_EQ(esito, 0);
  // Wine gives the folder only when it is there; an empty value names nothing.
  for (const char* valore : {"C:\\\\Rf", "D:\\\\Pf", ""}) {
    EXPECT_EQ(cartella(valore), "") << valore;
    EXPECT_EQ(esito, static_cast<std::int32_t>(0x80070002u)) << valore;
  }
}

}  // namespace
