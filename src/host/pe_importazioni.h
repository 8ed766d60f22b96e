// The DLLs an executable imports, read out of its PE file as the loader walks the import directory.
#pragma once

#include <string>
#include <vector>

#include "host/ambiente.h"
#include "host/versione.h"

namespace host {

struct ImportazioniPe {
  MacchinaPe macchina = MacchinaPe::nessuna;
  // In the table's order, at most kMassimoImportazioni.
  std::vector<std::string> dll;
  // Why the list is not the whole table ("" when it is): not a PE file, a table outside the file, a table
  // cut at the limit.
  std::string problema;
};

// Never reads or allocates more than the file holds, however the table is made.
ImportazioniPe LeggiImportazioniPe(LettoreByte& lettore);

}  // namespace host
