// What changes names in a Wine prefix: deleting a file, putting one in another's place, making a folder.
#ifndef _WIN32

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/macchina.h"

namespace host {

bool grezzo::Elimina(const std::string& path, int* err) {
  const std::string h = PercorsoHost(path, err);
  if (::unlink(h.c_str()) != 0) {
    Imposta(err, ErroreDaErrno(errno));
    return false;
  }
  return true;
}

bool CreaUnaCartella(const std::string& path, int* err) {
  const std::string p = SenzaBarraFinale(path);
  if (!PercorsoAccettato(p, err)) return false;
  const auto r = Risolvi(p, err);
  if (!r) return false;
  if (::mkdir(r->host.c_str(), 0777) != 0) {
    Imposta(err, errno == ENOENT ? kErrPathNotFound : ErroreDaErrno(errno));
    return false;
  }
  return true;
}

bool SostituisciFile(const std::string& da, const std::string& a, int* err) {
  Imposta(err, kNessunErrore);
  const auto origine = Risolvi(da, err);
  if (!origine) return false;
  const auto destinazione = Risolvi(a, err);
  if (!destinazione) return false;
  struct stat st {};
  if (::lstat(destinazione->host.c_str(), &st) == 0 && S_ISDIR(st.st_mode)) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  if (::rename(origine->host.c_str(), destinazione->host.c_str()) != 0) {
    Imposta(err, ErroreDaErrno(errno));
    return false;
  }
  return true;
}

}  // namespace host

#endif  // !_WIN32
