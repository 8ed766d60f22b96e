// The version block and the OS version on Windows: the platform's own calls.
#ifdef _WIN32

// windows.h first: the version header needs it.
#include "host/interno_win32.h"

#include <winver.h>

#include <cstddef>
#include <string>

#include "host/grezzo.h"
#include "host/macchina.h"
#include "host/versione.h"

namespace host {

std::string grezzo::BloccoVersione(const std::string& winPath) {
  // The platform's call opens the file its own way: what the program would not read as a file, it is not
  // given.
  int err = 0;
  if (!File::ApriLetturaGrezza(winPath, &err).Aperto() || err) return {};
  DWORD maniglia = 0;
  const DWORD dimensione = ::GetFileVersionInfoSizeA(winPath.c_str(), &maniglia);
  if (dimensione == 0) return {};
  // The platform may leave the tail of the buffer as it found it; blanks, as the program always had there.
  std::string blocco(dimensione, ' ');
  if (!::GetFileVersionInfoA(winPath.c_str(), 0, dimensione, blocco.data())) return {};
  return blocco;
}

bool LeggiVersioneOs(VersioneOs* versione) {
  OSVERSIONINFOA info{};
  static_assert(sizeof info == 148, "OSVERSIONINFOA is 148 bytes");
  info.dwOSVersionInfoSize = sizeof info;
  if (!::GetVersionExA(&info)) return false;
  versione->dwMajorVersion = info.dwMajorVersion;
  versione->dwMinorVersion = info.dwMinorVersion;
  versione->dwBuildNumber = info.dwBuildNumber;
  versione->dwPlatformId = info.dwPlatformId;
  std::size_t n = 0;
  while (n < sizeof info.szCSDVersion && info.szCSDVersion[n] != '\0') ++n;
  versione->szCSDVersion.assign(info.szCSDVersion, n);
  return true;
}

}  // namespace host

#endif  // _WIN32
