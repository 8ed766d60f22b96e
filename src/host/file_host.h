// The machine's own files read by their host path (the prefix's registry, a drive's label), by the same rule
// as every other outside file: what is not a regular file is refused without waiting on it, as a pipe would
// make a plain read wait for ever.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace host {

// The first `massimo` bytes of a host file (all of it by default); nothing when it is missing, cannot be
// read or is not a regular file.
std::optional<std::string> LeggiFileHost(const std::string& hostPath,
                                         std::size_t massimo = std::numeric_limits<std::size_t>::max());

// The lock file of a program folder, opened and held at once by the back end; -1 when it cannot be, with
// `occupato` telling whether another process holds it, and `motivo` why a lock file that is there cannot
// be held (a folder, a link, a file that refuses the lock); both stay empty when the folder takes no new
// file. Letting go removes it. The hold is a byte-range lock on the file's first byte, the kind that Wine
// takes for LockFileEx: a native program and a Windows one under Wine exclude each other.
inline constexpr const char* kFileBlocco = "checkordl.lock";
std::intptr_t PrendiBlocco(const std::string& cartella, bool* occupato, std::string* motivo);
void LasciaBlocco(const std::string& cartella, std::intptr_t maniglia);

// Whether this user may make files in the folder (a Windows path), as the program folder needs.
bool CartellaScrivibile(const std::string& cartella);

}  // namespace host
