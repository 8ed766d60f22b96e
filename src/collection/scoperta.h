// Start-up discovery: where the level editor and Ordelio are installed, found without asking the user, and
// the machine's start figures for the info header. Shows no message: what is not found stays empty.
#pragma once

#include <string>

#include "collection/principale.h"
#include "formats/preferenze.h"

namespace collection {

// The editor folder that the shell records for tomb4.exe, or "". Not looked up on disk.
std::string TrovaCartellaTrle();

// Sets the two folder captions from the registry, Ordelio's own record of the editor folder (which wins
// when it names a folder) and the executable lookup, then fills the start fields of the info header from
// the final captions and the machine. `pref` receives Ordelio's preferences when Ordelio is found.
void CercaInstallazioni(Principale& p, formats::PrefRecord& pref);

}  // namespace collection
