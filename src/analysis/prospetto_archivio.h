// The archive report: the level archive found among a snapshot's members, its header and one block per
// level. The archive's name is not fixed, so the report looks for it in the snapshot's table.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/righe_record.h"
#include "collection/snapshot.h"
#include "formats/archivio.h"
#include "support/interfacce.h"

namespace analysis {

// The archive's rows, `nomeFile` being its own file name, and one level's rows.
RigheRecord RigheArchivioHeader(const std::string& nomeFile, const formats::ArchivioHeader& h);
RigheRecord RigheLivello(const formats::ArchivioLivello& l);

// The head block and one block per level given, each closed by an empty line. The levels are those read,
// which for a cut file may be fewer than `TotLivelli` says.
std::string TestoArchivio(const std::string& nomeFile, const formats::ArchivioHeader& h,
                          const std::vector<formats::ArchivioLivello>& livelli);

struct EsitoProspettoArchivio {
  // Whether the window moves its check mark to this report: false only when no member is an archive,
  // since then nothing at all changes.
  bool segnaVoce = false;
  std::optional<std::string> testo;
};

// Finds and reads the archive and gives the report; each failure shows its critical message and no text.
EsitoProspettoArchivio ProspettoArchivio(const collection::ContenutoSnapshot& contenuto,
                                         const std::string& cartellaDati, support::Messaggi& messaggi);

}  // namespace analysis
