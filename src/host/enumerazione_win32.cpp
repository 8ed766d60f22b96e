// The enumeration of folders on Windows: the platform's find calls, with the program's mask.
#ifdef _WIN32

#include <string>
#include <vector>

#include "host/grezzo.h"
#include "host/interno_win32.h"
#include "host/machine.h"
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
  if (k != std::string::npos && HaJolly(pattern.substr(0, k))) {
    Imposta(err, kErrBadFileName);
    return;
  }
  std::string modello = pattern;
  if (Barra(modello.back()) || (modello.size() == 2 && modello[1] == ':')) modello += '*';

  WIN32_FIND_DATAA dati{};
  const HANDLE h = ::FindFirstFileA(modello.c_str(), &dati);
  if (h == INVALID_HANDLE_VALUE) {
    const DWORD codice = ::GetLastError();
    // Nothing to list, or no such folder, is an empty listing; a missing drive is not.
    const bool vuoto = codice == ERROR_FILE_NOT_FOUND || codice == ERROR_NO_MORE_FILES ||
                       codice == ERROR_PATH_NOT_FOUND || codice == ERROR_DIRECTORY;
    if (!vuoto || DriveAssente(modello)) Imposta(err, ErroreDa(codice, modello));
    return;
  }
  do {
    if (Ammesso(dati.dwFileAttributes, mask)) nomi->push_back(dati.cFileName);
  } while (::FindNextFileA(h, &dati));
  const DWORD codice = ::GetLastError();
  ::FindClose(h);
  if (codice != ERROR_NO_MORE_FILES) Imposta(errFine, ErroreDa(codice, {}));
}

}  // namespace host

#endif  // _WIN32
