// The level names of the editor's compiled script, script.dat. Nothing else of the file is interpreted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

// Offsets in the script's head: the count of level files, and the length of the block of their names.
inline constexpr std::size_t kOffsetNumeroLivelliScript = 10;
inline constexpr std::size_t kOffsetLunghezzaNomiScript = 12;
inline constexpr std::size_t kDimensioneIntestazioneScript = 56;
// All that any reading of the file looks at: the head, a table of at most 32767 entries and a block of names
// of at most 65535 bytes.
inline constexpr std::size_t kLetturaScript = kDimensioneIntestazioneScript + 2 * 32767 + 65535;

// The level files the script names, each with ".tr4" behind it, and `numero`, the count the file gives.
// False, with nothing read, when the file does not exist; a file that cannot be read gives no names.
bool LeggiLivelliScript(const std::string& percorso, std::int32_t& numero, std::vector<std::string>& livelli);

// The same on the file's bytes: what lies past their end does not exist.
std::vector<std::string> AnalizzaScript(std::string_view byte, std::int32_t& numero);

// The script as the level editor's compiler writes it: a whole head that counts at least one level file, a
// table whose entries point, one behind the other, at names that each end in NUL inside the block of names
// the head measures, and that block whole. The reader above reads anything, and cuts a long last name.
struct TabellaScript {
  // Why the bytes (the file's first kLetturaScript at least) are not that, in a few words; "" when they are.
  std::string problema;
  // Each name the table points at, with ".tr4" behind it; none when there is a problem.
  std::vector<std::string> livelli;
};
TabellaScript AnalizzaTabellaScript(std::string_view byte);

}  // namespace formats
