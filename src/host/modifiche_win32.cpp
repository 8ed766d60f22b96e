// What changes names on Windows: deleting a file, putting one in another's place, making a folder.
#ifdef _WIN32

#include <string>

#include "host/grezzo.h"
#include "host/interno_win32.h"
#include "host/macchina.h"

namespace host {

bool grezzo::Elimina(const std::string& path, int* err) {
  const std::string p = SenzaBarraFinale(path);
  // Wine deletes what a host link names, not the link: such a link is left for a write to replace.
  const DWORD reali = ::GetFileAttributesW(Largo(p).c_str());
  if (reali != INVALID_FILE_ATTRIBUTES && !(reali & FILE_ATTRIBUTE_REPARSE_POINT) && FileAltrove(p)) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  if (!::DeleteFileW(Largo(p).c_str())) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return false;
  }
  return true;
}

bool CreaUnaCartella(const std::string& path, int* err) {
  const std::string p = SenzaBarraFinale(path);
  if (!PercorsoAccettato(p, err)) return false;
  if (!::CreateDirectoryW(Largo(p).c_str(), nullptr)) {
    Imposta(err, ErroreDa(::GetLastError(), p));
    return false;
  }
  return true;
}

bool SostituisciFile(const std::string& da, const std::string& a, int* err) {
  Imposta(err, kNessunErrore);
  if (Rifiutato(a, FILE_ATTRIBUTE_DIRECTORY)) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  if (!::MoveFileExW(Largo(da).c_str(), Largo(a).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    Imposta(err, ErroreDa(::GetLastError(), a));
    return false;
  }
  return true;
}

}  // namespace host

#endif  // _WIN32
