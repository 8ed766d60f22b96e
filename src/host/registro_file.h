// Wine's registry files (system.reg, user.reg) in the text form that Wine writes, read as Wine reads them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

enum TipoRegistro : int {
  kRegNone = 0,
  kRegSz = 1,
  kRegExpandSz = 2,
  kRegBinary = 3,
  kRegDword = 4,
  kRegLink = 6,
  kRegMultiSz = 7,
  kRegQword = 11,
};

// The types whose data the platform's ANSI calls hand over as text in the code page.
bool TipoTesto(int tipo);

struct ValoreRegistro {
  std::string nome;  // "" for the default value
  int tipo = kRegNone;
  // Text types in Windows-1252, without the one NUL that ends them (a multi-string keeps the NULs between
  // its strings); other types as the raw little-endian bytes.
  std::string dati;
};

struct ChiaveRegistro {
  std::string nome;  // "Software\Wine": single backslashes, no empty component
  // The key stands for another one, named by its "SymbolicLinkValue".
  bool collegamento = false;
  std::vector<ValoreRegistro> valori;
};

// Every key that the text names, in the order of first appearance. As Wine loads a file:
// - a text that does not begin with the line "WINE REGISTRY Version 2" holds no key at all;
// - a line that does not parse is skipped, and a key line that does not parse drops the values under it;
// - a key named twice is one key, and a value named twice (without regard to case) keeps its first name and
//   its last data;
// - each key's values come in the order in which Wine enumerates them: sorted by name without regard to
//   case, so the default value comes first.
std::vector<ChiaveRegistro> AnalizzaTestoRegistro(std::string_view testo);
// The same for a file; a missing or unreadable file gives none.
std::vector<ChiaveRegistro> LeggiFileRegistro(const std::string& hostPath);

// UTF-16LE bytes (a link's target, say) as Windows-1252 text; '?' for what the code page cannot hold.
std::string TestoDaUtf16(std::string_view byte);

// A key path as the registry takes it apart: separators collapse and a trailing one is dropped
// ("A\\B\" -> "A\B"). False for a path that starts with a separator, which the registry refuses.
bool NormalizzaChiave(std::string_view chiave, std::string* out);

// The text of one string value of a file up to its first NUL, "" when the key, the value or the file is
// not there.
std::string LeggiValoreRegistroTesto(const std::string& hostPath, const std::string& chiave,
                                     const std::string& valore);

}  // namespace host
