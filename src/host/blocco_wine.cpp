// The lock of a program folder in a Wine prefix: a record lock on the lock file's first byte, the kind
// that Wine takes for LockFileEx.
#ifndef _WIN32

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>

#include "host/file_host.h"
#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/macchina.h"

namespace host {
namespace {

bool StessoFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

// The file goes when its holder lets go, so a lock taken on a name that another holder has just removed
// is no lock: the name must still be the file held. The lock is an open file description's lock on the
// first byte: it conflicts with the record locks Wine takes for LockFileEx, and a close elsewhere in the
// process does not drop it.
std::intptr_t PrendiBlocco(const std::string& cartella, bool* occupato, std::string* motivo) {
  *occupato = false;
  motivo->clear();
  Sotto s;
  if (!ApriSotto(cartella, cartella + "\\" + kFileBlocco, &s, nullptr)) return -1;
  for (;;) {
    struct stat st {};
    const bool c_era = ::fstatat(s.fd, s.nome.c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0;
    // A link or a folder is told before; what comes here meanwhile, or a pipe, is no lock either.
    if (c_era && !S_ISREG(st.st_mode)) {
      *motivo = std::string(kFileBlocco) + " is not a file";
      return -1;
    }
    const int fd = ::openat(s.fd, s.nome.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (fd < 0) {
      // A folder that takes no new file is worked in without a lock; a lock file that will not open is not.
      if (c_era) *motivo = std::string(kFileBlocco) + " cannot be opened: " + std::strerror(errno);
      return -1;
    }
    struct flock f {};
    f.l_type = F_WRLCK;
    f.l_whence = SEEK_SET;
    f.l_start = 0;
    f.l_len = 1;
    if (::fcntl(fd, F_OFD_SETLK, &f) != 0) {
      const int e = errno;
      ::close(fd);
      *occupato = e == EAGAIN || e == EACCES;
      if (!*occupato) *motivo = std::string(kFileBlocco) + " cannot be locked: " + std::strerror(e);
      return -1;
    }
    struct stat tenuto {
    }, nome{};
    if (::fstat(fd, &tenuto) == 0 && ::fstatat(s.fd, s.nome.c_str(), &nome, AT_SYMLINK_NOFOLLOW) == 0 &&
        StessoFile(tenuto, nome))
      return fd;
    ::close(fd);
  }
}

void LasciaBlocco(const std::string& cartella, std::intptr_t maniglia) {
  const int fd = static_cast<int>(maniglia);
  Sotto s;
  struct stat tenuto {
  }, nome{};
  if (ApriSotto(cartella, cartella + "\\" + kFileBlocco, &s, nullptr) && ::fstat(fd, &tenuto) == 0 &&
      ::fstatat(s.fd, s.nome.c_str(), &nome, AT_SYMLINK_NOFOLLOW) == 0 && StessoFile(tenuto, nome))
    ::unlinkat(s.fd, s.nome.c_str(), 0);
  ::close(fd);
}

}  // namespace host

#endif  // !_WIN32
