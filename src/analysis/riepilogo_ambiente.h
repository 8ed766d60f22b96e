// What the checks on the environment of the check run (the DLLs an executable imports that Windows cannot
// find, compatibility layers on the level tools, the mark of the web, Controlled Folder Access over an
// installation) lend the members' check: a member that another program held open.
#pragma once

#include "analysis/ambiente_dati.h"
#include "analysis/riepilogo.h"
#include "collection/membri.h"

namespace analysis {

// The member as the check run could not read it, from the environment's list; nothing when it was not
// among them (or the environment was not read).
const formats::MembroNonLetto* MembroNonLettoDi(const AmbienteLetto& a, collection::Membro m);

// The member.unreadable finding for `m`, which stands in for member.missing.
Esito MembroIlleggibile(const formats::MembroNonLetto& n, collection::Membro m);

}  // namespace analysis
