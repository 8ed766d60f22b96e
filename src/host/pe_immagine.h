// The way into a PE file that every reader of one shares: the DOS and COFF headers, the optional header's
// kind and data directories, and the section table that maps relative virtual addresses to the file. All of
// it comes from an outside file, so each offset and count is held against the file's length before anything
// is read or allocated.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/versione.h"

namespace host {

struct SezionePe {
  std::uint32_t indirizzo = 0;  // relative virtual address of its first byte
  std::uint32_t byteNelFile = 0;
  std::uint32_t posizioneNelFile = 0;
};

struct ImmaginePe {
  LettoreByte* lettore = nullptr;
  std::uint64_t lunghezza = 0;
  // The COFF header's machine field.
  std::uint16_t macchina = 0;
  // The optional header, whole as the COFF header sizes it.
  std::string opzionale;
  std::vector<SezionePe> sezioni;
};

// The headers and the section table; false when the file is no PE32 or PE32+ file or they do not fit in it.
// `conMacchina` is set as soon as the COFF header was read, even when the rest then fails.
bool ApriImmaginePe(LettoreByte& lettore, ImmaginePe* im, bool* conMacchina = nullptr);

// Exactly `n` bytes at a file offset; false when they are not all inside the file.
bool LeggiNelFile(ImmaginePe& im, std::uint64_t inizio, std::size_t n, std::string* out);
// Bytes at a relative virtual address; they must lie inside what one section holds in the file.
bool LeggiRva(ImmaginePe& im, std::uint32_t rva, std::size_t n, std::string* out);
// How many bytes of a section's file data lie from `rva` on; 0 when no section holds it.
std::size_t ByteDaRva(const ImmaginePe& im, std::uint32_t rva);

// The relative virtual address of data directory `indice`; 0 when the header has no such entry or it is
// empty.
std::uint32_t CartellaDati(const ImmaginePe& im, std::size_t indice);

}  // namespace host
