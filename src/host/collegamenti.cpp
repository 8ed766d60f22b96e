#include "host/collegamenti.h"

#include <algorithm>

#include "host/grezzo.h"
#include "host/machine.h"
#include "host/nomi.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/attributi_wine.h"
#endif

namespace host {
namespace {

std::string ConBarra(const std::string& cartella) {
  return !cartella.empty() && cartella.back() == '\\' ? cartella : cartella + '\\';
}

}  // namespace

CartellaDaLeggere Sottocartella(const CartellaDaLeggere& cartella, const std::string& nome) {
  CartellaDaLeggere c;
  c.percorso = ConBarra(cartella.percorso) + nome;
  if (!cartella.copia.empty()) c.copia = ConBarra(cartella.copia) + nome;
#ifndef _WIN32
  c.interno = (cartella.interno == "/" ? std::string() : cartella.interno) + "/" + VersoUtf8(nome);
#endif
  return c;
}

#ifdef _WIN32

CartellaDaLeggere grezzo::ApriCartella(const std::string& winFolder) {
  CartellaDaLeggere c;
  c.percorso = winFolder;
  return c;
}

bool grezzo::LeggiCartella(const CartellaDaLeggere& cartella, int mask, std::vector<VoceCartella>& voci) {
  voci.clear();
  const std::string base = ConBarra(cartella.percorso);
  WIN32_FIND_DATAA dati{};
  HANDLE h = ::FindFirstFileA((base + "*").c_str(), &dati);
  if (h == INVALID_HANDLE_VALUE) return false;
  do {
    const std::string nome = dati.cFileName;
    const int attr = static_cast<int>(dati.dwFileAttributes);
    if (nome == "." || nome == ".." || !AmmessoDaMaschera(attr, mask)) continue;
    VoceCartella v;
    v.nome = nome;
    v.attributi = attr & 0xFF;
    v.collegamento = (dati.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if (!(attr & kAttrDirectory)) {
      v.dimensione = (static_cast<std::int64_t>(dati.nFileSizeHigh) << 32) | dati.nFileSizeLow;
      // A find gives a link's own size; the one that counts is its target's.
      if (v.collegamento) {
        int err = 0;
        v.dimensione = grezzo::Lunghezza(base + nome, &err);
        if (err || v.dimensione < 0) continue;
      }
    }
    voci.push_back(std::move(v));
  } while (::FindNextFileA(h, &dati));
  ::FindClose(h);
  return true;
}

#else

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

#endif

}  // namespace host
