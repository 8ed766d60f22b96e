// The environment member of an unpacked snapshot, read once for the report, the findings and the comparison.
#pragma once

#include <cstdint>
#include <string>

#include "formats/ambiente.h"

namespace analysis {

enum class StatoAmbiente {
  // The snapshot has no such member: an older program made it.
  assente,
  // The member is there but is not a document this program can read; `motivo` says why.
  illeggibile,
  letto,
};

struct AmbienteLetto {
  StatoAmbiente stato = StatoAmbiente::assente;
  formats::Ambiente ambiente;
  std::string motivo;
};

// No check run writes a larger member; a larger one is not read at all.
inline constexpr std::int64_t kAmbienteMassimo = 8 << 20;

// The member in `cartellaDati` (the working folder of an unpacked snapshot).
AmbienteLetto LeggiAmbienteDati(const std::string& cartellaDati);

// "2026-11-25 17:05:03 (UTC+01:00)": the date and time of the check run as the member records it.
std::string DataControllo(const formats::Ambiente& a);

}  // namespace analysis
