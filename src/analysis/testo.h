// The text of a report: one string of lines, each ended by CR LF (the last one too); a line is a label that
// ends in its own blank (or "0x") followed directly by the value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace analysis {

inline constexpr std::string_view kFineRiga = "\r\n";

// Appends `riga` and the line end.
void AggiungiRiga(std::string& testo, std::string_view riga);

// Appends `riga`, indented by `primo` blanks, as lines of at most `colonne` characters: broken after a blank
// or a "\" where it can be, each line after the first indented by `rientro` blanks. A word longer than a
// line is cut. With `colonne` 0 the line stays whole.
void AggiungiRigaAvvolta(std::string& testo, std::string_view riga, std::size_t primo, std::size_t rientro,
                         std::size_t colonne);

// The words of the platform's conversion of a boolean to text.
std::string_view TestoBooleano(bool v);

// Capital hexadecimal digits without leading zeros, a negative value in the two's complement of the field's
// width: -1 in 16 bits is FFFF, in 32 bits FFFFFFFF.
std::string Esadecimale(std::int64_t v, int bitCampo);

}  // namespace analysis
