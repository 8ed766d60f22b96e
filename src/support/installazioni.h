// Where things are installed: the first value of a registry key, a shell folder, an executable's path.
// None of these shows anything; every failure gives "".
#pragma once

#include <cstdint>
#include <string>

namespace support {

// Where the shell records the executables it can start by name; the file name follows the backslash.
inline constexpr const char* kAppPaths = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";

// The data of whichever value the registry enumerates first under the key (below HKEY_LOCAL_MACHINE), as
// text up to its first NUL, whatever the value's type; "" for a missing key or a key without values. A
// value longer than the program's historical room of 256 characters is read whole.
std::string LeggiPrimoValoreRegistro(const std::string& chiave);

// The folder of a CSIDL number in the form the platform gives it, "" when it cannot be had.
std::string GetCartellaSpeciale(std::int32_t csidl);

// The full path of an installed executable, "" when there is none: its App Paths entry (a file path, or a
// folder to which the file name is joined), and only when that key has no value at all, the name below the
// program-files folder. A path is given only when the file exists.
std::string TrovaEseguibile(const std::string& nome);

}  // namespace support
