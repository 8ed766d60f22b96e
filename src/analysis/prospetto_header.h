// The header report: the first page of an opened snapshot, eight lines about the user's machine taken from
// the snapshot's own infofile.bin.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "formats/info_header.h"
#include "support/interfacce.h"

namespace analysis {

// The eight lines for `h`. Only the flag rows in `tabellaFlag` are looked at, in its order: a window whose
// flag table was never built passes an empty one and the flag line shows no text whatever the word holds.
std::string TestoHeader(const formats::InfoHeader& h, std::span<const formats::TestoFlag> tabellaFlag);

// Reads `cartellaDati`\infofile.bin into `header` (the process's one record, which the snapshot's copy
// replaces) and gives the report. When the file is missing or cannot be read: a critical message, no text,
// and `header` untouched. The window moves its check mark before calling, whatever the outcome.
std::optional<std::string> ProspettoHeader(const std::string& cartellaDati,
                                           std::span<const formats::TestoFlag> tabellaFlag,
                                           formats::InfoHeader& header, support::Messaggi& messaggi);

}  // namespace analysis
