// A record's report as rows: each field's label and its value as the report shows it. The report writes
// the rows as its lines, and the comparison compares two records row by row, so a field is named once.
#pragma once

#include <concepts>
#include <cstddef>
#include <string>
#include <vector>

#include "analysis/testo.h"
#include "formats/codifica.h"
#include "support/valori.h"

namespace analysis {

struct RigaRecord {
  std::string etichetta;
  std::string valore;
};
using RigheRecord = std::vector<RigaRecord>;

// Appends one line a row, "label: value", each closed by the line end. A value that holds line ends stays
// as it is: the rows, not the text, are what the comparison reads.
inline void AggiungiRighe(std::string& testo, const RigheRecord& righe) {
  for (const auto& r : righe) AggiungiRiga(testo, r.etichetta + ": " + r.valore);
}

// A field as the reports show it unless its row says otherwise: a fixed string without its padding and
// control characters, a number in decimal, a boolean in the platform's words.
template <std::size_t N>
std::string Valore(const formats::StringaFissa<N>& s) {
  return support::PulisciStringa(s.Testo());
}
inline std::string Valore(bool v) {
  return std::string(TestoBooleano(v));
}
template <std::integral T>
requires(!std::same_as<T, bool>) std::string Valore(T v) {
  return std::to_string(v);
}

}  // namespace analysis
