// One program at a time per program folder, as the operations that fill its working files take it.
#pragma once

#include <string>

#include "host/macchina.h"
#include "support/interfacce.h"

namespace collection {

// Makes the program folder when it is the user's own data folder and not there yet (the first time); when
// it cannot be made, shows the critical message naming the folder and the reason, and gives false.
bool PreparaCartellaProgramma(const std::string& cartella, support::Messaggi& messaggi);

// The folder's lock, held as long as the result lives, on a folder made first where needed. When another
// program holds it, or the folder cannot be made, the critical message naming the folder is shown and
// nothing is held.
host::BloccoCartella BloccaCartellaProgramma(const std::string& cartella, support::Messaggi& messaggi);

}  // namespace collection
