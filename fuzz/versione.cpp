// The PE resource reader and the version search on arbitrary bytes: neither may crash, read outside its
// input or allocate more than it holds, and the search gives a text without NULs that the block contains.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/versione.h"
#include "support/versioni.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string byte(reinterpret_cast<const char*>(data), size);
  host::LettoreMemoria lettore(byte);
  const std::string blocco = host::EstraiRisorsaVersione(lettore);
  if (blocco.size() > byte.size()) std::abort();
  for (const std::string* b : {&blocco, &byte}) {
    const std::string testo = support::CercaVersioneNelBlocco(*b);
    if (testo.size() > b->size() || testo.find('\0') != std::string::npos) std::abort();
  }
  return 0;
}
