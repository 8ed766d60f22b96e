// The machine served from a Wine prefix: drives are the links in dosdevices/, names match without regard
// to case, attributes come from the mode bits, user.DOSATTRIB and leading dots, as Wine gives them.
#ifndef _WIN32

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include "host/attributi_wine.h"
#include "host/file_host.h"
#include "host/grezzo.h"
#include "host/machine.h"
#include "host/nomi.h"
#include "host/registro_file.h"
#include "host/utf8.h"
#include "host/vista_virtuale.h"

namespace host {
namespace {

struct Stato {
  bool pronto = false;
  std::string prefisso;
  std::optional<bool> mostraPuntiFile;
  // What each drive letter's link says, read once per prefix.
  bool driveLetti = false;
  std::array<std::optional<std::string>, 26> drive;
};

Stato& S() {
  static Stato s;
  return s;
}

void Prepara() {
  Stato& s = S();
  if (s.pronto) return;
  s.pronto = true;
  if (const char* p = std::getenv("WINEPREFIX"); p && *p) {
    s.prefisso = p;
  } else if (const char* h = std::getenv("HOME"); h && *h) {
    s.prefisso = std::string(h) + "/.wine";
  } else {
    s.prefisso = "/.wine";
  }
}

int ErroreDaErrno(int e) {
  switch (e) {
    case ENOENT:
      return kErrFileNotFound;
    case ENOTDIR:
      return kErrPathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
      return kErrPermissionDenied;
    case ENOSPC:
    case EDQUOT:
      return kErrDiskFull;
    case ENAMETOOLONG:
      return kErrBadFileName;
    default:
      return kErrPathFileAccess;
  }
}

void Imposta(int* err, int valore) {
  if (err) *err = valore;
}

bool Esiste(const std::string& p, struct stat* st) {
  return ::stat(p.c_str(), st) == 0;
}

// Lexical clean-up of an absolute host path: no ".", "..", doubled or trailing slashes.
// The components of a path from `inizio` on, with "." dropped and ".." taking the one before it away
// (never above the start).
std::vector<std::string> Componenti(const std::string& p, char separatore, std::size_t inizio) {
  std::vector<std::string> parti;
  for (std::size_t i = inizio; i <= p.size();) {
    std::size_t j = p.find(separatore, i);
    if (j == std::string::npos) j = p.size();
    std::string c = p.substr(i, j - i);
    if (c == "..") {
      if (!parti.empty()) parti.pop_back();
    } else if (!c.empty() && c != ".") {
      parti.push_back(std::move(c));
    }
    i = j + 1;
  }
  return parti;
}

std::string Normalizza(const std::string& p) {
  const std::vector<std::string> parti = Componenti(p, '/', 0);
  std::string out;
  for (const auto& c : parti) out += "/" + c;
  return out.empty() ? "/" : out;
}

std::string Assoluto(const std::string& p) {
  if (!p.empty() && p[0] == '/') return Normalizza(p);
  char buf[PATH_MAX];
  std::string cwd = ::getcwd(buf, sizeof buf) ? buf : "/";
  return Normalizza(cwd + "/" + p);
}

std::string Canonico(const std::string& p) {
  char buf[PATH_MAX];
  if (::realpath(p.c_str(), buf)) return buf;
  return Normalizza(p);
}

// Where a drive letter's link points, or nullopt when the prefix names no such drive.
const std::optional<std::string>& BersaglioDrive(char lettera) {
  Prepara();
  Stato& s = S();
  if (!s.driveLetti) {
    s.driveLetti = true;
    const std::string dosdevices = s.prefisso + "/dosdevices";
    for (int i = 0; i < 26; ++i) {
      const std::string link = dosdevices + "/" + static_cast<char>('a' + i) + ":";
      char buf[PATH_MAX];
      const ssize_t n = ::readlink(link.c_str(), buf, sizeof buf - 1);
      if (n <= 0) continue;
      std::string t(buf, static_cast<std::size_t>(n));
      if (t[0] != '/') t = dosdevices + "/" + t;
      s.drive[i] = Normalizza(t);
    }
    if (!s.drive[25]) s.drive[25] = "/";
  }
  return s.drive[lettera - 'A'];
}

// The components of an absolute Windows path below its root as the platform reads them: "." and ".." go,
// a folder's name loses one closing dot and the last name every closing dot and blank ("a.\b. ." is
// "a\b").
std::vector<std::string> ComponentiWindows(const std::string& p) {
  std::vector<std::string> parti;
  for (std::size_t i = 3; i <= p.size();) {
    std::size_t j = p.find('\\', i);
    if (j == std::string::npos) j = p.size();
    std::string c = p.substr(i, j - i);
    i = j + 1;
    if (c == "..") {
      if (!parti.empty()) parti.pop_back();
      continue;
    }
    if (c == ".") continue;
    if (j < p.size()) {
      if (!c.empty() && c.back() == '.') c.pop_back();
    } else {
      while (!c.empty() && (c.back() == '.' || c.back() == ' ')) c.pop_back();
    }
    if (!c.empty()) parti.push_back(std::move(c));
  }
  return parti;
}

struct Risolto {
  std::string host;
  // The host folder that holds the last component exists.
  bool genitoreEsiste = false;
};

// Resolves an absolute Windows path ("X:\a\b") component by component.
std::optional<Risolto> Risolvi(const std::string& winPath, int* err) {
  std::string p = winPath;
  for (char& c : p)
    if (c == '/') c = '\\';
  // A NUL would cut the host name short and reach another file; no network shares here either.
  if (p.find('\0') != std::string::npos || (p.size() >= 2 && p[0] == '\\' && p[1] == '\\')) {
    Imposta(err, kErrBadFileName);
    return std::nullopt;
  }
  std::string assoluto;
  const bool conDrive = p.size() >= 2 && p[1] == ':' && std::isalpha(static_cast<unsigned char>(p[0]));
  if (conDrive && p.size() > 2 && p[2] == '\\') {
    assoluto = p;
  } else {
    // Relative forms need the current folder; "X:name" is relative to X's root unless X is current.
    std::string corrente = CartellaCorrente();
    if (corrente.empty()) corrente = "Z:\\";
    if (conDrive) {
      const std::string resto = p.substr(2);
      assoluto =
          Maiuscola(corrente[0]) == Maiuscola(p[0]) ? corrente + "\\" + resto : p.substr(0, 2) + "\\" + resto;
    } else if (!p.empty() && p[0] == '\\') {
      assoluto = corrente.substr(0, 2) + p;
    } else {
      assoluto = corrente + "\\" + p;
    }
  }
  const char lettera = Maiuscola(assoluto[0]);
  if (lettera < 'A' || lettera > 'Z') {
    Imposta(err, kErrBadFileName);
    return std::nullopt;
  }
  const auto& bersaglio = BersaglioDrive(lettera);
  struct stat st {};
  if (!bersaglio || !Esiste(*bersaglio, &st) || !S_ISDIR(st.st_mode)) {
    Imposta(err, kErrDeviceUnavailable);
    return std::nullopt;
  }

  const std::vector<std::string> parti = ComponentiWindows(assoluto);

  Risolto r;
  r.host = *bersaglio == "/" ? std::string() : *bersaglio;
  bool esiste = true;
  for (std::size_t k = 0; k < parti.size(); ++k) {
    const std::string& comp = parti[k];
    if (k + 1 == parti.size()) r.genitoreEsiste = esiste;
    std::string nome = VersoUtf8(comp);
    if (esiste) {
      const std::string esatto = r.host + "/" + nome;
      if (::lstat(esatto.c_str(), &st) != 0) {
        bool trovato = false;
        if (DIR* d = ::opendir(r.host.empty() ? "/" : r.host.c_str())) {
          while (dirent* e = ::readdir(d)) {
            if (UgualiSenzaCaso(DaUtf8(e->d_name), comp)) {
              nome = e->d_name;
              trovato = true;
              break;
            }
          }
          ::closedir(d);
        }
        esiste = trovato;
      }
    }
    r.host += "/" + nome;
    // A file where a folder is named: what follows is a path that does not exist.
    if (esiste && k + 1 < parti.size() && (::stat(r.host.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)))
      esiste = false;
  }
  if (parti.empty()) {
    r.genitoreEsiste = true;
    if (r.host.empty()) r.host = "/";
  }
  return r;
}

void SeparaUltimo(const std::string& p, std::string* cartella, std::string* nome) {
  const std::size_t k = p.find_last_of("\\/");
  if (k != std::string::npos) {
    *cartella = p.substr(0, k + 1);
    *nome = p.substr(k + 1);
  } else if (p.size() >= 2 && p[1] == ':') {
    *cartella = p.substr(0, 2);
    *nome = p.substr(2);
  } else {
    cartella->clear();
    *nome = p;
  }
}

bool Barra(char c) {
  return c == '\\' || c == '/';
}

// A reserved device name as the last name of a path: the platform takes the device, in any folder that
// exists. Null when the path names no device; else the error of the device's folder (0 when it exists).
std::optional<int> Dispositivo(const std::string& p) {
  std::string cartella, nome;
  SeparaUltimo(p, &cartella, &nome);
  if (!NomeDispositivo(nome)) return std::nullopt;
  int err = kNessunErrore;
  const auto r = Risolvi(cartella.empty() ? std::string(".") : cartella, &err);
  struct stat st {};
  if (r && (::stat(r->host.c_str(), &st) != 0 || !S_ISDIR(st.st_mode))) err = kErrPathNotFound;
  return err;
}

// Of the devices only NUL can be opened here: the others wait for hardware or a console.
bool Nul(const std::string& p) {
  std::string cartella, nome;
  SeparaUltimo(p, &cartella, &nome);
  return Maiuscolo(nome.substr(0, 3)) == "NUL";
}

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

// The folder that holds the last name of a path below `base`, opened name by name from `base` without
// following a link or crossing into another file system (a mount point), and that last name as the host
// spells it. Names match without regard to case, as everywhere else in the resolution.
struct Sotto {
  Sotto() = default;
  Sotto(const Sotto&) = delete;
  Sotto& operator=(const Sotto&) = delete;
  ~Sotto() {
    if (fd >= 0) ::close(fd);
  }
  int fd = -1;
  dev_t dispositivo = 0;
  std::string host;
  std::string nome;
};

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

bool MostraPuntiFile() {
  Stato& s = S();
  if (!s.mostraPuntiFile) {
    Prepara();
    const std::string v =
        LeggiValoreRegistroTesto(s.prefisso + "/user.reg", "Software\\Wine", "ShowDotFiles");
    s.mostraPuntiFile = !v.empty() && std::string("yYtT1").find(v[0]) != std::string::npos;
  }
  return *s.mostraPuntiFile;
}

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

void UsaPrefisso(const std::string& hostFolder) {
  Stato& s = S();
  s = Stato{};
  s.pronto = true;
  s.prefisso = hostFolder;
  ChiudiEnumerazione();
  DimenticaVistaVirtuale();
}

std::string PrefissoCorrente() {
  Prepara();
  return S().prefisso;
}

std::optional<std::string> DestinazioneDrive(char lettera) {
  lettera = Maiuscola(lettera);
  if (lettera < 'A' || lettera > 'Z') return std::nullopt;
  return BersaglioDrive(lettera);
}

std::string PercorsoHost(const std::string& winPath, int* err) {
  Imposta(err, kNessunErrore);
  if (winPath.empty()) {
    Imposta(err, kErrBadFileName);
    return {};
  }
  const auto r = Risolvi(winPath, err);
  return r ? r->host : std::string();
}

std::string PercorsoWindows(const std::string& hostPath) {
  const std::string assoluto = Canonico(Assoluto(hostPath));
  std::size_t migliore = 0;
  char lettera = 0;
  for (char l = 'A'; l <= 'Z'; ++l) {
    const auto& b = BersaglioDrive(l);
    if (!b) continue;
    const std::string t = Canonico(*b);
    const bool contiene =
        t == "/" || assoluto == t ||
        (assoluto.size() > t.size() && assoluto.compare(0, t.size(), t) == 0 && assoluto[t.size()] == '/');
    const std::size_t lunghezza = t == "/" ? 1 : t.size() + 1;
    if (contiene && lunghezza > migliore) {
      migliore = lunghezza;
      lettera = l;
    }
  }
  if (!lettera) return {};
  std::string resto = assoluto.size() > migliore ? assoluto.substr(migliore) : std::string();
  for (char& c : resto)
    if (c == '/') c = '\\';
  return std::string(1, lettera) + ":\\" + DaUtf8(resto);
}

std::string CartellaCorrente() {
  char buf[PATH_MAX];
  if (!::getcwd(buf, sizeof buf)) return {};
  std::string w = PercorsoWindows(buf);
  if (w.size() > 3 && w.back() == '\\') w.pop_back();
  return w;
}

void grezzo::Elenco(const std::string& pattern, int mask, std::vector<std::string>* elenco, int* err,
                    int* errFine) {
  Imposta(err, kNessunErrore);
  Imposta(errFine, kNessunErrore);
  if (pattern.empty()) {
    Imposta(err, kErrBadFileName);
    return;
  }
  std::string cartella, modello;
  SeparaUltimo(pattern, &cartella, &modello);
  const bool contenuto = modello.empty();
  if (HaJolly(cartella)) {
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

int grezzo::Attributi(const std::string& path, int* err) {
  Imposta(err, kNessunErrore);
  std::string p = path;
  while (p.size() > 3 && (p.back() == '\\' || p.back() == '/')) p.pop_back();
  if (p.empty() || HaJolly(p)) {
    Imposta(err, kErrBadFileName);
    return -1;
  }
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

bool ImpostaAttributi(const std::string& path, int attr, int* err) {
  Imposta(err, kNessunErrore);
  if (grezzo::Attributi(path, err) < 0) return false;
  const std::string h = PercorsoHost(path, err);
  struct stat st {};
  if (!Esiste(h, &st)) {
    Imposta(err, kErrFileNotFound);
    return false;
  }
  mode_t m = st.st_mode & 07777;
  if (attr & kAttrReadOnly)
    m &= static_cast<mode_t>(~(S_IWUSR | S_IWGRP | S_IWOTH));
  else
    m |= S_IWUSR;
  if (::chmod(h.c_str(), m) != 0) {
    Imposta(err, ErroreDaErrno(errno));
    return false;
  }
  const int nascosti = attr & (kAttrHidden | kAttrSystem);
  if (nascosti) {
    const std::string v = "0x" + std::to_string(nascosti);
    if (::setxattr(h.c_str(), "user.DOSATTRIB", v.data(), v.size(), 0) != 0) {
      Imposta(err, ErroreDaErrno(errno));
      return false;
    }
  } else {
    ::removexattr(h.c_str(), "user.DOSATTRIB");
  }
  return true;
}

std::int64_t grezzo::Lunghezza(const std::string& path, int* err) {
  Imposta(err, kNessunErrore);
  if (path.empty() || HaJolly(path)) {
    Imposta(err, kErrBadFileName);
    return -1;
  }
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

bool EliminaFile(const std::string& path, int* err) {
  const int a = grezzo::Attributi(path, err);
  if (a < 0) return false;
  // The platform refuses to delete a folder this way, or a read-only file.
  if (a & (kAttrDirectory | kAttrReadOnly)) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  const std::string h = PercorsoHost(path, err);
  if (::unlink(h.c_str()) != 0) {
    Imposta(err, ErroreDaErrno(errno));
    return false;
  }
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

bool CreaUnaCartella(const std::string& path, int* err) {
  Imposta(err, kNessunErrore);
  std::string p = path;
  while (p.size() > 3 && (p.back() == '\\' || p.back() == '/')) p.pop_back();
  if (p.empty() || HaJolly(p)) {
    Imposta(err, kErrBadFileName);
    return false;
  }
  const auto r = Risolvi(p, err);
  if (!r) return false;
  if (::mkdir(r->host.c_str(), 0777) != 0) {
    Imposta(err, errno == ENOENT ? kErrPathNotFound : ErroreDaErrno(errno));
    return false;
  }
  return true;
}

// ---- File ----

File File::ApriLetturaGrezza(const std::string& winPath, int* err) {
  File f;
  Imposta(err, kNessunErrore);
  if (winPath.empty() || HaJolly(winPath)) {
    Imposta(err, kErrBadFileName);
    return f;
  }
  if (const auto d = Dispositivo(winPath)) {
    Imposta(err, *d ? *d : Nul(winPath) ? kNessunErrore : kErrPathFileAccess);
    if (!*d && Nul(winPath)) f.handle_ = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
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

namespace {

// A path to make or write a file at: resolved, its folder there; nothing when it is not.
std::optional<Risolto> RisolviPerScrivere(const std::string& winPath, int* err) {
  auto r = Risolvi(winPath, err);
  if (r && !r->genitoreEsiste) {
    Imposta(err, kErrPathNotFound);
    return std::nullopt;
  }
  return r;
}

}  // namespace

File File::ApriScrittura(const std::string& winPath, int* err) {
  File f;
  Imposta(err, kNessunErrore);
  if (winPath.empty() || HaJolly(winPath)) {
    Imposta(err, kErrBadFileName);
    return f;
  }
  if (const auto d = Dispositivo(winPath)) {
    Imposta(err, *d ? *d : Nul(winPath) ? kNessunErrore : kErrPathFileAccess);
    if (!*d && Nul(winPath)) f.handle_ = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
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
  Imposta(err, kNessunErrore);
  if (winPath.empty() || HaJolly(winPath) || Barra(winPath.back()) || Dispositivo(winPath)) {
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
