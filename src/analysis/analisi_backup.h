// The backup analysis: the user's backup_trle folder, as the snapshot's list of the Ordelio folder tells it,
// against a known good copy on this computer (its sample list backup_trle.le and the files themselves) and
// the list of the original CD's files (trle_cd.le). One row for each sample file that is not right, then
// six totals.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "collection/scansione.h"
#include "support/interfacce.h"

namespace analysis {

// The length of a good copy on this computer, or -1 when it cannot be measured.
using MisuraFile = std::function<std::int64_t(const std::string& percorso)>;

// Texts of the result column.
inline constexpr const char* kFileMancante = "FILE MANCANTE";
inline constexpr const char* kOriginaleCd = "ORIGINALE CD";
// A sample file whose good copy is not on this computer: nothing to compare with.
inline constexpr const char* kCampioneMancante = "COPIA CAMPIONE NON TROVATA";

struct ListeBackup {
  formats::ElencoFile Campione;
  formats::ElencoFile Utente;
  formats::ElencoFile Cd;
};

// The six totals of the report, for callers that want the figures rather than the text.
struct TotaliBackup {
  std::int64_t Campione = 0, Corretti = 0, Mancanti = 0, Maggiori = 0, Minori = 0, OriginaliCd = 0, InPiu = 0;
  // Sample files the user has whose good copy is not on this computer: neither right nor wrong.
  std::int64_t SenzaCopia = 0;
};

// The report for three loaded lists. `elencoCampione` is the path of the sample list as line 4 shows it.
// `fileTrovati` gets the full paths of the sample files. Lookups go through indexes built once (upper-case
// names, first entry wins), so the work grows with the lists' lengths and not with their product.
std::string TestoAnalisiBackup(const ListeBackup& liste, const std::string& elencoCampione,
                               const MisuraFile& misura, std::vector<std::string>& fileTrovati,
                               support::BarraProgresso& barra, char separatoreDecimale,
                               TotaliBackup* totali = nullptr);

// The good copies measured as the menu item measures them: one listing per folder.
MisuraFile MisuraCopieCampione();

// The menu item: finds Ordelio on this computer, loads backup_trle.le and trle_cd.le from
// `cartellaProgramma` and ordl.el from `cartellaDati`, and gives the report with `barra` back at 0. When it
// stops at a critical message, no text.
std::optional<std::string> AnalisiBackup(const std::string& cartellaProgramma,
                                         const std::string& cartellaDati,
                                         std::vector<std::string>& fileTrovati,
                                         support::BarraProgresso& barra, support::Messaggi& messaggi);

}  // namespace analysis
