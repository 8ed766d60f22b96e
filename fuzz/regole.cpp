// A rules file as a supporter may write it, or anything else: the reader either gives rules or errors, never
// both, every error at a place inside the text, at most a hundred and one "too many errors".
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "analysis/regole.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  const std::string_view testo(reinterpret_cast<const char*>(dati), n);
  const analysis::FileRegole f = analysis::AnalizzaRegole(testo, "f.json");
  if (!f.errori.empty() && !f.regole.empty()) std::abort();
  if (f.errori.size() > 101) std::abort();
  for (const analysis::ErroreRegole& e : f.errori)
    if (e.riga < 1 || e.colonna < 1 || e.testo.empty() || static_cast<std::size_t>(e.riga) > n + 1)
      std::abort();
  for (const analysis::Regola& r : f.regole)
    if (r.id.empty() || r.esiti.empty() || r.esiti.size() > 16 || r.riga < 1) std::abort();
  return 0;
}
