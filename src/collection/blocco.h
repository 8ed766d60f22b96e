// One program at a time per program folder, as the operations that fill its working files take it.
#pragma once

#include <string>

#include "host/machine.h"
#include "support/interfacce.h"

namespace collection {

// The folder's lock, held as long as the result lives. When another program holds it, the critical message
// naming the folder is shown and nothing is held.
host::BloccoCartella BloccaCartellaProgramma(const std::string& cartella, support::Messaggi& messaggi);

}  // namespace collection
