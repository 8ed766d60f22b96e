// The level names of the editor's compiled script, script.dat. Nothing else of the file is interpreted.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/interfacce.h"

namespace formats {

// Offsets in the script's head.
inline constexpr std::size_t kOffsetNumeroLivelliScript = 10;
inline constexpr std::size_t kDimensioneIntestazioneScript = 56;

// The level files the script names, each with ".tr4" behind it; `numero` is the count the file gives
// (0 when the file does not exist, which shows the plain message "Non esiste script.dat : " and the path).
std::vector<std::string> LeggiLivelliScript(const std::string& percorso, std::int32_t& numero,
                                            support::Messaggi& messaggi);

// The same on the file's bytes: what lies past their end does not exist.
std::vector<std::string> AnalizzaScript(std::string_view byte, std::int32_t& numero);

}  // namespace formats
