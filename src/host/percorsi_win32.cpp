// Paths on Windows: the platform's own, a host path being a Windows path already; and the platform's error
// codes as the program's error numbers.
#ifdef _WIN32

#include <string>

#include "host/grezzo.h"
#include "host/interno_win32.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host {
namespace {

std::string SenzaBarraDiCartella(std::string p) {
  if (p.size() > 3 && p.back() == '\\') p.pop_back();
  return p;
}

std::wstring LargoDiretto(const std::string& s) {
  if (s.empty()) return {};
  const int n = ::MultiByteToWideChar(CP_ACP, 0, s.data(), static_cast<int>(s.size()), nullptr, 0);
  std::wstring w(static_cast<std::size_t>(n), L'\0');
  ::MultiByteToWideChar(CP_ACP, 0, s.data(), static_cast<int>(s.size()), w.data(), n);
  return w;
}

// The entry of `cartella` (wide, with its closing separator) whose name is `nome` in the program's form;
// the pattern's '?' stands for one character each, and short names matching it are passed over.
std::wstring NomeVero(const std::wstring& cartella, const std::string& nome) {
  WIN32_FIND_DATAW voce{};
  const HANDLE h = ::FindFirstFileW((cartella + LargoDiretto(nome)).c_str(), &voce);
  if (h == INVALID_HANDLE_VALUE) return LargoDiretto(nome);
  std::wstring trovato;
  do {
    if (UgualiSenzaCaso(DaLargo(voce.cFileName), nome)) trovato = voce.cFileName;
  } while (trovato.empty() && ::FindNextFileW(h, &voce));
  ::FindClose(h);
  return trovato.empty() ? LargoDiretto(nome) : trovato;
}

}  // namespace

std::string DaLargo(const std::wstring& largo) {
  if (largo.empty()) return {};
  // A code page of UTF-8 holds every name, and takes neither the flag nor a default character.
  const bool utf8 = ::GetACP() == CP_UTF8;
  const DWORD flag = utf8 ? 0 : WC_NO_BEST_FIT_CHARS;
  const char* predefinito = utf8 ? nullptr : "?";
  const int n = ::WideCharToMultiByte(CP_ACP, flag, largo.data(), static_cast<int>(largo.size()), nullptr, 0,
                                      predefinito, nullptr);
  std::string s(static_cast<std::size_t>(n), '\0');
  ::WideCharToMultiByte(CP_ACP, flag, largo.data(), static_cast<int>(largo.size()), s.data(), n, predefinito,
                        nullptr);
  return s;
}

std::wstring Largo(const std::string& path) {
  if (path.find('?') == std::string::npos) return LargoDiretto(path);
  std::wstring largo;
  for (std::size_t i = 0; i <= path.size();) {
    std::size_t j = path.find_first_of("\\/", i);
    if (j == std::string::npos) j = path.size();
    const std::string nome = path.substr(i, j - i);
    // The root's own names ("C:", a share's server) are never looked up.
    largo += nome.find('?') != std::string::npos && i > 0 && !largo.empty() ? NomeVero(largo, nome)
                                                                            : LargoDiretto(nome);
    if (j < path.size()) largo += L'\\';
    i = j + 1;
  }
  return largo;
}

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
    // Another program holds the file without sharing it, or holds a lock on the part read: the user can
    // end that, which a denial of access does not allow, so the two are told apart.
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return kErrFileAlreadyOpen;
    case ERROR_ACCESS_DENIED:
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
