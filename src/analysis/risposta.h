// The answer the supporter pastes for the user, in a mail or a forum post: the failures and warnings of a
// snapshot, each with its evidence and what to do written to the user, paths whole (never wrapped).
#pragma once

#include <string>

#include "analysis/riepilogo.h"

namespace analysis {

// Plain text for a mail or the clipboard; Markdown or BBCode for the forums that render them.
enum class FormaRisposta { testo, markdown, bbcode };

// The answer about the snapshot file `nome` (its name only is shown): a first line naming it and when it was
// made, then the failures and warnings that have an answer for the user (those about the supporter's own
// computer have none), or one line saying nothing wrong was found; for a snapshot that could not be read, a
// request for a new one. Windows-1252, every line ended by CR LF, as the reports.
std::string TestoRisposta(const RiepilogoSnapshot& r, const std::string& nome, FormaRisposta forma);

}  // namespace analysis
