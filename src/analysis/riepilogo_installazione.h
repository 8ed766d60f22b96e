// The findings about where things are installed, from the folders and names of the snapshot's three lists:
// below a program-files folder (UAC virtualization), characters the level tools cannot open, OneDrive, and
// paths near the 260-character limit.
#pragma once

#include <vector>

#include "analysis/riepilogo.h"
#include "formats/elenco.h"

namespace analysis {

// A list of the snapshot and what its folder is ("editor", "Ordelio", "archive").
struct ElencoDiCartella {
  const char* ruolo;
  const formats::ElencoFile* elenco;
};

// A warning for each thing found, else one pass line.
std::vector<Esito> VerificaInstallazione(const std::vector<ElencoDiCartella>& elenchi);

}  // namespace analysis
