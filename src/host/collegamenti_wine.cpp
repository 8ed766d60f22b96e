// A whole folder of a Wine prefix read in one pass: each entry stated once, relative to the open folder.
#ifndef _WIN32

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/collegamenti.h"
#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host {

// The attribute rules are those of the machine's own enumeration.
CartellaDaLeggere grezzo::ApriCartella(const std::string& winFolder) {
  CartellaDaLeggere c;
  c.percorso = winFolder;
  int err = 0;
  c.interno = PercorsoHost(ConBarra(winFolder), &err);
  if (err) c.interno.clear();
  return c;
}

bool grezzo::LeggiCartella(const CartellaDaLeggere& cartella, int mask, std::vector<VoceCartella>& voci) {
  voci.clear();
  if (cartella.interno.empty()) return false;
  DIR* d = ::opendir(cartella.interno.c_str());
  if (!d) return false;
  const int fd = ::dirfd(d);
  const std::string base = cartella.interno == "/" ? std::string() : cartella.interno;
  std::vector<std::string> nomi;
  while (const dirent* e = ::readdir(d)) {
    const char* n = e->d_name;
    if (n[0] == '.' && (n[1] == '\0' || (n[1] == '.' && n[2] == '\0'))) continue;
    nomi.emplace_back(n);
  }
  std::sort(nomi.begin(), nomi.end(), PrimaInCartella);
  std::string pieno;
  for (const std::string& nome : nomi) {
    const char* n = nome.c_str();
    struct stat st {};
    if (::fstatat(fd, n, &st, AT_SYMLINK_NOFOLLOW) != 0) continue;
    VoceCartella v;
    v.collegamento = S_ISLNK(st.st_mode);
    if (v.collegamento && ::fstatat(fd, n, &st, 0) != 0) continue;
    // A pipe, a socket or a device cannot be read as a file: it is no entry of a walk.
    if (!S_ISREG(st.st_mode) && !S_ISDIR(st.st_mode)) continue;
    v.nome = DaUtf8(n);
    pieno.assign(base).append("/").append(n);
    const int a = AttributiWine(pieno, st, v.nome);
    if (!AmmessoDaMaschera(a, mask)) continue;
    v.attributi = a;
    v.dimensione = S_ISDIR(st.st_mode) ? 0 : static_cast<std::int64_t>(st.st_size);
    voci.push_back(std::move(v));
  }
  ::closedir(d);
  return true;
}

}  // namespace host

#endif  // !_WIN32
