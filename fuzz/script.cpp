// The editor's compiled script as it arrives inside a snapshot: the report's reader, and the reading of its
// table that tells whether it is a level script at all.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "formats/script.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  const std::string_view byte(reinterpret_cast<const char*>(dati), n);
  std::int32_t numero = 0;
  const auto livelli = formats::AnalizzaScript(byte, numero);
  if (numero > 0 ? livelli.size() != static_cast<std::size_t>(numero) : !livelli.empty()) std::abort();
  for (const auto& l : livelli)
    if (l.size() > 30 + 32767 + 4) std::abort();
  // A script that reads whole names a file for each entry its head counts, and nothing else.
  const formats::TabellaScript t = formats::AnalizzaTabellaScript(byte);
  if (t.problema.empty() != !t.livelli.empty()) std::abort();
  if (t.problema.empty() && t.livelli.size() != static_cast<std::size_t>(numero)) std::abort();
  return 0;
}
