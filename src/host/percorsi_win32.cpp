// Paths on Windows: the platform's own, a host path being a Windows path already; and the platform's error
// codes as the program's error numbers.
#ifdef _WIN32

#include <string>

#include "host/grezzo.h"
#include "host/interno_win32.h"
#include "host/machine.h"
#include "host/nomi.h"

namespace host {
namespace {

std::string SenzaBarraDiCartella(std::string p) {
  if (p.size() > 3 && p.back() == '\\') p.pop_back();
  return p;
}

}  // namespace

bool DriveAssente(const std::string& path) {
  if (path.size() < 2 || path[1] != ':') return false;
  const char lettera = Maiuscola(path[0]);
  if (lettera < 'A' || lettera > 'Z') return false;
  if (((::GetLogicalDrives() >> (lettera - 'A')) & 1u) == 0) return true;
  const char radice[4] = {lettera, ':', '\\', '\0'};
  return ::GetFileAttributesA(radice) == INVALID_FILE_ATTRIBUTES;
}

int ErroreDa(DWORD codice, const std::string& path) {
  switch (codice) {
    case ERROR_FILE_NOT_FOUND:
      return DriveAssente(path) ? kErrDeviceUnavailable : kErrFileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DIRECTORY:
      return DriveAssente(path) ? kErrDeviceUnavailable : kErrPathNotFound;
    case ERROR_NOT_READY:
    case ERROR_INVALID_DRIVE:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_UNEXP_NET_ERR:
      return kErrDeviceUnavailable;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return kErrBadFileName;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
      return kErrPermissionDenied;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return kErrDiskFull;
    default:
      return kErrPathFileAccess;
  }
}

std::string PercorsoHost(const std::string& winPath, int* err) {
  Imposta(err, winPath.empty() ? kErrBadFileName : kNessunErrore);
  return winPath;
}

std::string PercorsoWindows(const std::string& hostPath) {
  if (hostPath.empty()) return {};
  return ConBuffer([&](char* b, DWORD n) { return ::GetFullPathNameA(hostPath.c_str(), n, b, nullptr); });
}

std::string CartellaCorrente() {
  return SenzaBarraDiCartella(ConBuffer([](char* b, DWORD n) { return ::GetCurrentDirectoryA(n, b); }));
}

}  // namespace host

#endif  // _WIN32
