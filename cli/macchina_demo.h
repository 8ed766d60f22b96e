// A complete sample machine as a Wine prefix: both installations, their registry entries, an archive with
// levels, and a backup folder, for trying the program end to end without a real installation.
#pragma once

#include <string>

namespace cli {

// Writes the prefix into the host folder `cartella` (made if missing). False, with the reason, on failure.
bool CreaMacchinaDemo(const std::string& cartella, std::string* errore);

// The supporter's sample list of a good backup folder (backup_trle.le, of the good copy that the demo
// machine holds in C:\Supporto) and a list of the original CD (trle_cd.le), in `cartellaProgramma`.
bool CreaElenchiDemo(const std::string& cartellaProgramma);

// What the user does on the demo machine between two check runs: installs a tutorial level into the editor,
// lists it in ordeio.txt and the script, and switches Ordelio to English.
bool CambiaMacchinaDemo();

}  // namespace cli
