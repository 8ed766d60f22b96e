// Where the front ends draw the forms' controls, and where a main window opens when others are open.
#include <gtest/gtest.h>

#include <vector>

#include "analysis/forma_analisi.h"
#include "collection/forma_principale.h"
#include "picker/forma_getdir.h"
#include "support/disposizione.h"

namespace {

using support::Punto;

// Every control of the three windows is drawn where its table puts it, but for the picker's Cancel, which
// stands in OK's row.
TEST(Disposizione, OgniControlloDoveLoDiceLaTabella) {
  for (const support::Forma* f :
       {&collection::kFormaPrincipale, &analysis::kFormaAnalisi, &picker::kFormaGetDir}) {
    for (const support::Controllo& c : f->controlli) {
      SCOPED_TRACE(c.nome);
      const support::Rettangolo r = support::RettangoloMostrato(*f, c);
      support::Rettangolo atteso = c.r;
      if (f == &picker::kFormaGetDir && std::string_view(c.nome) == "CancelButton")
        atteso.t = support::ControlloDi(*f, "OKButton").r.t;
      EXPECT_EQ(r.l, atteso.l);
      EXPECT_EQ(r.t, atteso.t);
      EXPECT_EQ(r.w, atteso.w);
      EXPECT_EQ(r.h, atteso.h);
    }
  }
}

// A work area that does not begin at the screen's corner, a 400 x 300 window, steps of 30: eight steps fit
// below and right of the middle, then the cascade starts again at the area's top left.
TEST(Disposizione, Cascata) {
  const support::Area area{100, 50, 1000, 800};
  const struct {
    int n;
    Punto atteso;
  } casi[] = {{0, {400, 300}}, {1, {430, 330}}, {8, {640, 540}}, {9, {100, 50}}, {10, {130, 80}}};
  for (const auto& c : casi) {
    SCOPED_TRACE(c.n);
    EXPECT_EQ(support::PostoInCascata(area, 400, 300, c.n, 30), c.atteso);
  }

  const struct {
    std::vector<Punto> occupati;
    Punto atteso;
  } liberi[] = {{{}, {400, 300}},
                {{{400, 300}}, {430, 330}},
                {{{430, 330}, {400, 300}}, {460, 360}},
                {{{401, 300}}, {400, 300}},
                {{{430, 330}}, {400, 300}}};
  for (const auto& l : liberi) EXPECT_EQ(support::PostoLibero(area, 400, 300, l.occupati, 30), l.atteso);
}

}  // namespace
