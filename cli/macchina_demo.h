// A complete sample machine as a Wine prefix: both installations, their registry entries, an archive with
// levels, and a backup folder, for trying the program end to end without a real installation.
#pragma once

#include <string>

namespace cli {

// Where the demo machine keeps the supporter's side: the good copy of a backup folder and the two sample
// lists of it, which the demo's own backup analysis reads. The program folder's lists are the supporter's.
inline constexpr const char* kCartellaSupporto = "C:\\Supporto";

// True when the demo may be made in the host folder `cartella`: it is missing, empty, or a demo machine that
// CreaMacchinaDemo made (its mark is there); anything else is someone's, a Wine prefix above all.
bool CartellaPerDemo(const std::string& cartella);

// Writes the prefix into the host folder `cartella` (made if missing), over a demo machine made there before,
// which is put back as it was first made. False, with the reason, on failure.
bool CreaMacchinaDemo(const std::string& cartella, std::string* errore);

// The supporter's sample list of a good backup folder (backup_trle.le, of the good copy that the demo
// machine holds in C:\Supporto) and a list of the original CD (trle_cd.le), in `cartella`.
bool CreaElenchiDemo(const std::string& cartella);

// What the user does on the demo machine between two check runs: installs a tutorial level into the editor,
// lists it in ordeio.txt and the script, and switches Ordelio to English.
bool CambiaMacchinaDemo();

}  // namespace cli
