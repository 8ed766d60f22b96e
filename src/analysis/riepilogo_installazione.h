// The findings about where things are installed, from the folders and names of the snapshot's three lists:
// below a program-files folder (UAC virtualization), characters the level tools cannot open, OneDrive, and
// paths near the 260-character limit; and the files Windows served from the VirtualStore.
#pragma once

#include <vector>

#include "analysis/riepilogo.h"
#include "formats/ambiente.h"
#include "formats/elenco.h"

namespace analysis {

// A list of the snapshot and what its folder is ("editor", "Ordelio", "archive").
struct ElencoDiCartella {
  const char* ruolo;
  const formats::ElencoFile* elenco;
};

// A warning for each thing found in the folders, else one pass line; then, with the check run's environment,
// one warning that names the members and listed files that came from the VirtualStore.
std::vector<Esito> VerificaInstallazione(const std::vector<ElencoDiCartella>& elenchi,
                                         const formats::Ambiente* ambiente = nullptr);

// The components of a Windows path after its drive, in upper case.
std::vector<std::string> ComponentiCartella(const std::string& cartella);

}  // namespace analysis
