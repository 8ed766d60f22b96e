#include "formats/script.h"

#include <gtest/gtest.h>

#include "esadecimale.h"
#include "macchina_prova.h"

namespace {

using formats::AnalizzaScript;
using V = std::vector<std::string>;

// The heads of tests/data/script/casi.hex, then two files the editor's script compiler made.
TEST(Script, LivelliLetti) {
  const auto casi = LeggiCasi("script/casi.hex");
  ASSERT_EQ(casi.size(), 9u);
  for (const auto& c : casi) {
    std::int32_t n = 99;
    EXPECT_EQ(AnalizzaScript(c.byte, n), V(c.campi.begin() + 2, c.campi.end())) << c.campi[0];
    EXPECT_EQ(n, std::stoi(c.campi[1])) << c.campi[0];
  }
  const std::string reali = CHECKORDL_DATI_REALI;
  const std::string piccolo = MacchinaProva::LeggiHost(reali + "/script-small/script.dat");
  const std::string grande = MacchinaProva::LeggiHost(reali + "/script-trng/script.dat");
  if (piccolo.empty() || grande.empty()) GTEST_SKIP() << "no real script files beside the project";
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

}  // namespace
