// The directory reports: a file list of the snapshot laid out as text, with the folder names that repeat
// from one line to the next blanked, so that the folders read as a tree.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "collection/membri.h"
#include "formats/elenco.h"
#include "support/interfacce.h"

namespace analysis {

// The three lists a snapshot carries, by the file they are unpacked to and the first words of their report.
struct ProspettoDirectory {
  const char* File;
  const char* Titolo;
};
inline constexpr ProspettoDirectory kDirectoryOrdl{
    collection::VoceDi(collection::Membro::elencoOrdl).nomeDati, "DIRECTORY ORDELIO"};
inline constexpr ProspettoDirectory kDirectoryTrle{
    collection::VoceDi(collection::Membro::elencoTrle).nomeDati, "DIRECTORY LEVEL EDITOR"};
inline constexpr ProspettoDirectory kDirectoryArchivio{
    collection::VoceDi(collection::Membro::elencoArchivio).nomeDati, "DIRECTORY ARCHIVIO LIVELLi"};

// The lenient list reader as the reports use it: a failure shows the plain message
// "Errore in CaricaElencoFile(): " and the failure's description, and the caller goes on with what was read.
// `barra` is not reset. Always true: no failure is left pending.
bool CaricaElencoFile(const std::string& NomeFile, formats::ElencoFile& elenco,
                      support::BarraProgresso& barra, support::Messaggi& messaggi);

// A list read once for all who look at it: the list, and the messages its reading gave (critical or not, and
// their text), which each reader shows or keeps as it always has.
struct ElencoLetto {
  formats::ElencoFile elenco;
  std::vector<std::pair<bool, std::string>> messaggi;
};
ElencoLetto LeggiElencoUnaVolta(const std::string& NomeFile);
// Hands over a snapshot's list (by file name) already read for someone else.
using LettoreElenchi = std::function<std::shared_ptr<const ElencoLetto>(const std::string& file)>;

// How many entries of `elenco` can be used: its count, as far as both columns reach.
std::size_t VociUsabili(const formats::ElencoFile& elenco);

// The report's text for a loaded list, one line per entry in list order (no sorting). `barra` follows the
// entries; it is not reset here.
std::string TestoElencoFile(const formats::ElencoFile& elenco, const std::string& titolo,
                            support::BarraProgresso& barra, char separatoreDecimale);

// Loads `NomeFile` and gives its report, with `barra` back at 0. When the load gives false: the critical
// message "Errore caricando elenco files: " and the path, and no text (the report area keeps its own).
std::optional<std::string> MostraElencoFile(const std::string& NomeFile, const std::string& titolo,
                                            support::BarraProgresso& barra, support::Messaggi& messaggi);

// One of the three menu items: the list `quale.File` in `cartellaDati`. A missing file shows the critical
// message "Non trovo file: " and the path and gives no text. The window moves its check mark to the item
// before calling, whatever the outcome.
std::optional<std::string> MostraDirectory(const std::string& cartellaDati, const ProspettoDirectory& quale,
                                           support::BarraProgresso& barra, support::Messaggi& messaggi);

}  // namespace analysis
