// Processes on Windows.
#ifdef _WIN32

#include "host/interno_win32.h"
#include "host/processo.h"

namespace host {

std::uint32_t IdProcesso() {
  return ::GetCurrentProcessId();
}

bool ProcessoVivo(std::uint32_t id) {
  if (id == 0) return true;
  // Windows 7 has the limited right; it is given on other users' processes too.
  const HANDLE h = ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
  if (!h) return ::GetLastError() != ERROR_INVALID_PARAMETER;
  // A process that has ended lives on as long as someone holds a handle to it.
  DWORD codice = 0;
  const bool finito = ::GetExitCodeProcess(h, &codice) && codice != STILL_ACTIVE;
  ::CloseHandle(h);
  return !finito;
}

}  // namespace host

#endif
