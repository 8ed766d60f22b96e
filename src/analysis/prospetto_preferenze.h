// The preferences report: the settings of the user's Ordelio as the snapshot carries them, one line a
// setting, labels in alphabetical order.
#pragma once

#include <optional>
#include <string>

#include "analysis/righe_record.h"
#include "formats/preferenze.h"
#include "support/interfacce.h"

namespace analysis {

// The 32 rows for `p`, exactly as the record holds them (no defaults, no resets), and their lines.
RigheRecord RighePreferenze(const formats::PrefRecord& p);
std::string TestoPreferenze(const formats::PrefRecord& p);

// Reads `cartellaDati`\ordelio.prf and gives its report. A missing file shows the critical message
// "Non trovo file: " and the path and gives no text; a file that cannot be read gives the report of an
// empty record. The window moves its check mark before calling, whatever the outcome.
std::optional<std::string> ProspettoPreferenze(const std::string& cartellaDati, support::Messaggi& messaggi);

}  // namespace analysis
