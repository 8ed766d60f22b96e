// The two "Change" buttons: the user picks an installation folder in the folder dialog, and only a folder
// that holds what an installation must hold reaches its caption. This is the program's only test of a
// folder; what discovery found is never tested.
#pragma once

#include <string>

#include "collection/principale.h"
#include "support/interfacce.h"

namespace collection {

// Ordelio's folder must hold ordl2009.exe.
void Pul_CambiaORDL_Click(Principale& p);
// The editor folder must pass ControllaCartellaTrle.
void Pul_CambiaTrle_Click(Principale& p);

// tomb4.exe, at least one data\*.tr4 and script.dat, tested in that order; at the first one missing a
// critical message names the folder (not what is missing) and the result is false.
bool ControllaCartellaTrle(const std::string& Cartella, support::Messaggi& messaggi);

}  // namespace collection
