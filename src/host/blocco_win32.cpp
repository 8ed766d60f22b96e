// The lock of a program folder on Windows: the lock file opened without sharing, and its first byte locked.
#ifdef _WIN32

#include <cstdint>
#include <string>

#include "host/file_host.h"
#include "host/grezzo.h"
#include "host/interno_win32.h"
#include "host/macchina.h"

namespace host {

// No sharing keeps every other Windows program out until this handle is closed or its process ends; the
// lock on the first byte, which Wine makes a record lock of the host file, keeps out a native program on the
// same folder too. The file goes when the holder lets go.
std::intptr_t PrendiBlocco(const std::string& cartella, bool* occupato, std::string* motivo) {
  *occupato = false;
  motivo->clear();
  std::string p;
  DWORD a = 0;
  if (!ControllaSotto(cartella, cartella + "\\" + kFileBlocco, &p, &a, nullptr)) return -1;
  // A link or a folder at the name was told before (host/blocco.cpp).
  const bool c_era = a != INVALID_FILE_ATTRIBUTES;
  const HANDLE h = ::CreateFileA(p.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                                 FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (h == INVALID_HANDLE_VALUE) {
    const DWORD codice = ::GetLastError();
    *occupato = codice == ERROR_SHARING_VIOLATION;
    if (!*occupato && c_era)
      *motivo = std::string(kFileBlocco) + " cannot be opened: error " + std::to_string(codice);
    return -1;
  }
  OVERLAPPED inizio{};
  if (!::LockFileEx(h, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &inizio)) {
    const DWORD codice = ::GetLastError();
    ::CloseHandle(h);
    *occupato = codice == ERROR_LOCK_VIOLATION;
    if (!*occupato) *motivo = std::string(kFileBlocco) + " cannot be locked: error " + std::to_string(codice);
    return -1;
  }
  return reinterpret_cast<std::intptr_t>(h);
}

void LasciaBlocco(const std::string&, std::intptr_t maniglia) {
  FILE_DISPOSITION_INFO via{};
  via.DeleteFile = TRUE;
  ::SetFileInformationByHandle(Maniglia(maniglia), FileDispositionInfo, &via, sizeof via);
  ::CloseHandle(Maniglia(maniglia));
}

}  // namespace host

#endif  // _WIN32
