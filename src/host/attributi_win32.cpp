// Attributes and lengths on Windows, as the platform gives them.
#ifdef _WIN32

#include <cstdint>
#include <string>

#include "host/grezzo.h"
#include "host/interno_win32.h"
#include "host/macchina.h"

namespace host {

bool Rifiutato(const std::string& path, DWORD bloccanti) {
  const DWORD a = ::GetFileAttributesW(Largo(path).c_str());
  return a != INVALID_FILE_ATTRIBUTES && (a & bloccanti);
}

int grezzo::Attributi(const std::string& path, int* err) {
  const std::string p = SenzaBarraFinale(path);
  if (!PercorsoAccettato(p, err)) return -1;
  const DWORD a = ::GetFileAttributesW(Largo(p).c_str());
  if (a == INVALID_FILE_ATTRIBUTES) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return -1;
  }
  const int risultato =
      static_cast<int>(a) & (kAttrReadOnly | kAttrHidden | kAttrSystem | kAttrDirectory | kAttrArchive);
  // FILE_ATTRIBUTE_NORMAL stands alone; the program knows a plain file by its archive bit.
  if (risultato == 0) return kAttrArchive;
  return risultato;
}

bool grezzo::Collegamento(const std::string& path) {
  const std::string p = SenzaBarraFinale(path);
  const DWORD a = ::GetFileAttributesW(Largo(p).c_str());
  if (a == INVALID_FILE_ATTRIBUTES) return false;
  return (a & FILE_ATTRIBUTE_REPARSE_POINT) || (!(a & FILE_ATTRIBUTE_DIRECTORY) && FileAltrove(p));
}

bool grezzo::ImpostaAttributi(const std::string& path, int attr, int* err) {
  Imposta(err, kNessunErrore);
  DWORD valore = static_cast<DWORD>(attr & (kAttrReadOnly | kAttrHidden | kAttrSystem | kAttrArchive));
  if (valore == 0) valore = FILE_ATTRIBUTE_NORMAL;
  const std::string p = SenzaBarraFinale(path);
  if (!::SetFileAttributesW(Largo(p).c_str(), valore)) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return false;
  }
  return true;
}

std::int64_t grezzo::Lunghezza(const std::string& path, int* err) {
  if (!PercorsoAccettato(path, err)) return -1;
  WIN32_FILE_ATTRIBUTE_DATA dati{};
  if (!::GetFileAttributesExW(Largo(path).c_str(), GetFileExInfoStandard, &dati)) {
    Imposta(err, ErroreDa(::GetLastError(), path));
    return -1;
  }
  if (dati.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return 0;
  return static_cast<std::int64_t>((static_cast<std::uint64_t>(dati.nFileSizeHigh) << 32) |
                                   dati.nFileSizeLow);
}

}  // namespace host

#endif  // _WIN32
