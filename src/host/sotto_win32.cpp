// The program's working files below a folder of its own on Windows, every folder on the way checked for a
// reparse point, and a link that Wine shows as the file it names told by where the file really is.
#ifdef _WIN32

#include <string>

#include "host/grezzo.h"
#include "host/interno_win32.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host {
namespace {

// Where the file opened by a path really is, as "\\?\C:\..."; "" when it cannot be opened.
std::string PercorsoFinale(const std::string& p) {
  const HANDLE h = ::CreateFileW(Largo(p).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                 nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (h == INVALID_HANDLE_VALUE) return {};
  std::wstring f(MAX_PATH, L'\0');
  for (;;) {
    const DWORD n = ::GetFinalPathNameByHandleW(h, f.data(), static_cast<DWORD>(f.size()), 0);
    if (n < f.size()) {
      f.resize(n);
      break;
    }
    f.resize(n);
  }
  ::CloseHandle(h);
  return DaLargo(f);
}

}  // namespace

bool FileAltrove(const std::string& pieno) {
  const std::size_t k = pieno.find_last_of("\\/");
  std::string cartella = PercorsoFinale(k <= 2 ? pieno.substr(0, k) + '\\' : pieno.substr(0, k));
  const std::string file = PercorsoFinale(pieno);
  if (cartella.empty() || file.empty()) return false;
  if (cartella.back() != '\\') cartella += '\\';
  return !UgualiSenzaCaso(file, cartella + pieno.substr(k + 1));
}

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

}  // namespace host

#endif  // _WIN32
