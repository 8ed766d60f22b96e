// The import table reader on arbitrary bytes: it may not crash, read outside its input or allocate more than
// it holds, and it never gives more names than its limit, each a non-empty string without NULs.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/pe_importazioni.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string byte(reinterpret_cast<const char*>(data), size);
  host::LettoreMemoria lettore(byte);
  const host::ImportazioniPe imp = host::LeggiImportazioniPe(lettore);
  if (imp.dll.size() > host::kMassimoImportazioni) std::abort();
  for (const std::string& d : imp.dll)
    if (d.empty() || d.size() > byte.size() || d.find('\0') != std::string::npos) std::abort();
  return 0;
}
