// The environment of a check run as the check run records it: the program, the moment, Windows, the
// executables at the top of the two installations, and what Windows served from the VirtualStore.
#pragma once

#include <string>
#include <vector>

#include "collection/snapshot.h"
#include "formats/ambiente.h"

namespace collection {

// The local date and time, "YYYY-MM-DDTHH:MM:SS", and its offset from UTC in minutes.
struct Ora {
  std::string locale;
  int scartoUtcMinuti = 0;
};
using Orologio = Ora (*)();
Ora OraLocale();

// The three folders the check run lists (the archive's level folder "" when it has none).
struct CartelleControllo {
  std::string trle;
  std::string ordl;
  std::string archivio;
};

// Everything but the members: what the machine says once, before the snapshot is written.
formats::Ambiente RaccogliAmbiente(const CartelleControllo& cartelle, Orologio orologio);

// The member's bytes for the members packed and those left out: the packed ones that Windows served from
// the VirtualStore, and those that could not be read.
std::string CorpoAmbiente(formats::Ambiente a, const std::vector<std::string>& packati,
                          const std::vector<MembroEscluso>& esclusi);

}  // namespace collection
