// The findings on the environment of the check run: the DLLs an executable imports that Windows cannot find,
// compatibility layers on the level tools, the mark of the web, Controlled Folder Access over an
// installation, and a member that another program held open.
#pragma once

#include <optional>
#include <vector>

#include "analysis/ambiente_dati.h"
#include "analysis/riepilogo.h"
#include "analysis/riepilogo_installazione.h"
#include "collection/membri.h"

namespace analysis {

// The member as the check run could not read it, from the environment's list; nothing when it was not
// among them (or the environment was not read).
const formats::MembroNonLetto* MembroNonLettoDi(const AmbienteLetto& a, collection::Membro m);

// The member.unreadable finding for `m`, which stands in for member.missing.
Esito MembroIlleggibile(const formats::MembroNonLetto& n, collection::Membro m);

// The checks on the environment; the lists' folders tell where the installations are. A snapshot without the
// member gives one pass line, one that cannot be read one warning.
std::vector<Esito> VerificaAmbiente(const AmbienteLetto& a, const std::vector<ElencoDiCartella>& elenchi);

}  // namespace analysis
