// The analysis window's form: the controls below the menu bar, and the menu bar itself, whose report items
// come from the table of voci.h.
#pragma once

#include <array>
#include <cstddef>

#include "analysis/voci.h"
#include "support/forma.h"

namespace analysis {

namespace forma_analisi {
using support::TipoControllo;
inline constexpr auto kControlli = std::to_array<support::Controllo>({
    {"Pul_Trova", TipoControllo::Pulsante, "Trova", {225, 3960, 1635, 330}},
    {"Text_Cerca", TipoControllo::Riga, "", {2025, 3960, 1905, 285}},
    {"Pul_Prima", TipoControllo::Pulsante, "<", {4050, 3960, 330, 330}},
    {"Pul_Dopo", TipoControllo::Pulsante, ">", {4455, 3960, 330, 330}},
    {"Text_Out", TipoControllo::Area, "", {135, 90, 9825, 3300}},
    {"ProgressBar1", TipoControllo::Barra, "", {180, 3510, 9735, 240}},
});
inline constexpr auto kTab =
    std::to_array<const char*>({"Pul_Trova", "Text_Cerca", "Pul_Prima", "Pul_Dopo", "Text_Out"});
}  // namespace forma_analisi

inline constexpr support::Forma kFormaAnalisi{
    "Dialog_Analisi", " Analisi dati info ordl", 10095, 4425, forma_analisi::kControlli, forma_analisi::kTab};

// The columns of the report font that the report area shows whole at the usual 96 dots an inch: its width
// less the vertical scroll bar (17 dots) and its sunken frame (2 dots a side), in cells of Courier New,
// whose advance of 1229/2048 em the screen rounds to whole dots (7 at 8.25 points). Our own texts (the
// findings, the comparison) are laid out to fit it.
constexpr int ColonneAreaProspetto() {
  constexpr int kPunti = 96;
  const int punti = ControlloDi(kFormaAnalisi, "Text_Out").r.w * kPunti / support::kTwipsPerPollice - 17 - 4;
  const double em = support::kPuntiProspetti * kPunti / 72.0;
  const int cella = static_cast<int>(em * 1229.0 / 2048.0 + 0.5);
  return punti / cella;
}
static_assert(ColonneAreaProspetto() == 90);

// What a menu item does.
enum class Comando {
  CaricaFile,
  SalvaFile,
  Esci,
  Copia,
  Voce,
  Confronta,
  RiepilogoProblemi,
  SalvaCopiaAnonima,
  SalvaTutto,
  CopiaRisposta
};

struct MenuBarra {
  const char* nome;
  const char* testo;
};
inline constexpr auto kMenu = std::to_array<MenuBarra>({
    {"mnu_File", "File"},
    {"mnu_Modifica", "Modifica"},
    {"mnu_Prospetto", "Prospetto"},
    {"mnu_Analisi", "Analisi"},
    {"mnu_Diagnosi", "Diagnosi"},
});

struct VoceBarra {
  // Index into kMenu.
  std::size_t menu;
  const char* nome;
  const char* testo;
  Comando comando;
  // The report item, for Comando::Voce.
  Voce voce;
};

// The items of the menu bar that are not report items.
inline constexpr std::size_t kComandiBarra = 9;

// Every item of the menu bar in the order the menus show them.
constexpr std::array<VoceBarra, kComandiBarra + kNumeroVoci> VociBarra() {
  std::array<VoceBarra, kComandiBarra + kNumeroVoci> b{};
  std::size_t n = 0;
  b[n++] = {0, "mnu_CaricaFile", "Carica un prospetto", Comando::CaricaFile, {}};
  b[n++] = {0, "mnu_SalvaFile", "Salva prospetto in un file di testo", Comando::SalvaFile, {}};
  b[n++] = {0, "mnu_Esci", "Esci", Comando::Esci, {}};
  b[n++] = {1, "mnu_Copia", "Copia ", Comando::Copia, {}};
  const auto voci = [&](Posto posto, std::size_t menu) {
    for (const VoceMenu& v : kVoci)
      if (v.posto == posto) b[n++] = {menu, v.controllo, v.didascalia, Comando::Voce, v.voce};
  };
  voci(Posto::prospetto, 2);
  voci(Posto::analisi, 3);
  b[n++] = {3, "mnu_Confronta", "Confronta con un altro snapshot...", Comando::Confronta, {}};
  b[n++] = {4, "mnu_RiepilogoProblemi", "Riepilogo problemi", Comando::RiepilogoProblemi, {}};
  voci(Posto::diagnosi, 4);
  b[n++] = {4, "mnu_SalvaCopiaAnonima", "Salva copia anonima...", Comando::SalvaCopiaAnonima, {}};
  b[n++] = {4, "mnu_SalvaTutto", "Salva tutto in un file di testo...", Comando::SalvaTutto, {}};
  b[n++] = {4, "mnu_CopiaRisposta", "Copia risposta", Comando::CopiaRisposta, {}};
  // Every row is filled: a missing one would be a blank item of the first menu.
  if (n != b.size()) throw "the menu bar's table and its size disagree";
  return b;
}
inline constexpr auto kVociBarra = VociBarra();

// Runs a menu item as its click does. "Esci" is the window's own (it closes): false for it, true otherwise.
bool EseguiComando(Dialog_Analisi& d, const VoceBarra& v);

}  // namespace analysis
