#include <gtest/gtest.h>

#include <string>

#include "host/registro_file.h"
#include "macchina_prova.h"

namespace {

const std::string kDati = CHECKORDL_DATI_PROVA "/registro/";

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

}  // namespace
