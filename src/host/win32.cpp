// The machine as Windows itself gives it: the ANSI Win32 calls, with their error codes turned into the
// program's error numbers. Where the platform answers "access denied" for a file it merely will not open
// that way, the answer is made the same as the Wine back end's, so callers see one behaviour.
#ifdef _WIN32

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "host/file_host.h"
#include "host/grezzo.h"
#include "host/machine.h"
#include "host/nomi.h"
#include "host/vista_virtuale.h"

namespace host {
namespace {

void Imposta(int* err, int valore) {
  if (err) *err = valore;
}

// The platform reports a drive that is not there, or whose root cannot be read (a drive without medium as
// Wine shows it), as a missing path; the program needs it as a device.
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

// Folders, and for writing read-only, hidden and system files, are requests the platform will not carry
// out; Windows calls that "access denied" (and Wine running as root may just do it), while the program keeps
// "permission denied" for real denials.
bool Rifiutato(const std::string& path, DWORD bloccanti) {
  const DWORD a = ::GetFileAttributesA(path.c_str());
  return a != INVALID_FILE_ATTRIBUTES && (a & bloccanti);
}

bool Barra(char c) {
  return c == '\\' || c == '/';
}

// Trailing separators make the platform refuse a file name; a drive root keeps its own.
std::string SenzaBarraFinale(std::string p) {
  while (p.size() > 3 && Barra(p.back())) p.pop_back();
  return p;
}

bool Ammesso(DWORD attr, int mask) {
  return AmmessoDaMaschera(static_cast<int>(attr), mask);
}

// For calls that answer with the length they wrote, or with the size they need when the buffer is short.
template <class Chiamata>
std::string ConBuffer(Chiamata chiama) {
  std::string buf(MAX_PATH, '\0');
  for (;;) {
    const DWORD n = chiama(buf.data(), static_cast<DWORD>(buf.size()));
    if (n == 0) return {};
    if (n < buf.size()) {
      buf.resize(n);
      return buf;
    }
    buf.resize(n);
  }
}

std::string SenzaBarraDiCartella(std::string p) {
  if (p.size() > 3 && p.back() == '\\') p.pop_back();
  return p;
}

HANDLE Maniglia(std::intptr_t h) {
  return reinterpret_cast<HANDLE>(h);
}

// ReadFile and WriteFile count in DWORDs.
constexpr std::size_t kPezzo = std::size_t{1} << 30;

// Where the file opened by a path really is, as "\\?\C:\..."; "" when it cannot be opened.
std::string PercorsoFinale(const std::string& p) {
  const HANDLE h = ::CreateFileA(p.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                 nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (h == INVALID_HANDLE_VALUE) return {};
  std::string f = ConBuffer([&](char* b, DWORD n) { return ::GetFinalPathNameByHandleA(h, b, n, 0); });
  ::CloseHandle(h);
  return f;
}

// A link to a file that does not say so: Wine shows a host link to a file as the file it names, without
// the reparse point bit, and deletes the file named for it. Opened, it is elsewhere than its folder.
bool FileAltrove(const std::string& pieno) {
  const std::size_t k = pieno.find_last_of("\\/");
  std::string cartella = PercorsoFinale(k <= 2 ? pieno.substr(0, k) + '\\' : pieno.substr(0, k));
  const std::string file = PercorsoFinale(pieno);
  if (cartella.empty() || file.empty()) return false;
  if (cartella.back() != '\\') cartella += '\\';
  return !UgualiSenzaCaso(file, cartella + pieno.substr(k + 1));
}

// The full path of a file below `base`, every folder between them checked: none may be a reparse point
// (a symbolic link, a junction or a mount point). `attributi` are the file's own, INVALID_FILE_ATTRIBUTES
// when it is not there.
bool ControllaSotto(const std::string& base, const std::string& percorso, std::string* pieno,
                    DWORD* attributi, int* err) {
  const auto nomi = NomiSotto(base, percorso);
  if (!nomi || HaJolly(percorso) || NomeDispositivo(nomi->back())) {
    Imposta(err, kErrBadFileName);
    return false;
  }
  *pieno = base;
  for (const std::string& nome : *nomi) {
    if (!pieno->empty() && !Barra(pieno->back())) *pieno += '\\';
    *pieno += nome;
    *attributi = ::GetFileAttributesA(pieno->c_str());
    if (&nome == &nomi->back()) break;
    if (*attributi == INVALID_FILE_ATTRIBUTES || !(*attributi & FILE_ATTRIBUTE_DIRECTORY)) {
      Imposta(err, kErrPathNotFound);
      return false;
    }
    if (*attributi & FILE_ATTRIBUTE_REPARSE_POINT) {
      Imposta(err, kErrPathFileAccess);
      return false;
    }
  }
  return true;
}

}  // namespace

void UsaPrefisso(const std::string&) {
  ChiudiEnumerazione();
  DimenticaVistaVirtuale();
}

std::string PrefissoCorrente() {
  return {};
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

void grezzo::Elenco(const std::string& pattern, int mask, std::vector<std::string>* nomi, int* err,
                    int* errFine) {
  Imposta(err, kNessunErrore);
  Imposta(errFine, kNessunErrore);
  if (pattern.empty()) {
    Imposta(err, kErrBadFileName);
    return;
  }
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

int grezzo::Attributi(const std::string& path, int* err) {
  Imposta(err, kNessunErrore);
  const std::string p = SenzaBarraFinale(path);
  if (p.empty() || HaJolly(p)) {
    Imposta(err, kErrBadFileName);
    return -1;
  }
  const DWORD a = ::GetFileAttributesA(p.c_str());
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

bool ImpostaAttributi(const std::string& path, int attr, int* err) {
  if (grezzo::Attributi(path, err) < 0) return false;
  DWORD valore = static_cast<DWORD>(attr & (kAttrReadOnly | kAttrHidden | kAttrSystem | kAttrArchive));
  if (valore == 0) valore = FILE_ATTRIBUTE_NORMAL;
  const std::string p = SenzaBarraFinale(path);
  if (!::SetFileAttributesA(p.c_str(), valore)) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return false;
  }
  return true;
}

std::int64_t grezzo::Lunghezza(const std::string& path, int* err) {
  Imposta(err, kNessunErrore);
  if (path.empty() || HaJolly(path)) {
    Imposta(err, kErrBadFileName);
    return -1;
  }
  WIN32_FILE_ATTRIBUTE_DATA dati{};
  if (!::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &dati)) {
    Imposta(err, ErroreDa(::GetLastError(), path));
    return -1;
  }
  if (dati.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return 0;
  return static_cast<std::int64_t>((static_cast<std::uint64_t>(dati.nFileSizeHigh) << 32) |
                                   dati.nFileSizeLow);
}

bool EliminaFile(const std::string& path, int* err) {
  const int a = grezzo::Attributi(path, err);
  if (a < 0) return false;
  // The platform says "access denied" here; the program expects the refusal of the request.
  if (a & (kAttrDirectory | kAttrReadOnly)) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  const std::string p = SenzaBarraFinale(path);
  // Wine deletes what a host link names, not the link: such a link is left for a write to replace.
  const DWORD reali = ::GetFileAttributesA(p.c_str());
  if (reali != INVALID_FILE_ATTRIBUTES && !(reali & FILE_ATTRIBUTE_REPARSE_POINT) && FileAltrove(p)) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  if (!::DeleteFileA(p.c_str())) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return false;
  }
  return true;
}

bool EliminaFileSotto(const std::string& base, const std::string& percorso, int* err) {
  Imposta(err, kNessunErrore);
  std::string p;
  DWORD a = 0;
  if (!ControllaSotto(base, percorso, &p, &a, err)) return false;
  if (a == INVALID_FILE_ATTRIBUTES) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return false;
  }
  // A link to a folder is a folder to DeleteFileA; a link to a file goes itself, its target stays.
  if (a & FILE_ATTRIBUTE_DIRECTORY) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  if (!(a & FILE_ATTRIBUTE_REPARSE_POINT) && FileAltrove(p)) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  if ((a & FILE_ATTRIBUTE_READONLY) && !(a & FILE_ATTRIBUTE_REPARSE_POINT))
    ::SetFileAttributesA(p.c_str(), FILE_ATTRIBUTE_NORMAL);
  if (!::DeleteFileA(p.c_str())) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return false;
  }
  return true;
}

Voce VoceSotto(const std::string& base, const std::string& percorso, int* err) {
  Imposta(err, kNessunErrore);
  std::string p;
  DWORD a = 0;
  int e = 0;
  if (!ControllaSotto(base, percorso, &p, &a, &e)) {
    Imposta(err, e);
    return e == kErrPathFileAccess ? Voce::collegamento : Voce::manca;
  }
  if (a == INVALID_FILE_ATTRIBUTES) return Voce::manca;
  // Wine shows a host link as what it names: opened, it is elsewhere than its folder.
  if ((a & FILE_ATTRIBUTE_REPARSE_POINT) || FileAltrove(p)) return Voce::collegamento;
  return (a & FILE_ATTRIBUTE_DIRECTORY) ? Voce::cartella : Voce::file;
}

bool CreaUnaCartella(const std::string& path, int* err) {
  Imposta(err, kNessunErrore);
  const std::string p = SenzaBarraFinale(path);
  if (p.empty() || HaJolly(p)) {
    Imposta(err, kErrBadFileName);
    return false;
  }
  if (!::CreateDirectoryA(p.c_str(), nullptr)) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return false;
  }
  return true;
}

