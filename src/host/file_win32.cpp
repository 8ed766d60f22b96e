// Files on Windows opened for raw byte access, and the machine's own files read by their path.
#ifdef _WIN32

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "host/file_host.h"
#include "host/grezzo.h"
#include "host/interno_win32.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host {
namespace {

// ReadFile and WriteFile count in DWORDs.
constexpr std::size_t kPezzo = std::size_t{1} << 30;

}  // namespace

File File::ApriLetturaGrezza(const std::string& winPath, int* err) {
  File f;
  if (!PercorsoAccettato(winPath, err)) return f;
  const HANDLE h = ::CreateFileW(Largo(winPath).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                 nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) {
    const DWORD codice = ::GetLastError();
    const bool cartella = Rifiutato(winPath, FILE_ATTRIBUTE_DIRECTORY);
    Imposta(err, cartella ? kErrPathFileAccess : ErroreDa(codice, winPath));
    return f;
  }
  // A pipe or a device would make a read wait for its other end: only a file on a disk is read, and the NUL
  // device, which the program may be given for an empty file.
  const std::size_t k = winPath.find_last_of("\\/:");
  const std::string nome = k == std::string::npos ? winPath : winPath.substr(k + 1);
  if (::GetFileType(h) != FILE_TYPE_DISK &&
      !(NomeDispositivo(nome) && Maiuscolo(nome.substr(0, 3)) == "NUL")) {
    ::CloseHandle(h);
    Imposta(err, kErrPathFileAccess);
    return f;
  }
  f.handle_ = reinterpret_cast<std::intptr_t>(h);
  return f;
}

std::optional<std::string> LeggiFileHost(const std::string& hostPath, std::size_t massimo) {
  int err = 0;
  File f = File::ApriLetturaGrezza(hostPath, &err);
  if (err || !f.Aperto()) return std::nullopt;
  const std::int64_t n = f.Lunghezza();
  std::string testo(
      n > 0 ? static_cast<std::size_t>(std::min<std::uint64_t>(static_cast<std::uint64_t>(n), massimo)) : 0,
      '\0');
  testo.resize(f.Leggi(testo.data(), testo.size()));
  return testo;
}

File File::ApriScrittura(const std::string& winPath, int* err) {
  File f;
  if (!PercorsoAccettato(winPath, err)) return f;
  if (Rifiutato(winPath, FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                             FILE_ATTRIBUTE_SYSTEM)) {
    Imposta(err, kErrPathFileAccess);
    return f;
  }
  const HANDLE h = ::CreateFileW(Largo(winPath).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                 CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) {
    Imposta(err, ErroreDa(::GetLastError(), winPath));
    return f;
  }
  f.handle_ = reinterpret_cast<std::intptr_t>(h);
  return f;
}

File File::CreaNuovo(const std::string& winPath, int* err) {
  File f;
  if (!PercorsoAccettato(winPath, err)) return f;
  if (Barra(winPath.back())) {
    Imposta(err, kErrBadFileName);
    return f;
  }
  // CREATE_NEW fails on any entry of that name, a link included, so nothing is written through one.
  const HANDLE h = ::CreateFileW(Largo(winPath).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                 FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (h == INVALID_HANDLE_VALUE) {
    const DWORD codice = ::GetLastError();
    Imposta(err, codice == ERROR_FILE_EXISTS ? kErrPathFileAccess : ErroreDa(codice, winPath));
    return f;
  }
  f.handle_ = reinterpret_cast<std::intptr_t>(h);
  return f;
}

File File::ApriScritturaSotto(const std::string& base, const std::string& percorso, int* err) {
  File f;
  Imposta(err, kNessunErrore);
  std::string p;
  DWORD a = 0;
  if (!ControllaSotto(base, percorso, &p, &a, err)) return f;
  if (a != INVALID_FILE_ATTRIBUTES &&
      ((a & (FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY |
             FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) ||
       FileAltrove(p))) {
    Imposta(err, kErrPathFileAccess);
    return f;
  }
  const HANDLE h = ::CreateFileW(Largo(p).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (h == INVALID_HANDLE_VALUE) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return f;
  }
  f.handle_ = reinterpret_cast<std::intptr_t>(h);
  return f;
}

std::int64_t File::Lunghezza() const {
  LARGE_INTEGER n{};
  if (!Aperto() || !::GetFileSizeEx(Maniglia(handle_), &n)) return -1;
  return static_cast<std::int64_t>(n.QuadPart);
}

std::size_t File::Leggi(char* buf, std::size_t n) {
  if (!Aperto()) return 0;
  std::size_t letti = 0;
  while (letti < n) {
    const auto voglio = static_cast<DWORD>(std::min(n - letti, kPezzo));
    DWORD k = 0;
    if (!::ReadFile(Maniglia(handle_), buf + letti, voglio, &k, nullptr)) {
      erroreLettura_ = true;
      break;
    }
    if (k == 0) break;
    letti += k;
  }
  return letti;
}

bool File::Scrivi(const char* buf, std::size_t n) {
  if (!Aperto()) return false;
  std::size_t scritti = 0;
  while (scritti < n) {
    const auto voglio = static_cast<DWORD>(std::min(n - scritti, kPezzo));
    DWORD k = 0;
    if (!::WriteFile(Maniglia(handle_), buf + scritti, voglio, &k, nullptr) || k == 0) return false;
    scritti += k;
  }
  return true;
}

bool File::Scarica() {
  return Aperto() && ::FlushFileBuffers(Maniglia(handle_));
}

bool File::Salta(std::int64_t n) {
  LARGE_INTEGER d{};
  d.QuadPart = n;
  return Aperto() && ::SetFilePointerEx(Maniglia(handle_), d, nullptr, FILE_CURRENT);
}

std::int64_t File::Posizione() const {
  LARGE_INTEGER zero{}, dove{};
  if (!Aperto() || !::SetFilePointerEx(Maniglia(handle_), zero, &dove, FILE_CURRENT)) return -1;
  return static_cast<std::int64_t>(dove.QuadPart);
}

void File::Chiudi() {
  if (Aperto()) ::CloseHandle(Maniglia(std::exchange(handle_, kNoHandle)));
}

}  // namespace host

#endif  // _WIN32
