// Attributes and lengths in a Wine prefix, as Wine gives them: the mode bits, user.DOSATTRIB and leading
// dots.
#ifndef _WIN32

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/macchina.h"

namespace host {

int AttributiWine(const std::string& hostPath, const struct stat& st, const std::string& nomeWin) {
  int a = S_ISDIR(st.st_mode) ? kAttrDirectory : kAttrArchive;
  if (!(st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH))) a |= kAttrReadOnly;
  char buf[64];
  const ssize_t n = ::getxattr(hostPath.c_str(), "user.DOSATTRIB", buf, sizeof buf - 1);
  if (n > 2 && buf[0] == '0' && (buf[1] == 'x' || buf[1] == 'X')) {
    buf[n] = '\0';
    a |= static_cast<int>(std::strtoul(buf + 2, nullptr, 16)) & (kAttrHidden | kAttrSystem);
  }
  // Wine hides a dot file whatever its stored attributes say.
  if (nomeWin.size() > 1 && nomeWin[0] == '.' && nomeWin != ".." && !MostraPuntiFile()) a |= kAttrHidden;
  return a;
}

int grezzo::Attributi(const std::string& path, int* err) {
  const std::string p = SenzaBarraFinale(path);
  if (!PercorsoAccettato(p, err)) return -1;
  if (const auto d = Dispositivo(p)) {
    Imposta(err, *d);
    return *d ? -1 : kAttrArchive;
  }
  const auto r = Risolvi(p, err);
  if (!r) return -1;
  struct stat st {};
  if (!Esiste(r->host, &st)) {
    Imposta(err, r->genitoreEsiste ? kErrFileNotFound : kErrPathNotFound);
    return -1;
  }
  std::string cartella, nome;
  SeparaUltimo(p, &cartella, &nome);
  return AttributiWine(r->host, st, nome);
}

bool grezzo::Collegamento(const std::string& path) {
  int err = 0;
  const std::string p = SenzaBarraFinale(path);
  if (Dispositivo(p)) return false;
  const auto r = Risolvi(p, &err);
  struct stat st {};
  return r && ::lstat(r->host.c_str(), &st) == 0 && S_ISLNK(st.st_mode);
}

// On the entry itself, never through a link of its name: the mode and the extended attribute are asked and
// set without following one, so that a link the caller did not stop fails here rather than change what it
// names.
bool grezzo::ImpostaAttributi(const std::string& path, int attr, int* err) {
  Imposta(err, kNessunErrore);
  const std::string h = PercorsoHost(path, err);
  struct stat st {};
  if (::lstat(h.c_str(), &st) != 0) {
    Imposta(err, kErrFileNotFound);
    return false;
  }
  mode_t m = st.st_mode & 07777;
  if (attr & kAttrReadOnly)
    m &= static_cast<mode_t>(~(S_IWUSR | S_IWGRP | S_IWOTH));
  else
    m |= S_IWUSR;
  if (::fchmodat(AT_FDCWD, h.c_str(), m, AT_SYMLINK_NOFOLLOW) != 0) {
    Imposta(err, ErroreDaErrno(errno));
    return false;
  }
  const int nascosti = attr & (kAttrHidden | kAttrSystem);
  if (nascosti) {
    const std::string v = "0x" + std::to_string(nascosti);
    if (::lsetxattr(h.c_str(), "user.DOSATTRIB", v.data(), v.size(), 0) != 0) {
      Imposta(err, ErroreDaErrno(errno));
      return false;
    }
  } else {
    ::lremovexattr(h.c_str(), "user.DOSATTRIB");
  }
  return true;
}

std::int64_t grezzo::Lunghezza(const std::string& path, int* err) {
  if (!PercorsoAccettato(path, err)) return -1;
  if (const auto d = Dispositivo(path)) {
    Imposta(err, *d ? *d : kErrPathFileAccess);
    return -1;
  }
  const auto r = Risolvi(path, err);
  if (!r) return -1;
  struct stat st {};
  if (!Esiste(r->host, &st)) {
    Imposta(err, r->genitoreEsiste ? kErrFileNotFound : kErrPathNotFound);
    return -1;
  }
  if (S_ISDIR(st.st_mode)) return 0;
  // A pipe, a socket or a device has no length, as a device name has none.
  if (!S_ISREG(st.st_mode)) {
    Imposta(err, kErrPathFileAccess);
    return -1;
  }
  return static_cast<std::int64_t>(st.st_size);
}

}  // namespace host

#endif  // !_WIN32
