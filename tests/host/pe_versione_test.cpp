// The version resource read out of PE files: hostile ones must give "" without a crash and without
// allocating what they claim, whether read from memory or piece by piece from a file. The files are those of
// tests/data/versione/pe_ostili.txt.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "esadecimale.h"
#include "host/byte_le.h"
#include "host/versione.h"
#include "macchina_prova.h"
#include "osservatore_allocazioni.h"

namespace {

using Campi = std::vector<std::string>;
const std::string kContenuto = "VS_VERSION_INFO di prova";

// A sum of numbers and names.
std::uint32_t Valore(const std::string& t, const std::map<std::string, std::uint32_t>& nomi) {
  std::uint32_t v = 0;
  for (std::size_t i = 0, fine; i < t.size(); i = fine) {
    fine = std::min(t.find_first_of("+-", i + 1), t.size());
    const std::string n = t.substr(i + (t[i] == '+' || t[i] == '-'), fine - i - (t[i] == '+' || t[i] == '-'));
    const auto x = nomi.count(n) ? nomi.at(n) : static_cast<std::uint32_t>(std::stoul(n, nullptr, 0));
    v = t[i] == '-' ? v - x : v + x;
  }
  return v;
}

std::string Estrai(const std::string& byte) {
  host::LettoreMemoria l(byte);
  return host::EstraiRisorsaVersione(l);
}

TEST(PeVersione, FileOstiliDannoVuoto) {
  const auto righe = LeggiTabella("versione/pe_ostili.txt");
  ASSERT_GT(righe.size(), 20u);
  for (const std::uint32_t piu : {0, 1}) {
    const std::map<std::string, std::uint32_t> nomi = {{"pe", 0x40},
                                                       {"opz", 0x58},
                                                       {"dati", 0x58 + 96 + 16 * piu},
                                                       {"sez", 0x58 + 224 + 16 * piu},
                                                       {"ris", 0x200},
                                                       {"nome", 0x220},
                                                       {"lingua", 0x238},
                                                       {"voce", 0x250},
                                                       {"blocco", 0x260},
                                                       {"dim", 0x78},
                                                       {"magia", 0x10B + 0x100 * piu}};
    std::string sano(0x260, '\0');
    sano += kContenuto;
    const auto Guasta = [&](std::string b, const Campi& c) {
      if (c[0] == "cut") b.resize(Valore(c[1], nomi));
      for (std::size_t i = 1; c[0] != "cut" && i + 1 < c.size(); i += 2)
        host::ScriviLE(b, Valore(c[i], nomi), Valore(c[i + 1], nomi));
      return b;
    };
    for (const auto& c : righe)
      if (c[0] == "sound") sano = Guasta(sano, c);
    ASSERT_EQ(Estrai(sano), kContenuto);
    for (const auto& c : righe) {
      if (c[0] == "sound") continue;
      SCOPED_TRACE(c[0] + " " + c[1] + (piu ? " (PE32+)" : " (PE32)"));
      const std::string p = Guasta(sano, c);
      {
        OsservaAllocazioni o;
        EXPECT_EQ(Estrai(p), "");
        EXPECT_LE(o.Massima(), p.size() + 1);
      }
#ifndef _WIN32
      // On Windows the platform reads the file; Wine's own reader there takes some of these as sound.
      MacchinaProva m;
      MacchinaProva::ScriviHost(m.C("ostile.exe"), p);
      EXPECT_EQ(host::LeggiBloccoVersione("C:\\ostile.exe"), "");
#endif
    }
  }
}

}  // namespace
