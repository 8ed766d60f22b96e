#include "formats/elenco.h"

#include <gtest/gtest.h>

#include "finestra_prova.h"
#include "macchina_prova.h"
#include "osservatore_allocazioni.h"

namespace {

using formats::ElencoFile;

std::string Nome(const std::string& n) {
  return Le32(static_cast<std::int32_t>(n.size())) + n;
}

// The strict reader takes a list whole or not at all, and never makes room for more than the file holds.
TEST(ElencoStretto, SoloElenchiInteri) {
  const std::int32_t kMax = 0x7FFFFFFF;
  const std::string testa = Nome("C:\\B");
  const std::pair<std::string, bool> casi[] = {
      {Le32(2) + testa + Nome("\\a") + Nome("\\bb") + Le32(1) + Le32(0), true},
      {Le32(0) + testa, true},
      {Le32(0), false},                                             // no base
      {Le32(-1) + testa, false},                                    // negative count
      {Le32(kMax) + testa + Nome("\\a") + Le32(1), false},          // absurd count
      {Le32(0) + Le32(kMax) + "C:\\B", false},                      // base length past the end
      {Le32(0) + Le32(-4) + "C:\\B", false},                        // negative base length
      {Le32(1) + testa + Le32(kMax - 8) + "\\a" + Le32(1), false},  // name length past the end
      {Le32(2) + testa + Le32(10) + "\\a" + Nome("\\b") + Le32(1) + Le32(2), false},  // name eating the sizes
      {Le32(2) + testa + Nome("\\a") + Nome("\\b") + Le32(1) + "\x02", false},        // truncated sizes
      {Le32(1) + testa + Nome("\\a") + Le32(-1), false},                              // negative size
      {Le32(1) + testa + Nome("\\a") + Le32(1) + "x", false},                         // trailing bytes
  };
  for (const auto& [byte, risultato] : casi) {
    SCOPED_TRACE(::testing::PrintToString(byte));
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("l.el"), byte);
    ElencoFile e;
    e.NumeroFile = 9;
    OsservaAllocazioni o;
    EXPECT_EQ(formats::CaricaElencoStretto("C:\\l.el", e), risultato);
    EXPECT_LT(o.Massima(), std::size_t{1} << 20);
    if (!risultato) {
      EXPECT_EQ(e, ElencoFile{});
    }
  }
  ElencoFile e;
  EXPECT_FALSE(formats::CaricaElencoStretto("C:\\manca.el", e));
}

TEST(ElencoFile, UnElencoPiuLungoDiUnPezzoDelloScrittore) {
  MacchinaProva m;
  ElencoFile e{0, "C:\\Giochi\\Trle", {}, {}};
  for (e.NumeroFile = 0; e.NumeroFile < 30000; ++e.NumeroFile) {
    e.NomiFile.push_back("\\data\\f" + std::to_string(e.NumeroFile) + std::string(40, 'x'));
    e.DimensioniFile.push_back(e.NumeroFile * 7);
  }
  ASSERT_TRUE(formats::ScriviElencoFile("C:\\r.le", e));
  ElencoFile letto;
  BarraProva barra;
  ASSERT_TRUE(formats::CaricaElencoStretto("C:\\r.le", letto, &barra));
  EXPECT_TRUE(letto == e);
  EXPECT_EQ(barra.valore, 100);
}

}  // namespace
