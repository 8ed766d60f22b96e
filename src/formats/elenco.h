// File lists: every plain file below one folder, by its name relative to that folder and its size, kept in
// memory as an `ElencoFile` and on disk as an `.el` (or, for sample lists, `.le`) file: the count, the
// folder, all names, then all sizes; 32-bit little-endian integers and strings behind a 32-bit length, no
// signature and nothing after the last size.
//
// Two readers take the same bytes under two sets of rules. The strict one is for lists this program wrote
// itself and takes a list whole or not at all; the lenient one is the reports' and takes a list as far as it
// goes. Both read the file in one piece and make room for a count only when the file can hold it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/macchina.h"
#include "support/interfacce.h"

namespace formats {

struct ElencoFile {
  std::int32_t NumeroFile = 0;
  // The folder that was scanned, exactly as the caller gave it.
  std::string CartellaBase;
  // Relative to CartellaBase: "\data\a.tr4" for a folder given without a closing "\".
  std::vector<std::string> NomiFile;
  std::vector<std::int32_t> DimensioniFile;

  bool operator==(const ElencoFile&) const = default;
};

// Longest string behind a length that the readers of lists and snapshots take.
inline constexpr std::int32_t kLunghezzaMassimaNome = 800000;

// Creates or replaces `NomeFile` with the list. False when it cannot be opened or a write fails.
bool ScriviElencoFile(const std::string& NomeFile, const ElencoFile& elenco);
// The same into a file the caller opened.
bool ScriviElencoFile(host::File& out, const ElencoFile& elenco);

// False, with `elenco` left empty, for a file that is missing or unreadable or whose counts, lengths or
// sizes do not fit what it holds (a negative size, bytes after the last size). `barra`, when given, follows
// the bytes read.
bool CaricaElencoStretto(const std::string& NomeFile, ElencoFile& elenco,
                         support::BarraProgresso* barra = nullptr);

// The same rules over a list's bytes.
bool DecodificaElencoStretto(std::string_view byte, ElencoFile& elenco,
                             support::BarraProgresso* barra = nullptr);
// The list's bytes, as ScriviElencoFile writes them.
std::string CodificaElenco(const ElencoFile& elenco);

// Why the lenient reader stopped.
enum class GuastoElenco {
  kNessuno,
  kFileNonTrovato,
  kAccessoNegato,
  kConteggioNegativo,
  // More entries than the file has bytes: each takes at least eight, so no list merely cut off has one.
  kConteggioTroppoGrande,
};

// Past the end of the file an integer reads as 0 and a name as "", so a cut-off list keeps its count and ends
// in empty names of size 0; that is no failure. A name's length below 1 or above the longest gives "" and
// the read goes on behind the length field. On a failure the list has no entries, but keeps the folder when
// it was read. `barra`, when given, follows the bytes read over names and sizes together.
GuastoElenco CaricaElencoTollerante(const std::string& NomeFile, ElencoFile& elenco,
                                    support::BarraProgresso* barra = nullptr);

// Where the lenient reader takes the folder and each name from in a list's bytes, for a caller that changes
// them in place.
struct PezzoElenco {
  std::size_t posizione = 0;
  std::size_t lunghezza = 0;
};
struct PezziElenco {
  std::int32_t numero = 0;
  PezzoElenco base;
  std::vector<PezzoElenco> nomi;
  // Where the sizes begin.
  std::size_t dimensioni = 0;
  GuastoElenco guasto = GuastoElenco::kNessuno;
};
PezziElenco PezziElencoTollerante(std::string_view byte, support::BarraProgresso* barra = nullptr);

}  // namespace formats
