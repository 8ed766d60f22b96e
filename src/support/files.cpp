#include "support/files.h"

#include <limits>

#include "host/macchina.h"
#include "host/nomi.h"
#include "support/valori.h"

namespace support {
namespace {

// Every file, read-only, hidden and system ones too; no folder.
constexpr int kFileTutti = host::kAttrReadOnly | host::kAttrHidden | host::kAttrSystem;

// A path that names one entry, as against a pattern or a folder path ending in "\", which lists what the
// folder holds: no wildcard, and a last name that keeps something once the platform drops its closing dots
// and blanks ("C:\Dati\." names none).
bool UnaVoce(const std::string& percorso) {
  // A '?' is a letter the code page could not show, which the machine resolves.
  if (percorso.find('*') != std::string::npos) return false;
  const std::size_t k = percorso.find_last_of("\\/:");
  return percorso.find_first_not_of(". ", k == std::string::npos ? 0 : k + 1) != std::string::npos;
}

// The attributes of that entry, -1 where a listing of the path with `mask` would give no name: asked of the
// entry itself, without listing its folder.
int AttributiVoce(const std::string& percorso, int mask) {
  int err = 0;
  const int attr = host::LeggiAttributi(percorso, &err);
  return !err && attr >= 0 && host::AmmessoDaMaschera(attr, mask) ? attr : -1;
}

// The whole-or-nothing write: the new file beside the name (`apri`), its bytes, then put in place in one
// step; what was begun goes again (`cancella`) on any failure, and `errore`, when given, takes the platform's
// error number of the step that failed.
template <typename Apri, typename Cancella>
bool ScriviAParte(const std::string& percorso, const std::function<bool(host::File&)>& scrivi, Apri apri,
                  Cancella cancella, int* errore = nullptr) {
  const std::string parziale = percorso + kSuffissoParziale;
  cancella(parziale);
  int err = 0;
  bool ok = false;
  {
    // Closed before it is put in place: Windows moves no open file.
    host::File f = apri(parziale, &err);
    ok = !err && f.Aperto() && scrivi(f) && f.Scarica();
  }
  if (ok && host::SostituisciFile(parziale, percorso, &err)) return true;
  cancella(parziale);
  if (errore) *errore = err;
  return false;
}

// What may stand at the name when a file is put in its place below `base`: nothing yet, a link of that name
// (replaced itself, as ScriviFileIntero replaces one), or a plain file that is not read-only, hidden or
// system, as a write in place would take. A link on the way, a folder or such a file stays as it is.
bool SostituibileSotto(const std::string& base, const std::string& percorso) {
  int err = 0;
  switch (host::VoceSotto(base, percorso, &err)) {
    case host::Voce::manca:
      return true;
    case host::Voce::collegamento:
      return err == 0;
    case host::Voce::file:
      return (AttributiVoce(percorso, kFileTutti) &
              (host::kAttrReadOnly | host::kAttrHidden | host::kAttrSystem)) == 0;
    case host::Voce::cartella:
      break;
  }
  return false;
}

}  // namespace

std::string EstraiNomeFile(const std::string& percorso) {
  const std::size_t k = percorso.find_last_of("\\:");
  return k == std::string::npos ? percorso : percorso.substr(k + 1);
}

std::string EstraiCartella(const std::string& percorso) {
  const std::size_t k = percorso.rfind('\\');
  return k == std::string::npos ? std::string() : percorso.substr(0, k);
}

std::string EstraiEstensione(const std::string& percorso) {
  const std::size_t k = percorso.rfind('.');
  return k == std::string::npos ? std::string() : percorso.substr(k);
}

std::string NormalizzaPercorso(const std::string& percorso) {
  std::string out;
  for (std::size_t i = 0; i < percorso.size(); ++i) {
    out += percorso[i];
    if (percorso[i] == '\\' && i + 1 < percorso.size() && percorso[i + 1] == '\\') ++i;
  }
  return out;
}

bool FileExists(const std::string& percorso) {
  if (PulisciStringa(percorso).empty()) return false;
  if (UnaVoce(percorso)) return AttributiVoce(percorso, kFileTutti) >= 0;
  int err = 0;
  host::Enumerazione elenco(percorso, kFileTutti);
  std::string nome = elenco.Prossima(&err);
  if (err || nome.empty()) return false;
  // An error that ends the listing after a match makes the answer false too.
  while (!nome.empty()) {
    nome = elenco.Prossima(&err);
    if (err) return false;
  }
  return true;
}

bool DirExists(const std::string& percorso) {
  if (percorso.find_first_not_of(' ') == std::string::npos) return false;
  if (UnaVoce(percorso)) {
    const int attr = AttributiVoce(percorso, host::kAttrDirectory);
    return attr >= 0 && (attr & host::kAttrDirectory);
  }
  int err = 0;
  if (host::Enumerazione(percorso, host::kAttrDirectory).Prossima(&err).empty() || err) return false;
  const int attr = host::LeggiAttributi(percorso, &err);
  return !err && attr >= 0 && (attr & host::kAttrDirectory);
}

std::string LeggiFile(const std::string& percorso) {
  if (!FileExists(percorso)) return {};
  int err = 0;
  host::File f = host::File::ApriLettura(percorso, &err);
  if (err || !f.Aperto()) return {};
  const std::int64_t n = f.Lunghezza();
  if (n <= 0 || n > std::numeric_limits<std::int32_t>::max()) return {};
  std::string testo(static_cast<std::size_t>(n), '\0');
  if (f.Leggi(testo.data(), testo.size()) != testo.size()) return {};
  return testo;
}

bool ScriviFileTesto(const std::string& percorso, const std::string& testo) {
  int err = 0;
  host::File f = host::File::ApriScrittura(percorso, &err);
  if (err || !f.Aperto()) return false;
  return f.Scrivi(testo.data(), testo.size());
}

bool ScriviFileIntero(const std::string& percorso, const std::vector<std::string_view>& pezzi, int* errore) {
  return ScriviFileIntero(
      percorso,
      [&](host::File& f) {
        for (const std::string_view p : pezzi)
          if (!f.Scrivi(p.data(), p.size())) return false;
        return true;
      },
      errore);
}

bool ScriviFileIntero(const std::string& percorso, const std::function<bool(host::File&)>& scrivi,
                      int* errore) {
  return ScriviAParte(
      percorso, scrivi, [](const std::string& p, int* err) { return host::File::CreaNuovo(p, err); },
      [](const std::string& p) { CancellaFile(p); }, errore);
}

bool StessoFile(const std::string& a, const std::string& b) {
  const auto completo = [](const std::string& p) {
    int err = 0;
    const std::string host = host::PercorsoHost(p, &err);
    return err || host.empty() ? p : host::PercorsoWindows(host);
  };
  return !a.empty() && !b.empty() && host::UgualiSenzaCaso(completo(a), completo(b));
}

bool CreaCartella(const std::string& percorso) {
  if (DirExists(percorso)) return true;
  int err = 0;
  return host::CreaUnaCartella(percorso, &err) && !err;
}

bool CancellaFile(const std::string& percorso) {
  if (!FileExists(percorso)) return true;
  int err = 0;
  const int attr = host::LeggiAttributi(percorso, &err);
  if (err) return false;
  if ((attr & host::kAttrReadOnly) && !host::ImpostaAttributi(percorso, host::kAttrArchive, &err))
    return false;
  return host::EliminaFile(percorso, &err) && !err;
}

std::vector<std::string> ElencaFile(const std::string& cartella, const std::string& maschera,
                                    std::int32_t& numero) {
  std::vector<std::string> elenco;
  int err = 0;
  host::Enumerazione nomi(cartella + "\\" + maschera, kFileTutti);
  for (std::string nome = nomi.Prossima(&err); !nome.empty() && !err; nome = nomi.Prossima(&err))
    elenco.push_back(cartella + "\\" + nome);
  numero = static_cast<std::int32_t>(elenco.size());
  return elenco;
}

bool SvuotaCartella(const std::string& cartella, const std::string& maschera) {
  if (!DirExists(cartella)) return false;
  std::int32_t numero = 0;
  // Reached from the folder that holds it, the folder itself is checked for a link too.
  const std::string base = EstraiCartella(cartella);
  for (const auto& f : ElencaFile(cartella, maschera, numero))
    if (!CancellaFileSotto(base, f)) return false;
  return true;
}

bool ScriviFileSotto(const std::string& base, const std::string& percorso, const std::string& testo) {
  return ScriviFileSotto(base, percorso, [&](host::File& f) { return f.Scrivi(testo.data(), testo.size()); });
}

bool ScriviFileSotto(const std::string& base, const std::string& percorso,
                     const std::function<bool(host::File&)>& scrivi) {
  if (!SostituibileSotto(base, percorso)) return false;
  return ScriviAParte(
      percorso, scrivi,
      [&](const std::string& p, int* err) { return host::File::ApriScritturaSotto(base, p, err); },
      [&](const std::string& p) { CancellaFileSotto(base, p); });
}

bool CancellaFileSotto(const std::string& base, const std::string& percorso) {
  int err = 0;
  return host::EliminaFileSotto(base, percorso, &err) || err == host::kErrFileNotFound ||
         err == host::kErrPathNotFound;
}

std::string PreparaCartellaDiLavoro(const std::string& base, const std::string& cartella) {
  int err = 0;
  switch (host::VoceSotto(base, cartella, &err)) {
    case host::Voce::manca:
      return CreaCartella(cartella) ? std::string() : "it cannot be made";
    case host::Voce::file:
      return "it is a file, not a folder";
    case host::Voce::collegamento:
      return "it is a link to another place";
    case host::Voce::cartella:
      break;
  }
  // Looked at again: Wine says a file is deleted when the host keeps it.
  std::int32_t restano = 0;
  return SvuotaCartella(cartella, "*") && ElencaFile(cartella, "*", restano).empty()
             ? std::string()
             : "the files in it cannot all be deleted";
}

}  // namespace support
