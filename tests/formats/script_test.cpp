#include "formats/script.h"

#include <gtest/gtest.h>

#include "macchina_prova.h"

namespace {

using formats::AnalizzaScript;
using V = std::vector<std::string>;

// A script head with N names, the table and the block.
std::string Script(std::int16_t n, const std::vector<std::int16_t>& tabella, const std::string& blocco) {
  std::string b = std::string(10, 'h') + Le32(n).substr(0, 2) + std::string(44, 'x');
  for (auto t : tabella) b += Le32(t).substr(0, 2);
  return b + blocco;
}

TEST(Script, FileRealiDelCompilatore) {
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

TEST(Script, CasiDelBlocco) {
  const std::string tre("a\0bb\0ccc\0", 9);
  const std::tuple<const char*, std::string, std::int32_t, V> casi[] = {
      {"only the last entry counts",
       Script(3, {500, -7, 0}, tre + "coda"),
       3,
       {"a.tr4", "bb.tr4", "ccc.tr4"}},
      {"a long last name is cut",
       Script(2, {0, 2}, std::string("x\0", 2) + std::string(40, 'L')),
       2,
       {"x.tr4", std::string(30, 'L') + ".tr4"}},
      {"fewer pieces than names",
       Script(4, {0, 0, 0, -25}, std::string("p\0q", 3)),
       4,
       {"p.tr4", "q.tr4", "", ""}},
      {"last entry overflows 16 bits", Script(2, {0, 32738}, tre), 2, {"", ""}},
      {"negative block length", Script(2, {0, -31}, tre), 2, {"", ""}},
      {"empty block has no pieces", Script(1, {-30}, tre), 1, {""}},
      {"negative count", Script(-3, {}, tre), -3, {}},
      {"table past the end", Script(5, {1}, ""), 5, {"", "", "", "", ""}},
      {"count cut in half", std::string(10, 'h') + "\x02", 2, {"", ""}},
  };
  for (const auto& [caso, byte, numero, livelli] : casi) {
    std::int32_t n = 99;
    EXPECT_EQ(AnalizzaScript(byte, n), livelli) << caso;
    EXPECT_EQ(n, numero) << caso;
  }
}

TEST(Script, FileMancante) {
  MacchinaProva m;
  std::int32_t n = 7;
  V livelli = {"old"};
  EXPECT_FALSE(formats::LeggiLivelliScript("C:\\Dati\\script.dat", n, livelli));
  EXPECT_TRUE(livelli.empty() && n == 0);
}

}  // namespace
