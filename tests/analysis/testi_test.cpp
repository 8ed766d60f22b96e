#include "analysis/testi.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "finestra_prova.h"
#include "formats/script.h"
#include "macchina_prova.h"

namespace {

using V = std::vector<std::string>;

TEST(Testi, OrdelioTxtComeNelFile) {
  for (const std::string& byte :
       {std::string("riga\nmista\r\nfine"), std::string(), std::string("a\0b", 3)}) {
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("Dati/Ordeio.txt"), byte);
    MessaggiProva messaggi;
    EXPECT_EQ(analysis::MostraOrdelioTxt("C:\\Dati", messaggi), byte);
    EXPECT_TRUE(messaggi.tutti.empty());
  }
}

TEST(Testi, TestoLivelliScript) {
  const std::string testa = "Livelli tr4 usati da file script.dat:\r\n\r\n";
  struct Caso {
    V livelli;
    std::int32_t numero;
    std::string coda;
  };
  const Caso casi[] = {
      {{}, 0, ""},
      {{}, -3, ""},
      {{"a.tr4", "b.tr4"}, 2, "a.tr4\r\nb.tr4\r\n"},
      {{"b.tr4", ""}, 2, "b.tr4\r\n\r\n"},
      // A list shorter than its count still gives a line per entry.
      {{"a.tr4"}, 3, "a.tr4\r\n\r\n\r\n"},
  };
  for (const Caso& c : casi)
    EXPECT_EQ(analysis::TestoLivelliScript(c.livelli, c.numero), testa + c.coda) << c.numero;
}

TEST(Testi, ScriptDatDalFile) {
  // The head with a count of 2, the offset table (only its last entry matters), then the names.
  std::string byte(formats::kDimensioneIntestazioneScript, '\0');
  byte[formats::kOffsetNumeroLivelliScript] = 2;
  byte += std::string(4, '\0') + std::string("Uno\0DUE\0", 8);
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("Dati/Script.dat"), byte);
  MessaggiProva messaggi;
  EXPECT_EQ(analysis::MostraScriptDat("C:\\Dati", messaggi),
            "Livelli tr4 usati da file script.dat:\r\n\r\nUno.tr4\r\nDUE.tr4\r\n");
  EXPECT_TRUE(messaggi.tutti.empty());
}

}  // namespace
