// The folder picker's form.
#pragma once

#include <array>

#include "support/forma.h"

namespace picker {

namespace forma_getdir {
using support::TipoControllo;
inline constexpr auto kControlli = std::to_array<support::Controllo>({
    {"OKButton", TipoControllo::Pulsante, "OK", {315, 4275, 1215, 375}},
    {"CancelButton", TipoControllo::Pulsante, "Cancel", {4590, 4230, 1215, 375}},
    {"Dir1", TipoControllo::ListaCartelle, "", {180, 810, 5505, 2565}},
    {"Drive1", TipoControllo::ListaDrive, "", {225, 225, 1995, 315}},
    {"Text_Path", TipoControllo::RigaCartella, "", {180, 3600, 5505, 285}},
    {"Pul_NuovaCartella", TipoControllo::Pulsante, "Create folder->", {2475, 225, 1500, 285}},
    {"Text_PathDir", TipoControllo::Riga, "", {4050, 225, 1635, 285}},
});
inline constexpr auto kTab = std::to_array<const char*>(
    {"OKButton", "CancelButton", "Dir1", "Drive1", "Text_Path", "Pul_NuovaCartella", "Text_PathDir"});
// The indent of a level in the folder list.
inline constexpr int kRientro = 180;
}  // namespace forma_getdir

// The caption is the model's (`Dialog_GetDir::Caption`), which its caller may change.
inline constexpr support::Forma kFormaGetDir{"Dialog_GetDir",   "", 6030, 4860, forma_getdir::kControlli,
                                             forma_getdir::kTab};

}  // namespace picker
