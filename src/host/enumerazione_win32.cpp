// The enumeration of folders on Windows: the platform's find calls, with the program's mask.
#ifdef _WIN32

#include <string>
#include <vector>

#include "host/grezzo.h"
#include "host/interno_win32.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host {
namespace {

bool Ammesso(DWORD attr, int mask) {
  return AmmessoDaMaschera(static_cast<int>(attr), mask);
}

}  // namespace

void grezzo::Elenco(const std::string& pattern, int mask, std::vector<std::string>* nomi, int* err,
                    int* errFine) {
  const std::size_t k = pattern.find_last_of("\\/");
  // The folder's names pass through Largo, as every path does; the pattern's own '?' stay wildcards.
  if (k != std::string::npos && pattern.find('*') < k) {
    Imposta(err, kErrBadFileName);
    return;
  }
  std::string modello = pattern;
  if (Barra(modello.back()) || (modello.size() == 2 && modello[1] == ':')) modello += '*';
  const std::size_t u = modello.find_last_of("\\/");
  const std::wstring largo = u == std::string::npos
                                 ? Largo(modello)
                                 : Largo(modello.substr(0, u + 1)) + Largo(modello.substr(u + 1));

  WIN32_FIND_DATAW dati{};
  const HANDLE h = ::FindFirstFileW(largo.c_str(), &dati);
  if (h == INVALID_HANDLE_VALUE) {
    const DWORD codice = ::GetLastError();
    // Nothing to list, or no such folder, is an empty listing; a missing drive is not. A folder name with a
    // '?' that names no folder is a bad name, as everywhere.
    const bool vuoto = codice == ERROR_FILE_NOT_FOUND || codice == ERROR_NO_MORE_FILES ||
                       codice == ERROR_PATH_NOT_FOUND || codice == ERROR_DIRECTORY;
    if (!vuoto || DriveAssente(modello)) Imposta(err, ErroreDa(codice, modello));
    return;
  }
  do {
    if (Ammesso(dati.dwFileAttributes, mask)) nomi->push_back(DaLargo(dati.cFileName));
  } while (::FindNextFileW(h, &dati));
  const DWORD codice = ::GetLastError();
  ::FindClose(h);
  if (codice != ERROR_NO_MORE_FILES) Imposta(errFine, ErroreDa(codice, {}));
}

}  // namespace host

#endif  // _WIN32
