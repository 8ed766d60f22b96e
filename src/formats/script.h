// The level names of the editor's compiled script, script.dat. Nothing else of the file is interpreted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

// Offsets in the script's head.
inline constexpr std::size_t kOffsetNumeroLivelliScript = 10;
inline constexpr std::size_t kDimensioneIntestazioneScript = 56;

// The level files the script names, each with ".tr4" behind it, and `numero`, the count the file gives.
// False, with nothing read, when the file does not exist; a file that cannot be read gives no names.
bool LeggiLivelliScript(const std::string& percorso, std::int32_t& numero, std::vector<std::string>& livelli);

// The same on the file's bytes: what lies past their end does not exist.
std::vector<std::string> AnalizzaScript(std::string_view byte, std::int32_t& numero);

}  // namespace formats
