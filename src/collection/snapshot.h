// The snapshot: one file that carries a support case, as a count, a table of names and sizes, and the
// members' bytes one behind the other. No signature, version, checksum or compression.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/machine.h"
#include "support/interfacce.h"

namespace collection {

struct ContenutoSnapshot {
  std::int32_t Numero = 0;
  std::vector<std::string> Nomi;
  std::vector<std::int32_t> Dimensioni;
};

// Longest name that the reader takes; a longer one reads as "".
inline constexpr std::int32_t kLunghezzaMassimaNome = 800000;

// A 32-bit little-endian length and that many bytes, no terminator: into a file, or behind a buffer for
// writers that gather many of them.
void ScriviStringaLunga(const std::string& testo, host::File& file);
void AccodaIntero(std::string& buffer, std::int32_t v);
// A 32-bit little-endian integer from the file's position; false when the file ends first.
bool LeggiIntero(host::File& file, std::int32_t* v);
void AccodaStringaLunga(std::string& buffer, const std::string& testo);
std::string LeggiStringaLunga(host::File& file);

// Packs the members that exist, in order. False only when the snapshot cannot be opened for writing.
bool SalvaSnapshot(const std::string& NomeFile, const std::vector<std::string>& Membri,
                   std::int32_t NumeroMembri, support::Didascalia& labelInfo, support::BarraProgresso& barra);

// Unpacks every member into the existing folder `Cartella` by the last component of its name. True when the
// end of the snapshot was reached; members unpacked before a failure stay.
bool EstraiSnapshot(const std::string& NomeFile, const std::string& Cartella, ContenutoSnapshot& contenuto);

// The name a member may be written under inside the target folder, or "" when its name must not be
// written at all (empty, only dots and blanks, a "/" or NUL, a device name).
std::string NomeDestinazione(const std::string& nomeMembro);

}  // namespace collection
