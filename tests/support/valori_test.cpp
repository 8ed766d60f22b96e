#include "support/valori.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "finestra_prova.h"
#include "locale_prova.h"

namespace {

using support::FormattaDimensione;

TEST(FormattaDimensione, SoglieEArrotondamenti) {
  const std::pair<double, const char*> casi[] = {
      {-5, "-5"},
      {1024, "1024"},
      {1025, "1 Kb"},
      {2047, "1 Kb"},  // whole-number division, no rounding up
      {1048576, "1024 Kb"},
      {1048577, "1.0 Mb"},
      {1048576 * 1.25, "1.3 Mb"},  // a half goes away from zero
      {1073741823, "1024.0 Mb"},   // the rounding carries over
      {1073741824, "1024.0 Mb"},
      {1073741825, "1.0 Gb"},
      {4096.0 * 1073741824.0, "4096.0 Gb"},  // no unit above Gb
  };
  for (const auto& [byte, atteso] : casi) EXPECT_EQ(FormattaDimensione(byte, '.'), atteso) << byte;
  EXPECT_EQ(FormattaDimensione(1610612736, ','), "1,5 Gb");

#ifdef _WIN32
  GTEST_SKIP() << "on Windows the separator is the user's regional setting, not the C library's locale";
#endif
  for (const auto& [nome, atteso] : {std::pair{"C", "1.5 Gb"}, std::pair{"it_IT.UTF-8", "1,5 Gb"}}) {
    LocaleProva locale(LC_NUMERIC, nome);
    if (!locale.Attivo()) GTEST_SKIP() << "no " << nome << " locale on this machine";
    EXPECT_EQ(FormattaDimensione(1610612736), atteso);
  }
}

TEST(AggiornaProgresso, PercentualiERidisegni) {
  const double casi[][3] = {{0, 0, 0}, {0, 5, 100}, {200, 199, 99}, {200, 250, 100}, {3, 2, 66}};
  for (const auto& [totale, corrente, percento] : casi) {
    BarraProva b;
    b.valore = -1;
    support::AggiornaProgresso(b, totale, corrente);
    EXPECT_EQ(b.valore, percento) << totale << " " << corrente;
  }
  // One redraw for each percent, not one for each step.
  BarraProva b;
  for (int i = 1; i <= 10000; ++i) support::AggiornaProgresso(b, 10000, i);
  EXPECT_EQ(b.valore, 100);
  EXPECT_EQ(b.ridisegni, 100);
}

TEST(PulisciStringa, NulEBlank) {
  const std::pair<std::string, std::string> casi[] = {
      {std::string(8, '\0'), ""},
      {std::string("a\0b", 3), "a b"},
      {std::string("  x\0\0  ", 7), "x"},
      {"\tx\r\n", "\tx\r\n"},  // only blanks are trimmed
  };
  for (const auto& [in, atteso] : casi) EXPECT_EQ(support::PulisciStringa(in), atteso);
}

}  // namespace
