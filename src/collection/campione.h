// The sample list of a good backup folder, `backup_trle.le` in the program folder, which the backup
// analysis compares a user's backup folder with. Nothing in the window leads to it; the headless tool's
// `sample` verb does.
#pragma once

#include <string>

#include "collection/scansione.h"
#include "support/interfacce.h"

namespace collection {

// Lists `cartella` into `cartellaProgramma` + "\backup_trle.le", replacing any earlier list; a plain
// message tells the outcome.
void CreaElencoCampione(const std::string& cartella, const std::string& cartellaProgramma,
                        const VistaScansione& vista, support::Messaggi& messaggi);

// The same for a folder asked for in `dialogo`, starting from the current folder. A cancelled dialog
// changes nothing.
void CreaElencoCampione(support::DialogoCartella& dialogo, const std::string& cartellaProgramma,
                        const VistaScansione& vista, support::Messaggi& messaggi);

}  // namespace collection
