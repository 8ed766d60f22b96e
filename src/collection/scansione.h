// The folder scan and the file lists: every plain file below a folder, by its name relative to that folder
// and its size, kept in memory as an `ElencoFile` and on disk as an `.el` (or, for sample lists, `.le`)
// file: the count, the scanned folder, all names, then all sizes; 32-bit little-endian integers and
// length-prefixed strings, no signature and nothing after the last size.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "collection/principale.h"
#include "support/interfacce.h"

namespace collection {

struct ElencoFile {
  std::int32_t NumeroFile = 0;
  // The folder that was scanned, exactly as the caller gave it.
  std::string CartellaBase;
  // Relative to CartellaBase: "\data\a.tr4" for a folder given without a closing "\".
  std::vector<std::string> NomiFile;
  std::vector<std::int32_t> DimensioniFile;
};

// What a walk found. The caller owns it: CreaElencoFile keeps one for the length of its call, the backup
// analysis fills one of its own, so two walks never share a list.
struct Scansione {
  // Full paths in the order of finding.
  std::vector<std::string> FileTrovati;
  std::int32_t NumeroFileTrovati = 0;
  // The length each file had when the walk met it (same indices), or -1 when not yet asked, so that a
  // file's size is asked of the platform once.
  std::vector<std::int64_t> DimensioniTrovate;
};

bool AggiungiFileAllElenco(Scansione& scansione, const std::string& path, std::int64_t dimensione = -1);

// Depth-first: the files of a folder in the platform's order, then the whole tree of each sub-folder in
// turn. Hidden and system entries are left out, links to folders are not entered, a folder that cannot be
// read adds nothing. One turn of the event loop per folder. Always true.
bool ScansioneCartella(Scansione& scansione, const std::string& cartella, support::CicloEventi& eventi);

// `percorso` with the first occurrence of `base` taken out, found without regard to case.
std::string NomeRelativo(const std::string& percorso, const std::string& base);

// Scans `Cartella` into the list file `NomeFile`, which is deleted first whatever follows, so a failed call
// leaves no old list behind. Shows its progress in Label_Info and ProgressBar1. False when `Cartella` is
// empty or no folder, or when `NomeFile` cannot be opened; nothing is shown either way.
bool CreaElencoFile(const std::string& NomeFile, const std::string& Cartella, Principale& principale);

// Creates or replaces `NomeFile` with the list. False only when it cannot be opened.
bool ScriviElencoFile(const std::string& NomeFile, const ElencoFile& elenco);

// Reads a list file, which may come from anywhere: false, with `elenco` left empty, for a file that is
// missing or unreadable or whose counts, lengths or sizes do not fit what it holds. `barra`, when given,
// follows the bytes read.
bool CaricaElencoFile(const std::string& NomeFile, ElencoFile& elenco,
                      support::BarraProgresso* barra = nullptr);

}  // namespace collection
