// The registry of a Wine prefix: HKEY_LOCAL_MACHINE is system.reg, which Wine loads whole. The file can
// be several MB, so it is parsed once and read again only when it changes.
#ifndef _WIN32

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/accesso_registro.h"
#include "host/file_host.h"
#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "host/registro_file.h"

namespace host {
namespace {

struct Registro {
  std::vector<ChiaveRegistro> chiavi;
  // Each key's name in upper case, and every key above it, which exists without a line of its own: -1.
  std::unordered_map<std::string, long> perNome;
};

struct Cache {
  bool valida = false;
  std::string percorso;
  dev_t dispositivo = 0;
  ino_t inode = 0;
  off_t dimensione = 0;
  timespec modifica{};
  std::size_t impronta = 0;
  // The content was read when the file's time was already past: the same time means the same content.
  bool sicura = false;
  Registro registro;
};

bool StessoFile(const Cache& c, const std::string& percorso, const struct stat& st) {
  return c.valida && c.percorso == percorso && c.dispositivo == st.st_dev && c.inode == st.st_ino &&
         c.dimensione == st.st_size && c.modifica.tv_sec == st.st_mtim.tv_sec &&
         c.modifica.tv_nsec == st.st_mtim.tv_nsec;
}

// File times tick coarsely: a file changed twice within one tick keeps its time, and its size may stay too.
// So a file read while its time was recent is compared by content until a read after that time.
bool Recente(const struct stat& st) {
  timespec ora{};
  ::clock_gettime(CLOCK_REALTIME, &ora);
  return st.st_mtim.tv_sec >= ora.tv_sec - 2;
}

// One of the current prefix's registry files, kept in `cache`; null when the prefix has no such file.
const Registro* Carica(Cache& cache, const char* file) {
  const std::string percorso = PrefissoCorrente() + file;
  struct stat st {};
  if (::stat(percorso.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return nullptr;
  const bool stesso = StessoFile(cache, percorso, st);
  if (stesso && cache.sicura) return &cache.registro;
  const bool sicura = !Recente(st);
  const auto letto = LeggiFileHost(percorso);
  if (!letto) return nullptr;
  const std::string& testo = *letto;
  const std::size_t impronta = std::hash<std::string_view>{}(testo);
  if (stesso && impronta == cache.impronta) {
    cache.sicura = sicura;
    return &cache.registro;
  }

  cache = Cache{};
  Registro& r = cache.registro;
  r.chiavi = AnalizzaTestoRegistro(testo);
  for (std::size_t i = 0; i < r.chiavi.size(); ++i) {
    const std::string nome = Maiuscolo(r.chiavi[i].nome);
    // Two names that differ only in characters the code page cannot hold meet here: the first wins.
    auto [it, nuovo] = r.perNome.try_emplace(nome, static_cast<long>(i));
    if (!nuovo && it->second < 0) it->second = static_cast<long>(i);
    for (std::size_t k = nome.find('\\'); k != std::string::npos; k = nome.find('\\', k + 1))
      r.perNome.try_emplace(nome.substr(0, k), -1);
  }
  cache.valida = true;
  cache.percorso = percorso;
  cache.dispositivo = st.st_dev;
  cache.inode = st.st_ino;
  cache.dimensione = st.st_size;
  cache.modifica = st.st_mtim;
  cache.impronta = impronta;
  cache.sicura = sicura;
  return &r;
}

// HKEY_LOCAL_MACHINE.
const Registro* Macchina() {
  static Cache cache;
  return Carica(cache, "/system.reg");
}

// HKEY_CURRENT_USER.
const Registro* DellUtente() {
  static Cache cache;
  return Carica(cache, "/user.reg");
}

// Where a link key points, as a path below HKEY_LOCAL_MACHINE; false for a target in another hive.
bool Bersaglio(const ChiaveRegistro& k, std::string* out) {
  for (const auto& v : k.valori) {
    if (v.tipo != kRegLink || !UgualiSenzaCaso(v.nome, "SymbolicLinkValue")) continue;
    static constexpr std::string_view kRadice = "\\Registry\\Machine";
    const std::string t = TestoDaUtf16(v.dati);
    if (t.size() < kRadice.size() || !UgualiSenzaCaso(std::string_view(t).substr(0, kRadice.size()), kRadice))
      return false;
    if (t.size() > kRadice.size() && t[kRadice.size()] != '\\') return false;
    return NormalizzaChiave(std::string_view(t).substr(std::min(t.size(), kRadice.size() + 1)), out);
  }
  return false;
}

// Opens a key as the registry does, following links on the way; *indice is -1 for a key that exists only
// as the parent of others (or the root), which has no values.
long ApriChiave(const Registro& r, const std::string& chiave, long* indice) {
  std::string percorso;
  if (!NormalizzaChiave(chiave, &percorso)) return kRegPercorsoErrato;
  // The platform gives up on a chain of links somewhere; this is well past any real one.
  for (int salti = 0; salti < 32; ++salti) {
    if (percorso.empty()) {
      // The root itself; a file may give it values under "[]".
      const auto it = r.perNome.find(std::string());
      *indice = it == r.perNome.end() ? -1 : it->second;
      return kRegOk;
    }
    const std::string maiuscolo = Maiuscolo(percorso);
    bool rediretto = false;
    for (std::size_t fine = 0; !rediretto;) {
      fine = maiuscolo.find('\\', fine + 1);
      if (fine == std::string::npos) fine = maiuscolo.size();
      const auto it = r.perNome.find(maiuscolo.substr(0, fine));
      if (it == r.perNome.end()) return kRegNonTrovato;
      if (it->second >= 0 && r.chiavi[static_cast<std::size_t>(it->second)].collegamento) {
        std::string bersaglio;
        if (!Bersaglio(r.chiavi[static_cast<std::size_t>(it->second)], &bersaglio)) return kRegNonTrovato;
        const std::string resto = percorso.substr(fine);
        percorso = bersaglio.empty() && !resto.empty() ? resto.substr(1) : bersaglio + resto;
        rediretto = true;
      } else if (fine == maiuscolo.size()) {
        *indice = it->second;
        return kRegOk;
      }
    }
  }
  return kRegNonTrovato;
}

const std::vector<ValoreRegistro>* Valori(const std::string& chiave, long* esito,
                                          const Registro* r = Macchina()) {
  if (!r) {
    *esito = kRegNonTrovato;
    return nullptr;
  }
  long indice = -1;
  *esito = ApriChiave(*r, chiave, &indice);
  if (*esito != kRegOk) return nullptr;
  static const std::vector<ValoreRegistro> kNessuno;
  return indice < 0 ? &kNessuno : &r->chiavi[static_cast<std::size_t>(indice)].valori;
}

void Copia(const ValoreRegistro& v, std::string* dati, int* tipo) {
  if (dati) *dati = v.dati;
  if (tipo) *tipo = v.tipo;
}

constexpr long kEInvalidArg = static_cast<std::int32_t>(0x80070057u);
constexpr long kNonTrovato = static_cast<std::int32_t>(0x80070002u);

}  // namespace

long LeggiValoreRegistroIndice(const std::string& chiave, int indice, std::string* nome, std::string* dati,
                               int* tipo) {
  long esito = kRegOk;
  const auto* valori = Valori(chiave, &esito);
  if (!valori) return esito;
  if (indice < 0 || static_cast<std::size_t>(indice) >= valori->size()) return kRegNessunAltro;
  const ValoreRegistro& v = (*valori)[static_cast<std::size_t>(indice)];
  if (nome) *nome = v.nome;
  Copia(v, dati, tipo);
  return kRegOk;
}

namespace {

long ValoreDi(const Registro* registro, const std::string& chiave, const std::string& nome, std::string* dati,
              int* tipo) {
  long esito = kRegOk;
  const auto* valori = Valori(chiave, &esito, registro);
  if (!valori) return esito;
  for (const auto& v : *valori) {
    if (UgualiSenzaCaso(v.nome, nome)) {
      Copia(v, dati, tipo);
      return kRegOk;
    }
  }
  return kRegNonTrovato;
}

}  // namespace

long LeggiValoreRegistroNome(const std::string& chiave, const std::string& nome, std::string* dati,
                             int* tipo) {
  return ValoreDi(Macchina(), chiave, nome, dati, tipo);
}

long LeggiValoreVista(Vista vista, const std::string& chiave, const std::string& nome, std::string* dati,
                      int* tipo) {
  switch (vista) {
    case Vista::utente:
      return ValoreDi(DellUtente(), chiave, nome, dati, tipo);
    case Vista::sistema32: {
      // Wine keeps the 32-bit view of SOFTWARE below Software\Wow6432Node of the same file.
      static constexpr std::string_view kSoftware = "Software\\";
      if (Prefisso32Bit() || chiave.size() < kSoftware.size() ||
          !UgualiSenzaCaso(std::string_view(chiave).substr(0, kSoftware.size()), kSoftware))
        return kRegNonTrovato;
      return ValoreDi(Macchina(), "Software\\Wow6432Node\\" + chiave.substr(kSoftware.size()), nome, dati,
                      tipo);
    }
    case Vista::sistema:
      break;
  }
  return LeggiValoreSistema(chiave, nome, dati, tipo);
}

long LeggiValoreSistema(const std::string& chiave, const std::string& nome, std::string* dati, int* tipo) {
  return LeggiValoreRegistroNome(chiave, nome, dati, tipo);
}

bool Prefisso32Bit() {
  const auto testa = LeggiFileHost(PrefissoCorrente() + "/system.reg", 4096);
  return testa && testa->find("\n#arch=win32") != std::string::npos;
}

namespace {

// The login whose folder Wine makes below C:\users.
std::string Utente() {
  if (const passwd* pw = ::getpwuid(::geteuid()); pw && pw->pw_name && *pw->pw_name)
    return DaUtf8(pw->pw_name);
  const char* u = std::getenv("USER");
  return u && *u ? DaUtf8(u) : std::string("root");
}

// A folder of the user's: user.reg's "Shell Folders" value, else where Wine puts it.
std::string CartellaUtenteWine(const char* valore, const char* predefinita) {
  const std::string v = LeggiValoreRegistroTesto(
      PrefissoCorrente() + "/user.reg",
      "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders", valore);
  return v.empty() ? "C:\\users\\" + Utente() + "\\" + predefinita : v;
}

}  // namespace

std::string CartellaSpeciale(int csidl, long* esito) {
  // Wine takes the folder from the registry and has a default of its own when the value is missing, or the
  // registry is; it gives the path only when something is there, as the platform's own rules for a path
  // find it.
  std::string dati;
  switch (csidl) {
    case kCsidlProgramFiles:
    case kCsidlProgramFilesX86: {
      const bool a32 = Prefisso32Bit();
      const char* nome = a32 ? "ProgramFilesDir" : "ProgramFilesDir (x86)";
      dati = a32 ? "C:\\Program Files" : "C:\\Program Files (x86)";
      std::string valore;
      int tipo = kRegNone;
      if (LeggiValoreRegistroNome("Software\\Microsoft\\Windows\\CurrentVersion", nome, &valore, &tipo) ==
              kRegOk &&
          TipoTesto(tipo))
        dati = valore.substr(0, valore.find('\0'));
      break;
    }
    case kCsidlDesktopDirectory:
      dati = CartellaUtenteWine("Desktop", "Desktop");
      break;
    case kCsidlLocalAppData:
      dati = CartellaUtenteWine("Local AppData", "AppData\\Local");
      break;
    default:
      *esito = kEInvalidArg;
      return {};
  }
  int err = 0;
  if (dati.empty() || grezzo::Attributi(dati, &err) < 0) {
    *esito = kNonTrovato;
    return {};
  }
  *esito = 0;
  return dati;
}

}  // namespace host

#endif  // !_WIN32
