// The two reports on files taken from the editor's folder: ordeio.txt shown as it is, and the level files
// that script.dat names.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/interfacce.h"

namespace analysis {

// Both reports test for their file first. A missing file shows a critical message saying that it was not
// saved and gives no text: the window then leaves its text and its check marks alone. Given a text, the
// window clears the marks, checks the report's own item and shows the text.

// `cartellaDati`\ordeio.txt byte for byte, line ends included; "" for a file that cannot be read.
std::optional<std::string> MostraOrdelioTxt(const std::string& cartellaDati, support::Messaggi& messaggi);

// The heading, an empty line, then each of the first `numero` names on a line of its own (an empty line
// where the list runs short, none for a count below 1).
std::string TestoLivelliScript(const std::vector<std::string>& livelli, std::int32_t numero);

// The one reading of a script.dat: the level files as the report lists them, one entry a line ("" where the
// list runs short, none for a count below 1). `esiste` is false for a file that is not there.
struct LivelliScript {
  bool esiste = false;
  std::vector<std::string> righe;
};
LivelliScript LeggiScript(const std::string& percorso);

// The report of `cartellaDati`\script.dat.
std::optional<std::string> MostraScriptDat(const std::string& cartellaDati, support::Messaggi& messaggi);

}  // namespace analysis
