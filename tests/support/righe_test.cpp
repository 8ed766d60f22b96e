#include "support/righe.h"

#include <gtest/gtest.h>

#include <optional>
#include <tuple>

namespace {

// Every position of each string maps to the line a view draws it on, and each line's text ends before its
// break, whatever the break is.
TEST(RigheTesto, OgniPosizioneNellaSuaRiga) {
  struct Caso {
    std::string testo;
    std::vector<std::size_t> riga_di;                        // for positions 0..size()
    std::vector<std::pair<std::size_t, std::size_t>> righe;  // start and end of each line's text
  };
  const Caso casi[] = {
      {"", {0}, {{0, 0}}},
      {"ab", {0, 0, 0}, {{0, 2}}},
      {"a\r\nb", {0, 0, 0, 1, 1}, {{0, 1}, {3, 4}}},
      {"a\r\n", {0, 0, 0, 1}, {{0, 1}, {3, 3}}},
      {"a\rb\nc", {0, 0, 1, 1, 2, 2}, {{0, 1}, {2, 3}, {4, 5}}},
      {"\n\r", {0, 1, 2}, {{0, 0}, {1, 1}, {2, 2}}},
      {"\r\r\n", {0, 1, 1, 2}, {{0, 0}, {1, 1}, {3, 3}}},
  };
  for (const Caso& c : casi) {
    support::RigheTesto r;
    r.Imposta(c.testo);
    ASSERT_EQ(r.Quante(), c.righe.size()) << c.testo;
    for (std::size_t k = 0; k < c.righe.size(); ++k) {
      EXPECT_EQ(r.Inizio(k), c.righe[k].first) << c.testo << " line " << k;
      EXPECT_EQ(r.Fine(k), c.righe[k].second) << c.testo << " line " << k;
    }
    for (std::size_t p = 0; p <= c.testo.size(); ++p)
      EXPECT_EQ(r.RigaDi(p), c.riga_di[p]) << c.testo << " at " << p;
  }
}

// Columns with tabs: x of each position, and a click anywhere falls on the nearest boundary.
TEST(RigheTesto, ColonneETabulazioni) {
  const std::string riga = "ab\tc\t\td";
  const int attesi[] = {0, 7, 14, 48, 55, 96, 144, 151};
  for (std::size_t p = 0; p <= riga.size(); ++p) {
    EXPECT_EQ(support::XDi(riga, 0, p, 7, 48), attesi[p]) << p;
    EXPECT_EQ(support::PosizioneDaX(riga, 0, riga.size(), attesi[p], 7, 48), p) << p;
  }
  EXPECT_EQ(support::PosizioneDaX(riga, 0, riga.size(), 3, 7, 48), 0u);
  EXPECT_EQ(support::PosizioneDaX(riga, 0, riga.size(), 4, 7, 48), 1u);
  EXPECT_EQ(support::PosizioneDaX(riga, 0, riga.size(), 30, 7, 48), 2u);
  EXPECT_EQ(support::PosizioneDaX(riga, 0, riga.size(), 32, 7, 48), 3u);
  EXPECT_EQ(support::PosizioneDaX(riga, 0, riga.size(), -5, 7, 48), 0u);
  EXPECT_EQ(support::PosizioneDaX(riga, 0, riga.size(), 9999, 7, 48), riga.size());
}

// The keys of the report views: from a position, each movement lands where the user expects on the screen.
TEST(RigheTesto, MovimentiDelCursore) {
  using M = support::Movimento;
  struct Caso {
    const char* nome;
    std::string testo;
    std::size_t da;
    M m;
    std::size_t atteso;
  };
  const Caso casi[] = {
      {"right crosses a CR LF at once", "ab\r\ncd", 2, M::Destra, 4},
      {"left crosses a CR LF at once", "ab\r\ncd", 4, M::Sinistra, 2},
      {"right across a lone LF", "ab\ncd", 2, M::Destra, 3},
      {"left at the start", "ab", 0, M::Sinistra, 0},
      {"right at the end", "ab", 2, M::Destra, 2},
      {"down keeps the column", "abc\r\ndef", 1, M::Giu, 6},
      {"a lone CR is a line break", "ab\rcd", 1, M::Giu, 4},
      {"down from the last line", "ab\ncd", 4, M::Giu, 4},
      {"up to a shorter line", "a\r\nbcd", 6, M::Su, 1},
      {"down from after a tab keeps the pixels", "\tx\r\nabcdefghij", 1, M::Giu, 11},
      {"a page down", "l0\nl1\nl2\nl3\nl4", 0, M::PaginaGiu, 9},
      {"a page up past the start", "l0\nl1\nl2", 7, M::PaginaSu, 1},
      {"start of the line", "abc\r\ndef", 6, M::InizioRiga, 5},
      {"end of the line", "abc\r\ndef", 0, M::FineRiga, 3},
      {"start of the text", "abc\r\ndef", 6, M::InizioTesto, 0},
      {"end of the text", "abc\r\ndef", 1, M::FineTesto, 8},
  };
  for (const Caso& c : casi) {
    support::RigheTesto r;
    r.Imposta(c.testo);
    EXPECT_EQ(support::Muovi(c.testo, r, c.da, c.m, 3, 7, 48), c.atteso) << c.nome;
  }
}

TEST(RigheTesto, ParolaDelDoppioClic) {
  // text, click, word
  const std::tuple<std::string, std::size_t, std::size_t, std::size_t> casi[] = {
      {"\tC:\\a\\tomb4.exe (2 Kb)\r\nx", 8, 1, 15},
      {"a b", 1, 0, 1},
      {"ab\r\ncd", 2, 0, 2},
      {"ab\r\ncd", 4, 4, 6},
      {"", 0, 0, 0},
  };
  for (const auto& [testo, clic, a, b] : casi) {
    support::RigheTesto r;
    r.Imposta(testo);
    const support::Intervallo p = support::ParolaIntorno(testo, r, clic);
    EXPECT_EQ(p.inizio, a) << testo << " at " << clic;
    EXPECT_EQ(p.fine, b) << testo << " at " << clic;
  }
}

// The pieces a view draws: one per selection state, a tab alone, and only what falls in the window.
TEST(RigheTesto, CorseDaDisegnare) {
  struct Caso {
    const char* nome;
    int da, larghezza;
    std::size_t sel0, sel1;
    std::vector<support::Corsa> attese;
  };
  const std::string riga = "xab\tcd\r\n";  // the line is [1, 6)
  const Caso casi[] = {
      {"no selection", 0, 999, 0, 0, {{0, 14, 1, 3, false}, {14, 48, 3, 3, false}, {48, 62, 4, 6, false}}},
      {"selection across the tab",
       0,
       999,
       2,
       5,
       {{0, 7, 1, 2, false},
        {7, 14, 2, 3, true},
        {14, 48, 3, 3, true},
        {48, 55, 4, 5, true},
        {55, 62, 5, 6, false}}},
      {"scrolled and narrow",
       10,
       40,
       0,
       0,
       {{7, 14, 2, 3, false}, {14, 48, 3, 3, false}, {48, 55, 4, 5, false}}},
      {"past the end", 100, 40, 0, 0, {}},
  };
  for (const Caso& c : casi) {
    std::vector<support::Corsa> corse;
    support::CorseDi(riga, 1, 6, 7, 48, c.da, c.larghezza, c.sel0, c.sel1,
                     [&](const support::Corsa& k) { corse.push_back(k); });
    ASSERT_EQ(corse.size(), c.attese.size()) << c.nome;
    for (std::size_t k = 0; k < corse.size(); ++k) {
      const support::Corsa &a = corse[k], &e = c.attese[k];
      EXPECT_TRUE(a.x0 == e.x0 && a.x1 == e.x1 && a.inizio == e.inizio && a.fine == e.fine &&
                  a.selezionata == e.selezionata)
          << c.nome << " piece " << k << ": " << a.x0 << '-' << a.x1 << " [" << a.inizio << ',' << a.fine
          << ") " << a.selezionata;
    }
  }
}

TEST(RigheTesto, RigaAlCentro) {
  // line, visible, total -> first line shown
  const std::size_t casi[][4] = {{0, 10, 100, 0},   {4, 10, 100, 0}, {50, 10, 100, 45},
                                 {99, 10, 100, 90}, {3, 10, 5, 0},   {7, 1, 100, 7}};
  for (const auto& c : casi) EXPECT_EQ(support::PrimaRigaAlCentro(c[0], c[1], c[2]), c[3]) << c[0];
}

// A front end lists its own key codes; Ctrl takes only home and end further, to the text's ends.
TEST(RigheTesto, TastiDiMovimento) {
  using support::Movimento;
  constexpr int tasti[] = {37, 39, 38, 40, 33, 34, 36, 35};
  const std::tuple<int, bool, std::optional<Movimento>> casi[] = {
      {37, true, Movimento::Sinistra},    {34, false, Movimento::PaginaGiu},
      {36, false, Movimento::InizioRiga}, {36, true, Movimento::InizioTesto},
      {35, true, Movimento::FineTesto},   {65, true, std::nullopt}};
  for (const auto& [tasto, ctrl, atteso] : casi)
    EXPECT_EQ(support::MovimentoDelTasto(tasti, tasto, ctrl), atteso);
}

}  // namespace
