#include "host/vista_virtuale.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <utility>

#include "host/accesso_registro.h"
#include "host/byte_le.h"
#include "host/collegamenti.h"
#include "host/grezzo.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "host/registro_file.h"
#include "host/versione.h"

namespace host {
namespace {

struct Impostazioni {
  // The folders virtualized, in upper case and without a closing "\"; none when the machine virtualizes
  // nothing.
  std::vector<std::string> radici;
  std::string archivio;  // the user's VirtualStore folder
};

std::optional<Impostazioni>& Cache() {
  static std::optional<Impostazioni> c;
  return c;
}

constexpr const char* kCorrente = "Software\\Microsoft\\Windows\\CurrentVersion";

// A DWORD of the system's registry; `predefinito` where it is missing or of another type.
std::uint32_t Numero(const char* chiave, const char* nome, std::uint32_t predefinito) {
  std::string dati;
  int tipo = kRegNone;
  if (LeggiValoreSistema(chiave, nome, &dati, &tipo) != kRegOk || tipo != kRegDword || dati.size() < 4)
    return predefinito;
  return U32LE(dati, 0);
}

// A folder of the system's registry, %SystemDrive% put in as the system does (the drive of `sistema`);
// `predefinito` where the value is missing.
std::string Cartella(const char* chiave, const char* nome, const std::string& predefinito,
                     const std::string& sistema) {
  std::string dati;
  int tipo = kRegNone;
  if (LeggiValoreSistema(chiave, nome, &dati, &tipo) != kRegOk || !TipoTesto(tipo)) return predefinito;
  dati = dati.substr(0, dati.find('\0'));
  static constexpr std::string_view kDrive = "%SystemDrive%";
  if (UgualiSenzaCaso(std::string_view(dati).substr(0, kDrive.size()), kDrive))
    dati.replace(0, kDrive.size(), sistema.substr(0, 2));
  return dati;
}

std::string Radice(std::string cartella) {
  while (cartella.size() > 3 && cartella.back() == '\\') cartella.pop_back();
  return Maiuscolo(cartella);
}

constexpr const char* kPolitiche = "Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\System";

Impostazioni Leggi() {
  Impostazioni i;
  VersioneOs os;
  bool uac = false, virtualizzazione = false;
  StatoUac(&uac, &virtualizzazione);
  if (!LeggiVersioneOs(&os) || os.dwPlatformId != 2 || os.dwMajorVersion < 6) return i;
  if (!uac || !virtualizzazione) return i;
  long esito = 0;
  const std::string locale = CartellaSpeciale(kCsidlLocalAppData, &esito);
  if (esito != 0 || locale.size() < 3) return i;
  i.archivio = locale + (locale.back() == '\\' ? "" : "\\") + "VirtualStore";
  const std::string sistema =
      Cartella("Software\\Microsoft\\Windows NT\\CurrentVersion", "SystemRoot", "C:\\Windows", "C:");
  for (const std::string& c :
       {Cartella(kCorrente, "ProgramFilesDir", "C:\\Program Files", sistema),
        Cartella(kCorrente, "ProgramFilesDir (x86)", "C:\\Program Files (x86)", sistema),
        Cartella("Software\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList", "ProgramData",
                 sistema.substr(0, 2) + "\\ProgramData", sistema),
        sistema})
    if (c.size() > 3 && c[1] == ':' && c[2] == '\\') i.radici.push_back(Radice(c));
  return i;
}

const Impostazioni& Correnti() {
  auto& c = Cache();
  if (!c) {
    // Reading the settings reads the machine, which must not ask for them again meanwhile.
    c.emplace();
    c = Leggi();
  }
  return *c;
}

// The folder left out, in upper case with its closing "\"; "" for none.
std::string& Esclusa() {
  static std::string e;
  return e;
}

bool Escluso(const std::string& winPath) {
  const std::string& e = Esclusa();
  if (e.empty() || winPath.size() < e.size()) return false;
  std::string p = winPath.substr(0, e.size());
  for (char& c : p)
    if (c == '/') c = '\\';
  return Maiuscolo(p) == e;
}

bool Nega(int* err) {
  if (err) *err = kErrFileNotFound;
  return true;
}

bool EUnaCartella(int attributi) {
  return attributi >= 0 && (attributi & kAttrDirectory);
}

// The entries of a folder's copy merged into its own: one of the same name (without regard to case) takes
// the original's place, in the original's order; the copy's others follow in its order.
template <class T, class Nome>
void Unisci(std::vector<T>& originali, std::vector<T>&& copie, Nome nome) {
  if (copie.empty()) return;
  std::unordered_map<std::string, std::size_t> dove;
  for (std::size_t k = 0; k < originali.size(); ++k) dove.emplace(Maiuscolo(nome(originali[k])), k);
  for (T& v : copie) {
    const auto [it, nuovo] = dove.emplace(Maiuscolo(nome(v)), originali.size());
    if (nuovo)
      originali.push_back(std::move(v));
    else
      originali[it->second] = std::move(v);
  }
}

}  // namespace

void StatoUac(bool* uac, bool* virtualizzazione) {
  *uac = Numero(kPolitiche, "EnableLUA", 1) != 0;
  *virtualizzazione = Numero(kPolitiche, "EnableVirtualization", 1) != 0;
}

void DimenticaVistaVirtuale() {
  Cache().reset();
  Esclusa().clear();
}

void EscludiCartella(const std::string& winFolder) {
  std::string e = Maiuscolo(winFolder);
  for (char& c : e)
    if (c == '/') c = '\\';
  if (!e.empty() && e.back() != '\\') e += '\\';
  Esclusa() = e;
}

std::string CopiaVirtuale(const std::string& winPath) {
  const Impostazioni& i = Correnti();
  if (i.radici.empty() || winPath.size() < 3 || winPath[1] != ':') return {};
  std::string p = winPath;
  for (char& c : p)
    if (c == '/') c = '\\';
  const std::string maiuscolo = Maiuscolo(p);
  for (const std::string& r : i.radici)
    if (maiuscolo.starts_with(r) && (maiuscolo.size() == r.size() || maiuscolo[r.size()] == '\\'))
      return i.archivio + p.substr(2);
  return {};
}

std::string PercorsoLettura(const std::string& winPath) {
  const std::string copia = CopiaVirtuale(winPath);
  if (copia.empty()) return winPath;
  int err = 0;
  const int a = grezzo::Attributi(copia, &err);
  if (a < 0 || err) return winPath;
  if (!EUnaCartella(a)) return copia;
  return grezzo::Attributi(winPath, &err) >= 0 && !err ? winPath : copia;
}

// ---- The reads of the machine, through the view ----

int LeggiAttributi(const std::string& path, int* err) {
  if (Escluso(path) && Nega(err)) return -1;
  return grezzo::Attributi(PercorsoLettura(path), err);
}

std::int64_t LunghezzaFile(const std::string& path, int* err) {
  if (Escluso(path) && Nega(err)) return -1;
  return grezzo::Lunghezza(PercorsoLettura(path), err);
}

File File::ApriLettura(const std::string& winPath, int* err) {
  if (Escluso(winPath) && Nega(err)) return File();
  return ApriLetturaGrezza(PercorsoLettura(winPath), err);
}

std::string LeggiBloccoVersione(const std::string& winPath) {
  if (Escluso(winPath)) return {};
  return grezzo::BloccoVersione(PercorsoLettura(winPath));
}

Enumerazione::Enumerazione(const std::string& pattern, int mask) {
  if (Escluso(pattern)) return;
  if (pattern.empty()) {
    errFine_ = kErrBadFileName;
    return;
  }
  int err = kNessunErrore;
  grezzo::Elenco(pattern, mask, &nomi_, &err, &errFine_);
  // The folder of the pattern decides; a pattern that names the virtualized folder itself lists its parent.
  const std::size_t k = pattern.find_last_of("\\/");
  const std::string copia = k == std::string::npos ? std::string() : CopiaVirtuale(pattern.substr(0, k));
  if (!copia.empty()) {
    std::vector<std::string> altri;
    int e = 0, eFine = 0;
    grezzo::Elenco(copia + pattern.substr(k), mask, &altri, &e, &eFine);
    Unisci(nomi_, std::move(altri), [](const std::string& n) -> const std::string& { return n; });
  }
  // A listing that gives no name tells why it stopped at once.
  if (nomi_.empty()) errFine_ = err;
}

std::string Enumerazione::Prossima(int* err) {
  if (prossima_ < nomi_.size()) {
    Imposta(err, kNessunErrore);
    return nomi_[prossima_++];
  }
  Imposta(err, errFine_);
  *this = Enumerazione();
  return {};
}

CartellaDaLeggere ApriCartella(const std::string& winFolder) {
  CartellaDaLeggere c = grezzo::ApriCartella(winFolder);
  c.copia = CopiaVirtuale(winFolder);
  return c;
}

bool LeggiCartella(const CartellaDaLeggere& cartella, int mask, std::vector<VoceCartella>& voci) {
  voci.clear();
  if (Escluso(cartella.percorso + "\\")) return true;
  const bool letta = grezzo::LeggiCartella(cartella, mask, voci);
  if (cartella.copia.empty()) return letta;
  std::vector<VoceCartella> altre;
  if (!grezzo::LeggiCartella(grezzo::ApriCartella(cartella.copia), mask, altre)) return letta;
  Unisci(voci, std::move(altre), [](const VoceCartella& v) -> const std::string& { return v.nome; });
  return true;
}

}  // namespace host
