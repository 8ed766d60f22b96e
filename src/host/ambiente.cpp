// What both back ends share of the environment: the registry's facts (read the same way on Windows and in a
// prefix), the listing and ordering of the executables, the loader's search for each import, and the walk
// of a VirtualStore copy. The back ends give the raw facts (grezzo.h).
//
// Executables and DLLs are read from the raw file system, never through the VirtualStore: the file system
// filter that virtualizes a legacy program's files leaves executable images (.exe, .dll and the like) out,
// so the loader always finds the original.
#include "host/ambiente.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string_view>
#include <unordered_set>

#include "host/accesso_registro.h"
#include "host/byte_le.h"
#include "host/grezzo.h"
#include "host/lettore_file.h"
#include "host/nomi.h"
#include "host/pe_importazioni.h"
#include "host/registro_file.h"
#include "host/vista_virtuale.h"

namespace host {
namespace {

constexpr const char* kVersioneNt = "Software\\Microsoft\\Windows NT\\CurrentVersion";
constexpr const char* kAccessoControllato =
    "SOFTWARE\\Microsoft\\Windows Defender\\Windows Defender Exploit Guard\\Controlled Folder Access";
constexpr const char* kLivelli = "Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\Layers";

std::string Testo(Vista vista, const std::string& chiave, const std::string& nome) {
  std::string dati;
  int tipo = kRegNone;
  if (LeggiValoreVista(vista, chiave, nome, &dati, &tipo) != kRegOk || !TipoTesto(tipo)) return {};
  return dati.substr(0, dati.find('\0'));
}

std::optional<std::uint32_t> Dword(const std::string& chiave, const std::string& nome) {
  std::string dati;
  int tipo = kRegNone;
  if (LeggiValoreSistema(chiave, nome, &dati, &tipo) != kRegOk || tipo != kRegDword || dati.size() < 4)
    return std::nullopt;
  return U32LE(dati, 0);
}

bool InizioSenzaCaso(std::string_view s, std::string_view inizio) {
  return s.size() >= inizio.size() && UgualiSenzaCaso(s.substr(0, inizio.size()), inizio);
}

bool FineSenzaCaso(std::string_view s, std::string_view fine) {
  return s.size() >= fine.size() && UgualiSenzaCaso(s.substr(s.size() - fine.size()), fine);
}

// The names (in upper case) of a folder's files with one extension, listed once per reading of the system:
// a program imports a dozen DLLs, a check looks at up to 64 programs, and a name that is not there costs the
// Wine back end a walk of the whole folder (an editor's folder may hold 200,000 files).
std::map<std::string, std::unordered_set<std::string>>& Elenchi() {
  static std::map<std::string, std::unordered_set<std::string>> e;
  return e;
}

bool NellaCartella(const std::string& cartella, const std::string& dll, const SistemaWindows& sistema) {
  const std::size_t punto = dll.find_last_of('.');
  const std::string modello = ConBarra(grezzo::PercorsoDelCaricatore(cartella, sistema)) + "*" +
                              (punto == std::string::npos ? "" : dll.substr(punto));
  auto [it, nuovo] = Elenchi().try_emplace(Maiuscolo(modello));
  if (nuovo) {
    std::vector<std::string> nomi;
    int err = 0, errFine = 0;
    grezzo::Elenco(modello, kAttrHidden | kAttrSystem, &nomi, &err, &errFine);
    for (const std::string& n : nomi) it->second.insert(Maiuscolo(n));
  }
  return it->second.count(Maiuscolo(dll)) > 0;
}

// The Windows folder, as the registry names it where the system keeps it.
std::string CartellaWindows() {
  std::string w = Testo(Vista::sistema, kVersioneNt, "SystemRoot");
  if (w.size() < 3 || w[1] != ':') w = "C:\\Windows";
  return SenzaBarraFinale(w);
}

// Where the loader finds `dll` for a program in `cartella` of the given bitness: the program's folder, the
// system folder for that bitness, the Windows folder. (The current folder and PATH come after these, and
// depend on how the program is started, so they are not looked at.)
DllImportata Risolvi(const std::string& dll, const std::string& cartella, bool a32,
                     const SistemaWindows& sistema, const std::string& windows) {
  DllImportata d;
  d.nome = dll;
  if (InizioSenzaCaso(dll, "api-ms-win-") || InizioSenzaCaso(dll, "ext-ms-")) {
    d.origine = Origine::apiSet;
    return d;
  }
  // A name with a folder or a wildcard in it is no name the search applies to; it is looked for nowhere.
  if (dll.find_first_of("\\/:*?") != std::string::npos) return d;
  const std::string sistemaBit = windows + (sistema.windows64 && a32 ? "\\SysWOW64" : "\\System32");
  const struct {
    Origine origine;
    const std::string& cartella;
  } kLuoghi[] = {{Origine::cartellaEseguibile, cartella},
                 {Origine::sistema, sistemaBit},
                 {Origine::cartellaWindows, windows}};
  for (const auto& l : kLuoghi) {
    if (NellaCartella(l.cartella, dll, sistema)) {
      const std::string percorso = ConBarra(l.cartella) + dll;
      d.origine = l.origine;
      d.percorso = percorso;
      if (l.origine == Origine::cartellaEseguibile && sistema.zoneLeggibili) d.zona = grezzo::Zona(percorso);
      return d;
    }
  }
  return d;
}

std::vector<LivelloCompatibilita> Livelli(const std::string& winPath) {
  static const struct {
    Vista vista;
    const char* radice;
  } kRadici[] = {{Vista::utente, "HKCU"}, {Vista::sistema, "HKLM"}, {Vista::sistema32, "HKLM (32-bit)"}};
  std::vector<LivelloCompatibilita> livelli;
  for (const auto& r : kRadici) {
    std::string dati;
    int tipo = kRegNone;
    if (LeggiValoreVista(r.vista, kLivelli, winPath, &dati, &tipo) != kRegOk || !TipoTesto(tipo)) continue;
    dati = dati.substr(0, dati.find('\0'));
    // Where both views are one key (a 32-bit Windows, a key the system shares), the value is there once.
    if (r.vista == Vista::sistema32 && !livelli.empty() && livelli.back().radice == "HKLM" &&
        livelli.back().dati == dati)
      continue;
    livelli.push_back({r.radice, dati});
  }
  return livelli;
}

void Cammina(const CartellaDaLeggere& copia, const std::string& visto, std::vector<std::string>* file,
             std::size_t* totale) {
  std::vector<VoceCartella> voci;
  if (!grezzo::LeggiCartella(copia, kAttrHidden | kAttrSystem | kAttrDirectory, voci)) return;
  for (const VoceCartella& v : voci) {
    // A link leads out of the copy: what stands behind it is not the user's VirtualStore.
    if (v.collegamento) continue;
    const std::string percorso = ConBarra(visto) + v.nome;
    if (v.attributi & kAttrDirectory) {
      Cammina(Sottocartella(copia, v.nome), percorso, file, totale);
    } else {
      ++*totale;
      file->push_back(percorso);
    }
  }
}

std::string_view Spogliato(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

}  // namespace

int ZonaDelTesto(std::string_view testo) {
  static constexpr std::string_view kBom = "\xEF\xBB\xBF";
  if (testo.starts_with(kBom)) testo.remove_prefix(kBom.size());
  bool sezione = false;
  while (!testo.empty()) {
    const std::size_t fine = std::min(testo.find('\n'), testo.size());
    const std::string_view riga = Spogliato(testo.substr(0, fine));
    testo.remove_prefix(std::min(fine + 1, testo.size()));
    if (riga.starts_with('[')) {
      sezione = UgualiSenzaCaso(riga, "[ZoneTransfer]");
      continue;
    }
    const std::size_t uguale = riga.find('=');
    if (!sezione || uguale == std::string_view::npos ||
        !UgualiSenzaCaso(Spogliato(riga.substr(0, uguale)), "ZoneId"))
      continue;
    const std::string_view valore = Spogliato(riga.substr(uguale + 1));
    if (valore.empty() || valore.size() > 3 ||
        valore.find_first_not_of("0123456789") != std::string_view::npos)
      return kZonaNessuna;
    int zona = 0;
    for (char c : valore) zona = zona * 10 + (c - '0');
    return zona;
  }
  return kZonaNessuna;
}

SistemaWindows LeggiSistemaWindows() {
  SistemaWindows s;
  Elenchi().clear();
  grezzo::Sistema(&s);
  s.prodotto = Testo(Vista::sistema, kVersioneNt, "ProductName");
  s.rilascio = Testo(Vista::sistema, kVersioneNt, "DisplayVersion");
  if (s.rilascio.empty()) s.rilascio = Testo(Vista::sistema, kVersioneNt, "ReleaseId");
  StatoUac(&s.uac, &s.virtualizzazione);
  s.accessoControllato = Dword(kAccessoControllato, "EnableControlledFolderAccess");
  s.zoneLeggibili = !s.wine;
  return s;
}

std::vector<std::string> EseguibiliInCima(const std::string& cartella,
                                          const std::vector<std::string>& primi) {
  std::vector<std::string> nomi;
  int err = 0, errFine = 0;
  grezzo::Elenco(ConBarra(cartella) + "*.exe", 0, &nomi, &err, &errFine);
  // The pattern also matches names whose short form ends so ("a.exe1" is "A~1.EXE").
  std::erase_if(nomi, [](const std::string& n) { return !FineSenzaCaso(n, ".exe"); });
  std::vector<std::pair<std::size_t, std::string>> ordinati;
  ordinati.reserve(nomi.size());
  for (std::string& n : nomi) {
    std::size_t rango = primi.size();
    for (std::size_t k = 0; k < primi.size(); ++k)
      if (UgualiSenzaCaso(n, primi[k])) rango = k;
    ordinati.emplace_back(rango, std::move(n));
  }
  const auto prima = [](const auto& a, const auto& b) {
    if (a.first != b.first) return a.first < b.first;
    const std::string ma = Maiuscolo(a.second), mb = Maiuscolo(b.second);
    return ma != mb ? ma < mb : a.second < b.second;
  };
  const std::size_t n = std::min(ordinati.size(), kMassimoEseguibili);
  std::partial_sort(ordinati.begin(), ordinati.begin() + static_cast<std::ptrdiff_t>(n), ordinati.end(),
                    prima);
  std::vector<std::string> percorsi;
  percorsi.reserve(n);
  for (std::size_t k = 0; k < n; ++k) percorsi.push_back(ConBarra(cartella) + ordinati[k].second);
  return percorsi;
}

Eseguibile StudiaEseguibile(const std::string& winPath, const SistemaWindows& sistema) {
  Eseguibile e;
  e.percorso = winPath;
  int err = 0;
  File file = File::ApriLetturaGrezza(winPath, &err);
  if (err || !file.Aperto()) {
    e.problema = "the file cannot be read";
  } else {
    LettoreFile lettore(file);
    ImportazioniPe imp = LeggiImportazioniPe(lettore);
    e.macchina = imp.macchina;
    e.problema = std::move(imp.problema);
    const std::size_t k = winPath.find_last_of("\\/");
    const std::string cartella = k == std::string::npos ? std::string() : winPath.substr(0, k);
    // A program of another machine is taken as a 32-bit one, which is what a level tool is.
    const bool a32 = e.macchina != MacchinaPe::x64;
    const std::string windows = CartellaWindows();
    e.importazioni.reserve(imp.dll.size());
    for (const std::string& dll : imp.dll)
      e.importazioni.push_back(Risolvi(dll, cartella, a32, sistema, windows));
  }
  e.livelli = Livelli(winPath);
  if (sistema.zoneLeggibili) e.zona = grezzo::Zona(winPath);
  return e;
}

std::vector<std::string> FileDaVirtualStore(const std::string& cartella, std::size_t massimo,
                                            std::size_t* totale) {
  *totale = 0;
  const std::string copia = CopiaVirtuale(cartella);
  if (copia.empty()) return {};
  std::vector<std::string> file;
  Cammina(grezzo::ApriCartella(copia), SenzaBarraFinale(cartella), &file, totale);
  std::sort(file.begin(), file.end(), [](const std::string& a, const std::string& b) {
    const std::string ma = Maiuscolo(a), mb = Maiuscolo(b);
    return ma != mb ? ma < mb : a < b;
  });
  if (file.size() > massimo) file.resize(massimo);
  return file;
}

}  // namespace host
