// Paths of a Wine prefix: a Windows path resolved name by name without regard to case, as Wine does, and a
// host path turned back into a Windows path through the drive that holds it.
#ifndef _WIN32

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host {
namespace {

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

}  // namespace

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

bool Esiste(const std::string& p, struct stat* st) {
  return ::stat(p.c_str(), st) == 0;
}

std::string Normalizza(const std::string& p) {
  const std::vector<std::string> parti = Componenti(p, '/', 0);
  std::string out;
  for (const auto& c : parti) out += "/" + c;
  return out.empty() ? "/" : out;
}

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
    // A '?' is a letter the code page could not show, as DaUtf8 gives it: only a host name read back in the
    // program's form matches it, never a host name with '?' itself, which Windows could not show.
    const bool ignoto = comp.find('?') != std::string::npos;
    if (esiste) {
      const std::string esatto = r.host + "/" + nome;
      if (ignoto || ::lstat(esatto.c_str(), &st) != 0) {
        bool trovato = false;
        if (DIR* d = ::opendir(r.host.empty() ? "/" : r.host.c_str())) {
          while (dirent* e = ::readdir(d)) {
            if (UgualiSenzaCaso(DaUtf8(e->d_name), comp) && !(ignoto && std::strchr(e->d_name, '?'))) {
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
    // One the folder does not hold is no name at all, as the platform has it.
    if (ignoto && !esiste) {
      Imposta(err, kErrBadFileName);
      return std::nullopt;
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

bool Nul(const std::string& p) {
  std::string cartella, nome;
  SeparaUltimo(p, &cartella, &nome);
  return Maiuscolo(nome.substr(0, 3)) == "NUL";
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

}  // namespace host

#endif  // !_WIN32
