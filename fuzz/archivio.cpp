// The level archive as it arrives inside a snapshot: the count in its header is not to be trusted.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "formats/archivio.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  const std::string_view byte(reinterpret_cast<const char*>(dati), n);
  const formats::ArchivioHeader h = formats::DecodificaArchivioHeader(byte);
  const auto livelli = formats::DecodificaLivelli(byte, h.TotLivelli);
  // Never more records than begin inside the input, never more than counted.
  const std::size_t dopo =
      n > formats::ArchivioHeader::kDimensione ? n - formats::ArchivioHeader::kDimensione : 0;
  if (livelli.size() >
      (dopo + formats::ArchivioLivello::kDimensione - 1) / formats::ArchivioLivello::kDimensione)
    std::abort();
  if (h.TotLivelli >= 0 && livelli.size() > static_cast<std::size_t>(h.TotLivelli)) std::abort();
  return 0;
}
