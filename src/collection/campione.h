// The sample list of a good backup folder, `backup_trle.le` in the program folder, which the backup
// analysis compares a user's backup folder with. Nothing in the window leads to it; the headless tool's
// `sample` verb does.
#pragma once

#include <string>

#include "collection/principale.h"

namespace collection {

// Asks for the folder in Dialog_GetDir, starting from the current folder, and lists it into
// `cartellaProgramma` + "\backup_trle.le", replacing any earlier list; a plain message tells the outcome.
// A cancelled dialog changes nothing.
void CreaElencoCampione(Principale& principale, const std::string& cartellaProgramma);
// The same into the folder of the running program.
void CreaElencoCampione(Principale& principale);

}  // namespace collection