// ---- File ----

File File::ApriLetturaGrezza(const std::string& winPath, int* err) {
  File f;
  Imposta(err, kNessunErrore);
  if (winPath.empty() || HaJolly(winPath)) {
    Imposta(err, kErrBadFileName);
    return f;
  }
  const HANDLE h = ::CreateFileA(winPath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
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
  Imposta(err, kNessunErrore);
  if (winPath.empty() || HaJolly(winPath)) {
    Imposta(err, kErrBadFileName);
    return f;
  }
  if (Rifiutato(winPath, FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                             FILE_ATTRIBUTE_SYSTEM)) {
    Imposta(err, kErrPathFileAccess);
    return f;
  }
  const HANDLE h = ::CreateFileA(winPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) {
    Imposta(err, ErroreDa(::GetLastError(), winPath));
    return f;
  }
  f.handle_ = reinterpret_cast<std::intptr_t>(h);
  return f;
}

File File::CreaNuovo(const std::string& winPath, int* err) {
  File f;
  Imposta(err, kNessunErrore);
  if (winPath.empty() || HaJolly(winPath) || Barra(winPath.back())) {
    Imposta(err, kErrBadFileName);
    return f;
  }
  // CREATE_NEW fails on any entry of that name, a link included, so nothing is written through one.
  const HANDLE h = ::CreateFileA(winPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                 FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (h == INVALID_HANDLE_VALUE) {
    const DWORD codice = ::GetLastError();
    Imposta(err, codice == ERROR_FILE_EXISTS ? kErrPathFileAccess : ErroreDa(codice, winPath));
    return f;
  }
  f.handle_ = reinterpret_cast<std::intptr_t>(h);
  return f;
}

bool SostituisciFile(const std::string& da, const std::string& a, int* err) {
  Imposta(err, kNessunErrore);
  if (Rifiutato(a, FILE_ATTRIBUTE_DIRECTORY)) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  if (!::MoveFileExA(da.c_str(), a.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    Imposta(err, ErroreDa(::GetLastError(), a));
    return false;
  }
  return true;
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
  const HANDLE h = ::CreateFileA(p.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (h == INVALID_HANDLE_VALUE) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return f;
  }
  f.handle_ = reinterpret_cast<std::intptr_t>(h);
  return f;
}

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
    if (!*occupato && c_era) *motivo = std::string(kFileBlocco) + " cannot be opened: error " + std::to_string(codice);
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
