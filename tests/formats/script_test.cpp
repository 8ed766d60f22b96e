#include "formats/script.h"

#include <gtest/gtest.h>

#include <random>

#include "esadecimale.h"
#include "host/byte_le.h"
#include "macchina_prova.h"

namespace {

using formats::AnalizzaScript;
using V = std::vector<std::string>;

// Script files the editor's compiler made, kept beside the project and never in it.
const std::string kReali = CHECKORDL_DATI_REALI;
std::string Reale(const char* nome) {
  return MacchinaProva::LeggiHost(kReali + nome);
}
#define SALTA_SENZA_REALI() \
  GTEST_SKIP() << "no real script files in " << kReali << ": they stay outside the repository"

// The heads of tests/data/script/casi.hex, then two files the editor's script compiler made.
TEST(Script, LivelliLetti) {
  const auto casi = LeggiCasi("script/casi.hex");
  ASSERT_EQ(casi.size(), 9u);
  for (const auto& c : casi) {
    std::int32_t n = 99;
    EXPECT_EQ(AnalizzaScript(c.byte, n), V(c.campi.begin() + 2, c.campi.end())) << c.campi[0];
    EXPECT_EQ(n, std::stoi(c.campi[1])) << c.campi[0];
  }
  const std::string piccolo = Reale("/script-small/script.dat");
  const std::string grande = Reale("/script-trng/script.dat");
  if (piccolo.empty() || grande.empty()) SALTA_SENZA_REALI();
  std::int32_t n = -1;
  EXPECT_EQ(AnalizzaScript(piccolo, n), (V{"DATA\\TITLE.tr4", "DATA\\TEST.tr4"}));
  EXPECT_EQ(n, 2);
  const V attesi = {"DATA\\TITLE.tr4",     "DATA\\TUTORIAL.tr4", "DATA\\kriegler.tr4", "DATA\\kriegler2.tr4",
                    "DATA\\DESCENT.tr4",   "DATA\\CENNET.tr4",   "DATA\\ZENOATH.tr4",  "DATA\\VALLEY.tr4",
                    "DATA\\HIMALAYAN.tr4", "DATA\\egypt.tr4",    "DATA\\GHEMAL.tr4",   "DATA\\DEMO.tr4",
                    "DATA\\KURTIS.tr4"};
  EXPECT_EQ(AnalizzaScript(grande, n), attesi);
  EXPECT_EQ(n, 13);
}

// The heads of tests/data/script/problemi.hex; the two real files, whose table gives the names the reader
// gives, and which read as nothing once cut anywhere in their head, table or names; and random bytes,
// which never pass.
TEST(Script, ProblemaDellaTesta) {
  for (const auto& c : LeggiCasi("script/problemi.hex")) {
    const formats::TabellaScript t = formats::AnalizzaTabellaScript(c.byte);
    EXPECT_EQ(t.problema.substr(0, c.campi[1].size()), c.campi[1]) << c.campi[0] << ": " << t.problema;
    EXPECT_EQ(t.problema.empty(), c.campi[1].empty()) << c.campi[0] << ": " << t.problema;
    EXPECT_EQ(t.livelli, V(c.campi.begin() + 2, c.campi.end())) << c.campi[0];
  }
  std::mt19937 caso(32);
  for (int i = 0; i < 2000; ++i) {
    std::string byte(300, '\0');
    for (char& b : byte) b = static_cast<char>(caso());
    EXPECT_NE(formats::AnalizzaTabellaScript(byte).problema, "") << i;
  }
  for (const char* f : {"/script-small/script.dat", "/script-trng/script.dat"}) {
    const std::string byte = Reale(f);
    if (byte.empty()) SALTA_SENZA_REALI();
    std::int32_t numero = 0;
    EXPECT_EQ(formats::AnalizzaTabellaScript(byte).livelli, AnalizzaScript(byte, numero)) << f;
    // The head, the table and the names: what the count and the length at offset 12 measure.
    const std::size_t fine =
        formats::kDimensioneIntestazioneScript + 2 * host::U16LE(byte, 10) + host::U16LE(byte, 12);
    for (std::size_t n = 0; n < fine; ++n)
      EXPECT_NE(formats::AnalizzaTabellaScript(byte.substr(0, n)).problema, "") << f << n;
    EXPECT_EQ(formats::AnalizzaTabellaScript(byte.substr(0, fine)).problema, "") << f;
  }
}

}  // namespace
