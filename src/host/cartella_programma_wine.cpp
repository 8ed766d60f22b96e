// The program folder's places on a system that runs Wine: the executable's own folder and the XDG data
// folder, as host folders seen through the prefix's drives.
#ifndef _WIN32

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "host/file_host.h"
#include "host/macchina.h"

namespace host {
namespace {

std::string Windows(const std::string& host) {
  std::string w = PercorsoWindows(host.empty() ? "/" : host);
  if (w.size() > 3 && w.back() == '\\') w.pop_back();
  return w;
}

std::string Casa() {
  if (const char* h = std::getenv("HOME"); h && h[0] == '/') return h;
  const passwd* pw = ::getpwuid(::getuid());
  return pw && pw->pw_dir && pw->pw_dir[0] == '/' ? pw->pw_dir : "";
}

}  // namespace

std::string CartellaEseguibile() {
  char buf[PATH_MAX];
  const ssize_t n = ::readlink("/proc/self/exe", buf, sizeof buf - 1);
  if (n <= 0) return CartellaCorrente();
  const std::string exe(buf, static_cast<std::size_t>(n));
  return Windows(exe.substr(0, exe.find_last_of('/')));
}

bool CartellaScrivibile(const std::string& cartella) {
  int err = 0;
  const std::string h = PercorsoHost(cartella, &err);
  if (err || h.empty()) return false;
  char vero[PATH_MAX];
  if (!::realpath(h.c_str(), vero)) return false;
  const std::string v = vero;
  if (v == "/usr" || v.starts_with("/usr/")) return false;
  return ::access(vero, W_OK | X_OK) == 0;
}

std::string CartellaUtente() {
  std::string base;
  if (const char* x = std::getenv("XDG_DATA_HOME"); x && x[0] == '/') {
    base = x;
  } else {
    const std::string casa = Casa();
    if (casa.empty()) return {};
    base = casa + "/.local/share";
  }
  while (base.size() > 1 && base.back() == '/') base.pop_back();
  return Windows(base + "/checkordl");
}

bool PreparaCartella(const std::string& cartella, std::string* motivo) {
  int err = 0;
  const std::string h = PercorsoHost(cartella, &err);
  if (err || h.empty() || h[0] != '/') {
    *motivo = "no host folder holds it";
    return false;
  }
  // Each level from the top; one that is there already is passed over, whatever made it.
  for (std::size_t k = h.find('/', 1);; k = h.find('/', k + 1)) {
    const std::string livello = h.substr(0, k);
    struct stat st {};
    if (::stat(livello.c_str(), &st) != 0 && (::mkdir(livello.c_str(), 0700) != 0 && errno != EEXIST)) {
      *motivo = DaUtf8(std::strerror(errno));
      return false;
    }
    if (k == std::string::npos) break;
  }
  struct stat st {};
  if (::stat(h.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) {
    *motivo = DaUtf8(std::strerror(ENOTDIR));
    return false;
  }
  return true;
}

}  // namespace host

#endif
