// Files of a Wine prefix opened for raw byte access, and the machine's own files read by their host path.
#ifndef _WIN32

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <optional>
#include <utility>

#include "host/file_host.h"
#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/macchina.h"
#include "host/utf8.h"

namespace host {
namespace {

// Opens a host file for a program that reads or writes it from start to end. A pipe would make the open,
// or the first read, wait for the other end for ever, and a device or a socket is no file either: what is
// not a regular file is refused (errno EINVAL) without waiting. A folder is left to the caller.
int ApriRegolare(const std::string& host, int modo, mode_t permessi = 0) {
  const int fd = ::open(host.c_str(), modo | O_NONBLOCK | O_CLOEXEC, permessi);
  if (fd < 0) return -1;
  struct stat st {};
  if (::fstat(fd, &st) != 0 || !(S_ISREG(st.st_mode) || S_ISDIR(st.st_mode))) {
    ::close(fd);
    errno = EINVAL;
    return -1;
  }
  ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
  return fd;
}

// A path to make or write a file at: resolved, its folder there; nothing when it is not.
std::optional<Risolto> RisolviPerScrivere(const std::string& winPath, int* err) {
  auto r = Risolvi(winPath, err);
  if (r && !r->genitoreEsiste) {
    Imposta(err, kErrPathNotFound);
    return std::nullopt;
  }
  return r;
}

// A device's name opens no file: NUL opens the null device, the others are refused with their folder's
// error. Null for a path that names no device; else the descriptor, or -1 (no handle).
std::optional<int> ApriDispositivo(const std::string& winPath, int modo, int* err) {
  const auto d = Dispositivo(winPath);
  if (!d) return std::nullopt;
  Imposta(err, *d ? *d : Nul(winPath) ? kNessunErrore : kErrPathFileAccess);
  return !*d && Nul(winPath) ? ::open("/dev/null", modo | O_CLOEXEC) : -1;
}

}  // namespace

std::optional<std::string> LeggiFileHost(const std::string& hostPath, std::size_t massimo) {
  const int fd = ApriRegolare(hostPath, O_RDONLY);
  if (fd < 0) return std::nullopt;
  struct stat st {};
  if (::fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
    ::close(fd);
    return std::nullopt;
  }
  std::string testo(std::min(massimo, static_cast<std::size_t>(st.st_size)), '\0');
  std::size_t letti = 0;
  while (letti < testo.size()) {
    const ssize_t k = ::read(fd, testo.data() + letti, testo.size() - letti);
    if (k < 0 && errno == EINTR) continue;
    if (k <= 0) break;
    letti += static_cast<std::size_t>(k);
  }
  ::close(fd);
  testo.resize(letti);
  return testo;
}

File File::ApriLetturaGrezza(const std::string& winPath, int* err) {
  File f;
  if (!PercorsoAccettato(winPath, err)) return f;
  if (const auto fd = ApriDispositivo(winPath, O_RDONLY, err)) {
    f.handle_ = *fd;
    return f;
  }
  const auto r = Risolvi(winPath, err);
  if (!r) return f;
  const int fd = ApriRegolare(r->host, O_RDONLY);
  if (fd < 0) {
    Imposta(err, errno == ENOENT && !r->genitoreEsiste ? kErrPathNotFound : ErroreDaErrno(errno));
    return f;
  }
  struct stat st {};
  if (::fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
    ::close(fd);
    Imposta(err, kErrPathFileAccess);
    return f;
  }
  // A file named as a folder, with a closing separator, is a bad name to the platform.
  if (Barra(winPath.back())) {
    ::close(fd);
    Imposta(err, kErrBadFileName);
    return f;
  }
  f.handle_ = fd;
  return f;
}

File File::ApriScrittura(const std::string& winPath, int* err) {
  File f;
  if (!PercorsoAccettato(winPath, err)) return f;
  if (const auto fd = ApriDispositivo(winPath, O_WRONLY, err)) {
    f.handle_ = *fd;
    return f;
  }
  const auto r = RisolviPerScrivere(winPath, err);
  if (!r) return f;
  struct stat st {};
  const bool esiste = Esiste(r->host, &st);
  if (Barra(winPath.back()) && !(esiste && S_ISDIR(st.st_mode))) {
    Imposta(err, kErrBadFileName);
    return f;
  }
  if (esiste) {
    // Replacing a file needs it writable, visible and not a folder, as on the platform.
    std::string cartella, nome;
    SeparaUltimo(winPath, &cartella, &nome);
    const int a = AttributiWine(r->host, st, nome);
    if (a & (kAttrDirectory | kAttrReadOnly | kAttrHidden | kAttrSystem)) {
      Imposta(err, kErrPathFileAccess);
      return f;
    }
  }
  if (esiste && !S_ISREG(st.st_mode)) {
    Imposta(err, kErrPathFileAccess);
    return f;
  }
  const int fd = ApriRegolare(r->host, O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (fd < 0) {
    Imposta(err, ErroreDaErrno(errno));
    return f;
  }
  f.handle_ = fd;
  return f;
}

File File::CreaNuovo(const std::string& winPath, int* err) {
  File f;
  if (!PercorsoAccettato(winPath, err)) return f;
  if (Barra(winPath.back()) || Dispositivo(winPath)) {
    Imposta(err, kErrBadFileName);
    return f;
  }
  const auto r = RisolviPerScrivere(winPath, err);
  if (!r) return f;
  const int fd = ::open(r->host.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
  if (fd < 0) {
    Imposta(err, errno == EEXIST ? kErrPathFileAccess : ErroreDaErrno(errno));
    return f;
  }
  f.handle_ = fd;
  return f;
}

File File::ApriScritturaSotto(const std::string& base, const std::string& percorso, int* err) {
  File f;
  Imposta(err, kNessunErrore);
  Sotto s;
  if (!ApriSotto(base, percorso, &s, err)) return f;
  struct stat st {};
  if (::fstatat(s.fd, s.nome.c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0 &&
      (!S_ISREG(st.st_mode) || st.st_dev != s.dispositivo ||
       (AttributiWine(s.host, st, DaUtf8(s.nome)) & (kAttrReadOnly | kAttrHidden | kAttrSystem)))) {
    Imposta(err, kErrPathFileAccess);
    return f;
  }
  const int fd = ::openat(s.fd, s.nome.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666);
  if (fd < 0) {
    Imposta(err, errno == ELOOP ? kErrPathFileAccess : ErroreDaErrno(errno));
    return f;
  }
  f.handle_ = fd;
  return f;
}

std::int64_t File::Lunghezza() const {
  struct stat st {};
  if (!Aperto() || ::fstat(static_cast<int>(handle_), &st) != 0) return -1;
  return static_cast<std::int64_t>(st.st_size);
}

std::size_t File::Leggi(char* buf, std::size_t n) {
  if (!Aperto()) return 0;
  std::size_t letti = 0;
  while (letti < n) {
    const ssize_t k = ::read(static_cast<int>(handle_), buf + letti, n - letti);
    if (k < 0 && errno == EINTR) continue;
    if (k < 0) erroreLettura_ = true;
    if (k <= 0) break;
    letti += static_cast<std::size_t>(k);
  }
  return letti;
}

bool File::Scrivi(const char* buf, std::size_t n) {
  if (!Aperto()) return false;
  std::size_t scritti = 0;
  while (scritti < n) {
    const ssize_t k = ::write(static_cast<int>(handle_), buf + scritti, n - scritti);
    if (k < 0 && errno == EINTR) continue;
    if (k <= 0) return false;
    scritti += static_cast<std::size_t>(k);
  }
  return true;
}

bool File::Scarica() {
  return Aperto() && ::fsync(static_cast<int>(handle_)) == 0;
}

bool File::Salta(std::int64_t n) {
  return Aperto() && ::lseek(static_cast<int>(handle_), static_cast<off_t>(n), SEEK_CUR) >= 0;
}

std::int64_t File::Posizione() const {
  if (!Aperto()) return -1;
  return static_cast<std::int64_t>(::lseek(static_cast<int>(handle_), 0, SEEK_CUR));
}

void File::Chiudi() {
  if (Aperto()) ::close(static_cast<int>(std::exchange(handle_, kNoHandle)));
}

}  // namespace host

#endif  // !_WIN32
