// Wine's registry files (system.reg, user.reg) in the text form that Wine writes.
#pragma once

#include <string>
#include <vector>

namespace host {

enum TipoRegistro : int {
  kRegNone = 0,
  kRegSz = 1,
  kRegExpandSz = 2,
  kRegBinary = 3,
  kRegDword = 4,
  kRegMultiSz = 7,
};

struct ValoreRegistro {
  std::string nome;  // "" for the default value
  int tipo = kRegNone;
  // Strings in Windows-1252 without their terminator; other types as raw little-endian bytes.
  std::string dati;
};

struct ChiaveRegistro {
  std::string nome;  // "Software\Wine", single backslashes
  std::vector<ValoreRegistro> valori;
};

// Every key of the file, in file order. A line that does not parse is skipped; a missing file gives none.
std::vector<ChiaveRegistro> LeggiFileRegistro(const std::string& hostPath);
std::vector<ChiaveRegistro> AnalizzaTestoRegistro(const std::string& testo);

// The text of one string value, "" when the key, the value or the file is not there.
std::string LeggiValoreRegistroTesto(const std::string& hostPath, const std::string& chiave,
                                     const std::string& valore);

}  // namespace host
