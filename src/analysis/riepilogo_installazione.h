// What the checks on where things are installed (below a program-files folder, characters the level tools
// cannot open, OneDrive, paths near the 260-character limit, the VirtualStore) share with the environment's:
// the snapshot's lists by the folder they list, and a folder's components.
#pragma once

#include <vector>

#include "analysis/fatti.h"
#include "formats/elenco.h"

namespace analysis {

// A list of the snapshot and what its folder is ("editor", "Ordelio", "archive").
struct ElencoDiCartella {
  const char* ruolo;
  const formats::ElencoFile* elenco;
};

// The lists the snapshot holds, read whole or not: their folders were read either way.
std::vector<ElencoDiCartella> ElenchiPresenti(const Fatti& f);

// A folder's role ("editor", "Ordelio", "archive") as the answer to the user names it.
std::string PerUtente(const std::string& ruolo);

// The components of a Windows path after its drive, in upper case.
std::vector<std::string> ComponentiCartella(const std::string& cartella);

}  // namespace analysis
