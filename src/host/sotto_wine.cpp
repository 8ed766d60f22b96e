// The program's working files below a folder of its own in a Wine prefix, reached name by name from that
// folder and never through a link or into another file system.
#ifndef _WIN32

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <utility>
#include <vector>

#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host {
namespace {

std::string NomeInCartella(int cartella, const std::string& nomeWin) {
  const std::string esatto = VersoUtf8(nomeWin);
  struct stat st {};
  if (::fstatat(cartella, esatto.c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0) return esatto;
  // A descriptor of its own: the listing must not move the position of the one still in use.
  const int copia = ::openat(cartella, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  DIR* d = copia < 0 ? nullptr : ::fdopendir(copia);
  if (!d) {
    if (copia >= 0) ::close(copia);
    return esatto;
  }
  std::string trovato = esatto;
  while (const dirent* e = ::readdir(d)) {
    if (UgualiSenzaCaso(DaUtf8(e->d_name), nomeWin)) {
      trovato = e->d_name;
      break;
    }
  }
  ::closedir(d);
  return trovato;
}

}  // namespace

Sotto::~Sotto() {
  if (fd >= 0) ::close(fd);
}

bool ApriSotto(const std::string& base, const std::string& percorso, Sotto* s, int* err) {
  const auto nomi = NomiSotto(base, percorso);
  if (!nomi || HaJolly(percorso) || NomeDispositivo(nomi->back())) {
    Imposta(err, kErrBadFileName);
    return false;
  }
  // A bare drive ("C:") stands for its root here, not for the current folder on it.
  const bool drive = base.size() == 2 && base[1] == ':';
  const auto r = Risolvi(drive ? base + "\\" : base, err);
  if (!r) return false;
  s->fd = ::open(r->host.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  struct stat st {};
  if (s->fd < 0 || ::fstat(s->fd, &st) != 0) {
    Imposta(err, kErrPathNotFound);
    return false;
  }
  s->dispositivo = st.st_dev;
  s->host = r->host == "/" ? std::string() : r->host;
  for (std::size_t k = 0; k + 1 < nomi->size(); ++k) {
    const std::string nome = NomeInCartella(s->fd, (*nomi)[k]);
    if (::fstatat(s->fd, nome.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0 ||
        !(S_ISDIR(st.st_mode) || S_ISLNK(st.st_mode))) {
      Imposta(err, kErrPathNotFound);
      return false;
    }
    // A link fails to open here, and a mount point shows by its device.
    const int figlio = ::openat(s->fd, nome.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (figlio >= 0) ::close(std::exchange(s->fd, figlio));
    if (figlio < 0 || ::fstat(s->fd, &st) != 0 || st.st_dev != s->dispositivo) {
      Imposta(err, kErrPathFileAccess);
      return false;
    }
    s->host += "/" + nome;
  }
  s->nome = NomeInCartella(s->fd, nomi->back());
  s->host += "/" + s->nome;
  return true;
}

bool EliminaFileSotto(const std::string& base, const std::string& percorso, int* err) {
  Imposta(err, kNessunErrore);
  Sotto s;
  if (!ApriSotto(base, percorso, &s, err)) return false;
  struct stat st {};
  if (::fstatat(s.fd, s.nome.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0) {
    Imposta(err, kErrFileNotFound);
    return false;
  }
  if (!S_ISLNK(st.st_mode) && (S_ISDIR(st.st_mode) || st.st_dev != s.dispositivo)) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  if (::unlinkat(s.fd, s.nome.c_str(), 0) != 0) {
    Imposta(err, ErroreDaErrno(errno));
    return false;
  }
  return true;
}

Voce VoceSotto(const std::string& base, const std::string& percorso, int* err) {
  Imposta(err, kNessunErrore);
  Sotto s;
  int e = 0;
  if (!ApriSotto(base, percorso, &s, &e)) {
    Imposta(err, e);
    return e == kErrPathFileAccess ? Voce::collegamento : Voce::manca;
  }
  struct stat st {};
  if (::fstatat(s.fd, s.nome.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0) return Voce::manca;
  if (S_ISLNK(st.st_mode) || st.st_dev != s.dispositivo) return Voce::collegamento;
  return S_ISDIR(st.st_mode) ? Voce::cartella : Voce::file;
}

}  // namespace host

#endif  // !_WIN32
