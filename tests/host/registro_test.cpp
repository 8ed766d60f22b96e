#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>

#include "host/machine.h"
#include "host/registro.h"
#include "host/registro_file.h"
#include "macchina_prova.h"

namespace {

const std::string kDati = CHECKORDL_DATI_PROVA "/registro/";

using Valore = std::tuple<std::string, int, std::string>;  // name, type, data

// Bytes as text: what is not printable ASCII as \xHH.
std::string Visibile(const std::string& b) {
  static const char kCifre[] = "0123456789abcdef";
  std::string s;
  for (const unsigned char c : b) {
    if (c >= 0x20 && c < 0x7F)
      s += static_cast<char>(c);
    else
      s += std::string("\\x") + kCifre[c >> 4] + kCifre[c & 15];
  }
  return s;
}

// tests/data/registro/system.reg holds lines cut from the system.reg of a real prefix: Wine 8.0 (Debian
// 8.0~repack-4, 64-bit), `WINEPREFIX=... wineboot -i`, then `wine reg add` of the App Paths entries,
// Software\Prova and Software\Wine\Drives, then `wineserver -w`; `wine reg query` lists each key's values
// as the dump has them (lower case decides, so '_' and '[' come before letters). a_mano.reg is written by
// hand and was loaded by Wine 8.0 as a prefix's system.reg (with "#arch=win64" after the header): what
// `wine reg query` showed is in its dump, down to the values whose data it called malformed (kept, empty,
// of no type). Wine refuses a file whose first line is not its header, whole.
TEST(FileRegistro, ComeLoCaricaWine) {
  for (const char* nome : {"system", "a_mano", "intestazione", "crlf"}) {
    SCOPED_TRACE(nome);
    std::string dump;
    for (const auto& k : host::LeggiFileRegistro(kDati + nome + ".reg")) {
      dump += "[" + Visibile(k.nome) + (k.collegamento ? "] link\n" : "]\n");
      for (const auto& v : k.valori)
        dump += Visibile(v.nome) + "\t" + std::to_string(v.tipo) + "\t" + Visibile(v.dati) + "\n";
    }
    EXPECT_EQ(dump, MacchinaProva::LeggiHost(kDati + nome + ".txt"));
  }
}

TEST(RegistroPrefisso, EnumerazioneEApertura) {
  MacchinaProva m;
  m.Registro(MacchinaProva::LeggiHost(kDati + "system.reg"));
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

// Wine's program-files folder: the registry's value, else its own default, also when there is no
// registry yet; an empty value, or one that names nothing, gives none.
TEST(RegistroPrefisso, CartellaProgrammi) {
#ifdef _WIN32
  GTEST_SKIP() << "about the prefix's system.reg file itself";
#endif
  MacchinaProva m;
  std::filesystem::create_directories(m.C("Program Files"));
  std::filesystem::create_directories(m.C("Pf"));
  std::filesystem::create_directories(m.C("Qf"));
  const std::string chiave =
      "WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion]\n";
  // system.reg (none when null), the folder, the result
  const std::tuple<const char*, std::string, long> casi[] = {
      {nullptr, "C:\\Program Files", 0},
      {"", "C:\\Program Files", 0},
      {"\"ProgramFilesDir\"=\"\"\n", "", 0x80070002},
      {"\"ProgramFilesDir\"=\"C:\\\\Pf\"\n", "C:\\Pf", 0},
      // The same size, written within the same tick of the file clock: the new content still counts.
      {"\"ProgramFilesDir\"=\"C:\\\\Qf\"\n", "C:\\Qf", 0},
      {"\"ProgramFilesDir\"=\"C:\\\\Rf\"\n", "", 0x80070002},
  };
  for (const auto& [valori, cartella, atteso] : casi) {
    SCOPED_TRACE(valori ? valori : "no system.reg");
    if (valori) MacchinaProva::ScriviHost(m.Prefisso() + "/system.reg", chiave + valori);
    long esito = -1;
    EXPECT_EQ(host::CartellaSpeciale(38, &esito), cartella);
    EXPECT_EQ(esito, static_cast<std::int32_t>(atteso));
  }
  std::string nome, dati;
  std::filesystem::remove(m.Prefisso() + "/system.reg");
  EXPECT_EQ(host::LeggiValoreRegistroIndice("Software", 0, &nome, &dati), host::kRegNonTrovato);
}

}  // namespace
