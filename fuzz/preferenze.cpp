// Ordelio's settings record as it arrives inside a snapshot, with and without the defaults.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "formats/preferenze.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  const std::string_view byte(reinterpret_cast<const char*>(dati), n);
  formats::PrefRecord base;
  formats::ImpostaDefaultPreferenze(base, false);
  const formats::PrefRecord p = formats::DecodificaPreferenze(byte, base);
  if (formats::CodificaPreferenze(p).size() != formats::PrefRecord::kDimensione) std::abort();
  // Bytes the input holds come through unchanged in the fixed strings.
  if (n >= 266 && std::string_view(p.PathArchivio.byte.data(), 256) != byte.substr(10, 256)) std::abort();
  return 0;
}
