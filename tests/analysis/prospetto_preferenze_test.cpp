// The date form of the preferences report under the C locale and an Italian one, and a short settings file.
#include "analysis/prospetto_preferenze.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <filesystem>
#include <string>

#include "finestra_prova.h"
#include "locale_prova.h"
#include "macchina_prova.h"
#include "support/data.h"

namespace {

TEST(DataGenerale, DueLocali) {
#ifdef _WIN32
  GTEST_SKIP() << "the date form on Windows is the user's regional setting, not the C library's locale";
#endif
  struct Caso {
    double data;
    const char* c;
    const char* italiano;
  };
  const Caso casi[] = {
      {45000.5, "2023-03-15 12:00:00", "15/03/2023 12:00:00"},
      {45000, "2023-03-15", "15/03/2023"},
      {0, "00:00:00", "00:00:00"},  // no date part: the time alone, midnight included
      {0.75, "18:00:00", "18:00:00"},
      {-1.25, "1899-12-29 06:00:00", "29/12/1899 06:00:00"},  // the fraction counts forward from the day
      {45000.9999999, "2023-03-16", "16/03/2023"},            // rounded to the second
      {2958465.5, "9999-12-31 12:00:00", "31/12/9999 12:00:00"},
      {2958466, "2958466", "2958466"},  // beyond the years a date may hold
      {-700000, "-700000", "-700000"},
  };
  for (const char* nome : {"C", "it_IT.UTF-8"}) {
    LocaleProva locale(LC_TIME, nome);
    if (!locale.Attivo()) {
      ADD_FAILURE() << nome << " is not installed (scripts/dipendenze.sh makes it)";
      continue;
    }
    for (const Caso& c : casi)
      EXPECT_EQ(support::DataGenerale(c.data), nome[0] == 'C' ? c.c : c.italiano) << nome << " " << c.data;
  }
  EXPECT_FALSE(support::DataGenerale(std::nan("")).empty());
}

// A short file is shown as read, without the defaults that loading the settings would put back.
TEST(ProspettoPreferenze, FileCorto) {
  MacchinaProva m;
  std::filesystem::create_directories(m.C("Dati"));
  formats::PrefRecord p;
  p.TestLogFile = true;
  MacchinaProva::ScriviHost(m.C("Dati/ordelio.prf"), formats::CodificaPreferenze(p).substr(0, 1300));
  MessaggiProva messaggi;
  const auto testo = analysis::ProspettoPreferenze("C:\\Dati", messaggi);
  ASSERT_TRUE(testo);
  EXPECT_NE(testo->find("Flags: 0x0\r\n"), std::string::npos);
  EXPECT_NE(testo->find("NumeroArcSavegame: 0\r\n"), std::string::npos);
  EXPECT_NE(testo->find("TestLogFile: True\r\n"), std::string::npos);
  EXPECT_TRUE(messaggi.tutti.empty());
}

}  // namespace
