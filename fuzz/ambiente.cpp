// The environment member as it arrives inside a snapshot: whatever is read is written again as the same
// document, and that document reads back.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "formats/ambiente.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  const std::string_view byte(reinterpret_cast<const char*>(dati), n);
  formats::Ambiente a;
  std::string motivo;
  if (!formats::DecodificaAmbiente(byte, &a, &motivo)) {
    if (motivo.empty()) std::abort();
    return 0;
  }
  const std::string json = formats::CodificaAmbiente(a);
  formats::Ambiente di_nuovo;
  if (!formats::DecodificaAmbiente(json, &di_nuovo, &motivo)) std::abort();
  if (formats::CodificaAmbiente(di_nuovo) != json) std::abort();
  return 0;
}
