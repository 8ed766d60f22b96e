// The environment member of an unpacked snapshot, read once for the report, the findings and the comparison.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
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

// The words the report and the findings both use for the recorded values.
// "1 member", "2 members".
std::string Quanti(std::size_t n, const std::string& nome);
// "3 (Internet)"; "none" for no mark, "not available under Wine" where the machine could not tell.
std::string TestoZona(int zona);
// A zone that keeps a downloaded file from being trusted: Internet or Restricted sites.
constexpr bool ZonaDelWeb(int zona) {
  return zona == 3 || zona == 4;
}
// Controlled Folder Access: "off", "on", "audit only", "not set", else the value.
std::string TestoAccessoControllato(const std::optional<std::uint32_t>& v);
// The DEP policy: "always off (0)", ..., "not known".
std::string TestoDep(const std::optional<std::uint32_t>& v);

}  // namespace analysis
