// The main window's form. Only the order of the rows and of the bottom buttons is given; the geometry is
// ours.
#pragma once

#include <array>

#include "support/forma.h"

namespace collection {

namespace forma_principale {
using support::TipoControllo;
// Wide enough for the caption in the title bar at the systems' default fonts, beside the frame's buttons.
inline constexpr int kLarghezza = 9000;
inline constexpr int kMargine = 120;
inline constexpr int kInterno = kLarghezza - 2 * kMargine;
inline constexpr int kPulsanteW = 1695;

inline constexpr auto kControlli = std::to_array<support::Controllo>({
    {"Pul_CambiaORDL", TipoControllo::Pulsante, "Change", {kMargine, 120, 1215, 375}},
    {"Label1", TipoControllo::Etichetta, "Path of Ordelio:", {1455, 180, 5000, 285}},
    {"Label_DirORDL", TipoControllo::EtichettaCartella, "", {kMargine, 600, kInterno, 315}},
    {"Pul_CambiaTrle", TipoControllo::Pulsante, "Change", {kMargine, 1080, 1215, 375}},
    {"Label2", TipoControllo::Etichetta, "Path of Tomb Raider Level Editor:", {1455, 1140, 5000, 285}},
    {"Label_NomeTrle", TipoControllo::EtichettaCartella, "", {kMargine, 1560, kInterno, 315}},
    {"Label_Info", TipoControllo::Etichetta, "", {kMargine, 2040, kInterno, 285}},
    {"ProgressBar1", TipoControllo::Barra, "", {kMargine, 2400, kInterno, 285}},
    {"Pul_Start", TipoControllo::Pulsante, "Start check", {kMargine, 2880, kPulsanteW, 435}},
    {"Pul_EstraiDati",
     TipoControllo::Pulsante,
     "Leggi Dati",
     {(kLarghezza - kPulsanteW) / 2, 2880, kPulsanteW, 435}},
    {"Pul_Annulla",
     TipoControllo::Pulsante,
     "Close",
     {kLarghezza - kMargine - kPulsanteW, 2880, kPulsanteW, 435}},
});

inline constexpr auto kTab = std::to_array<const char*>(
    {"Pul_CambiaORDL", "Pul_CambiaTrle", "Pul_Start", "Pul_Annulla", "Pul_EstraiDati"});
}  // namespace forma_principale

inline constexpr support::Forma kFormaPrincipale{
    "Principale",
    " Check Configuration of Ordelio and Tomb Raider Level Editor",
    forma_principale::kLarghezza,
    3435,
    forma_principale::kControlli,
    forma_principale::kTab};

}  // namespace collection
