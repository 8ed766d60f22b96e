#include "support/valori.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "finestra_prova.h"
#include "locale_prova.h"

namespace {

// The separator of the C library's locale, where the platform takes no regional setting of its own.
TEST(FormattaDimensione, SeparatoreDelLocale) {
#ifdef _WIN32
  GTEST_SKIP() << "on Windows the separator is the user's regional setting, not the C library's locale";
#endif
  for (const auto& [nome, atteso] : {std::pair{"C", "1.5 Gb"}, std::pair{"it_IT.UTF-8", "1,5 Gb"}}) {
    LocaleProva locale(LC_NUMERIC, nome);
    if (!locale.Attivo()) GTEST_SKIP() << "no " << nome << " locale on this machine";
    EXPECT_EQ(support::FormattaDimensione(1610612736), atteso);
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

}  // namespace
