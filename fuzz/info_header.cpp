// The info header as it arrives inside a snapshot.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "formats/info_header.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  const std::string_view byte(reinterpret_cast<const char*>(dati), n);
  // Once decoded, a record encodes and decodes to the same bytes (booleans come out as -1 or 0).
  const std::string una = formats::CodificaInfoHeader(formats::DecodificaInfoHeader(byte));
  if (formats::CodificaInfoHeader(formats::DecodificaInfoHeader(una)) != una) std::abort();
  return 0;
}
