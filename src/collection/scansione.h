// The folder scan: every plain file below a folder, by its name relative to that folder and its size, made
// into a file list.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formats/elenco.h"
#include "support/interfacce.h"

namespace collection {

// The lists live with their file format; the scan makes them.
using formats::ElencoFile;
using formats::ScriviElencoFile;

// What a scan shows while it runs: its status line, its progress bar, and a turn of the event loop per
// folder.
struct VistaScansione {
  support::Didascalia& Info;
  support::BarraProgresso& Barra;
  support::CicloEventi& Eventi;
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
// leaves no old list behind. Shows its progress in `vista`. False when `Cartella` is empty or no folder, or
// when `NomeFile` cannot be written whole (support::ScriviFileSotto), which then leaves no file; nothing is
// shown either way.
bool CreaElencoFile(const std::string& NomeFile, const std::string& Cartella, const VistaScansione& vista);

}  // namespace collection
