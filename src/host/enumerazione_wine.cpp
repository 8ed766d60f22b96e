// The enumeration of a Wine prefix's folders: the names that match a pattern and a mask, in Wine's order.
#ifndef _WIN32

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "host/utf8.h"

namespace host {
namespace {

// The next character of UTF-8 text; a byte that begins no character stands for itself.
char32_t Carattere(const std::string& s, std::size_t* i) {
  const char32_t c = CarattereUtf8(s, i);
  return c == kNonUtf8 ? static_cast<unsigned char>(s[*i - 1]) : c;
}

// Upper case as Wine's table has it for the scripts that names in a level editor's folders use; other
// characters stay as they are.
char32_t InMaiuscolo(char32_t c) {
  if ((c >= U'a' && c <= U'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7)) return c - 0x20;
  if (c == 0xFF) return 0x178;
  if (c >= 0x100 && c <= 0x17F) {
    const bool pari = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
    if (c == 0x131 || c == 0x138 || c == 0x149 || c == 0x17F) return c;
    return pari ? (c % 2 == 0 ? c - 1 : c) : (c % 2 == 1 ? c - 1 : c);
  }
  if ((c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2) || (c >= 0x430 && c <= 0x44F)) return c - 0x20;
  if (c >= 0x450 && c <= 0x45F) return c - 0x50;
  return c;
}

}  // namespace

bool PrimaInCartella(const std::string& a, const std::string& b) {
  std::size_t i = 0, j = 0;
  while (i < a.size() && j < b.size()) {
    const char32_t x = InMaiuscolo(Carattere(a, &i)), y = InMaiuscolo(Carattere(b, &j));
    if (x != y) return x < y;
  }
  if (i < a.size() || j < b.size()) return j < b.size();
  return a < b;
}

// The folder is read whole before its first name is given, so nothing ends a listing after some names.
void grezzo::Elenco(const std::string& pattern, int mask, std::vector<std::string>* elenco, int* err,
                    int* /*errFine*/) {
  std::string cartella, modello;
  SeparaUltimo(pattern, &cartella, &modello);
  const bool contenuto = modello.empty();
  // A '?' in the folder's names is a letter the code page could not show, which Risolvi resolves.
  if (cartella.find('*') != std::string::npos) {
    Imposta(err, kErrBadFileName);
    return;
  }
  // The pattern is a path's last name too: closing dots and blanks go ("*." is "*").
  while (!modello.empty() && (modello.back() == '.' || modello.back() == ' ')) modello.pop_back();
  const auto r = Risolvi(cartella.empty() ? std::string(".") : cartella, err);
  if (!r) return;
  if (!contenuto && !HaJolly(modello) && NomeDispositivo(modello)) {
    // A device is found in any folder that exists, under the name it was asked by.
    struct stat st {};
    if (::stat(r->host.c_str(), &st) == 0 && S_ISDIR(st.st_mode))
      elenco->push_back(modello.substr(0, std::min(modello.find_first_of(". "), modello.size())));
    return;
  }
  if (!contenuto && modello.empty()) return;
  const std::string& base = r->host;
  const bool radice = cartella.size() <= 3 && cartella.size() >= 2 && cartella[1] == ':';

  auto aggiungi = [&](const std::string& nomeHost) {
    const std::string nomeWin = DaUtf8(nomeHost);
    if (!contenuto && !CorrispondeModello(modello, nomeWin)) return;
    const std::string pieno = (base == "/" ? std::string() : base) + "/" + nomeHost;
    // A link whose target is gone is no entry at all.
    struct stat st {};
    if (::stat(pieno.c_str(), &st) != 0) return;
    if (AmmessoDaMaschera(AttributiWine(pieno, st, nomeWin), mask)) elenco->push_back(nomeWin);
  };

  if (!contenuto && !HaJolly(modello)) {
    // One name: the entry of that name, found without regard to case.
    const auto uno = Risolvi(cartella + modello, nullptr);
    struct stat st {};
    if (uno && ::lstat(uno->host.c_str(), &st) == 0) {
      const std::string nomeHost = uno->host.substr(uno->host.find_last_of('/') + 1);
      aggiungi(nomeHost);
    }
  } else {
    DIR* d = ::opendir(base.c_str());
    if (!d) {
      if (errno != ENOENT && errno != ENOTDIR) Imposta(err, ErroreDaErrno(errno));
      return;
    }
    std::vector<std::string> nomi;
    while (dirent* e = ::readdir(d)) {
      const std::string n = e->d_name;
      if (n == "." || n == "..") continue;
      // Only the names the pattern takes are put in order: "*.exe" in a folder of 200,000 files is a few.
      if (!contenuto && !CorrispondeModello(modello, DaUtf8(n))) continue;
      nomi.push_back(n);
    }
    ::closedir(d);
    std::sort(nomi.begin(), nomi.end(), PrimaInCartella);
    if (contenuto && (mask & kAttrDirectory) && !radice) {
      elenco->push_back(".");
      elenco->push_back("..");
    }
    for (const auto& n : nomi) aggiungi(n);
  }
}

}  // namespace host

#endif  // !_WIN32
