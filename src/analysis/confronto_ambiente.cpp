// The part of the comparison that compares the machine around the installations, as the two check runs
// recorded it: Windows, and for each executable at the top of the two folders its machine, where each DLL it
// imports is found, its compatibility layers and its mark of the web. The part is there only when both
// snapshots record a readable environment.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "analysis/confronto_parti.h"
#include "formats/ambiente.h"
#include "host/nomi.h"
#include "support/files.h"

namespace analysis::parti {
namespace {

using formats::Ambiente;

std::string Opzione(const std::optional<std::uint32_t>& v, std::initializer_list<const char*> parole,
                    const char* assente) {
  if (!v) return assente;
  if (*v < parole.size()) return parole.begin()[*v];
  return std::to_string(*v);
}

struct CampoSistema {
  const char* nome;
  std::string (*testo)(const Ambiente& a);
};

// What the comparison shows of Windows, one row a field.
const CampoSistema kCampiSistema[] = {
    {"Windows",
     [](const Ambiente& a) {
       return a.windows.prodotto + (a.windows.rilascio.empty() ? "" : " " + a.windows.rilascio);
     }},
    {"Windows version",
     [](const Ambiente& a) {
       const host::SistemaWindows& w = a.windows;
       return std::to_string(w.maggiore) + "." + std::to_string(w.minore) + "." + std::to_string(w.build) +
              (w.windows64 ? " (64-bit)" : " (32-bit)");
     }},
    {"Wine",
     [](const Ambiente& a) {
       if (!a.windows.wine) return std::string("no");
       return a.windows.versioneWine.empty() ? std::string("yes") : a.windows.versioneWine;
     }},
    {"UAC", [](const Ambiente& a) { return std::string(a.windows.uac ? "on" : "off"); }},
    {"UAC virtualization",
     [](const Ambiente& a) { return std::string(a.windows.virtualizzazione ? "on" : "off"); }},
    {"ANSI code page", [](const Ambiente& a) { return std::to_string(a.windows.codePage); }},
    {"DPI", [](const Ambiente& a) { return std::to_string(a.windows.dpi); }},
    {"Controlled Folder Access",
     [](const Ambiente& a) {
       return Opzione(a.windows.accessoControllato, {"off", "on", "audit only"}, "not set");
     }},
    {"DEP policy",
     [](const Ambiente& a) {
       return Opzione(a.windows.dep, {"always off", "always on", "opt-in", "opt-out"}, "unknown");
     }},
    {"files from the VirtualStore", [](const Ambiente& a) { return std::to_string(a.fileVirtualiTotale); }},
};

// An executable is the same one on both sides when it stands at the top of the same installation's folder
// under the same name: a folder that moved is the lists' difference, not the machine's.
std::string Chiave(const formats::EseguibileAmbiente& e) {
  return std::string(formats::NomeCartella(e.cartella)) + '\n' +
         host::Maiuscolo(support::EstraiNomeFile(e.eseguibile.percorso));
}

std::string Dove(const host::DllImportata& d) {
  if (d.origine == host::Origine::nonTrovata || d.origine == host::Origine::apiSet)
    return formats::NomeOrigine(d.origine);
  return std::string(formats::NomeOrigine(d.origine)) + " (" + d.percorso + ")";
}

// Found elsewhere: another place, or another system folder (the program's bitness changed). A DLL beside the
// program is the same one when the program's folder moved.
bool AltroPosto(const host::DllImportata& a, const host::DllImportata& b) {
  if (a.origine != b.origine) return true;
  return a.origine == host::Origine::sistema && host::Maiuscolo(a.percorso) != host::Maiuscolo(b.percorso);
}

void Marchio(Differenze& d, const std::string& chi, int prima, int dopo) {
  if (prima == dopo) return;
  const auto zona = [](int z) { return z >= 0 ? "zone " + std::to_string(z) : std::string(); };
  if (prima < 0)
    d.push_back(Nuova(TipoDifferenza::Aggiunto, chi, "", zona(dopo),
                      "+ " + chi + ": carries the mark of the web (" + zona(dopo) + ")"));
  else if (dopo < 0)
    d.push_back(Nuova(TipoDifferenza::Tolto, chi, zona(prima), "",
                      "- " + chi + ": no longer carries the mark of the web (" + zona(prima) + ")"));
  else
    d.push_back(Nuova(TipoDifferenza::Cambiato, chi, zona(prima), zona(dopo),
                      "* " + chi + ": mark of the web " + zona(prima) + " -> " + zona(dopo)));
}

void Importazioni(Differenze& d, const std::string& nome, const host::Eseguibile& a,
                  const host::Eseguibile& b) {
  std::map<std::string, const host::DllImportata*> nuove;
  for (const auto& i : b.importazioni) nuove.try_emplace(host::Maiuscolo(i.nome), &i);
  std::set<std::string> viste;
  for (const auto& i : a.importazioni) {
    const std::string chiave = host::Maiuscolo(i.nome);
    if (!viste.insert(chiave).second) continue;
    const std::string chi = nome + ", " + i.nome;
    const auto it = nuove.find(chiave);
    if (it == nuove.end()) {
      d.push_back(
          Nuova(TipoDifferenza::Tolto, chi, Dove(i), "", "- " + nome + ": no longer imports " + i.nome));
      continue;
    }
    const host::DllImportata& n = *it->second;
    if (AltroPosto(i, n))
      d.push_back(Nuova(TipoDifferenza::Cambiato, chi, Dove(i), Dove(n),
                        "* " + chi + ": " + Dove(i) + " -> " + Dove(n)));
    else if (i.origine == host::Origine::cartellaEseguibile)
      Marchio(d, chi, i.zona, n.zona);
  }
  for (const auto& n : b.importazioni)
    if (viste.insert(host::Maiuscolo(n.nome)).second)
      d.push_back(Nuova(TipoDifferenza::Aggiunto, nome + ", " + n.nome, "", Dove(n),
                        "+ " + nome + ": now imports " + n.nome + ", " + Dove(n)));
}

// Each layer word of each root where it was set; "~" only marks how the layers are written.
std::vector<std::pair<std::string, std::string>> Livelli(const host::Eseguibile& e) {
  std::vector<std::pair<std::string, std::string>> r;
  for (const auto& l : e.livelli) {
    std::size_t da = 0;
    while ((da = l.dati.find_first_not_of(' ', da)) != std::string::npos) {
      const std::size_t a = std::min(l.dati.find(' ', da), l.dati.size());
      if (const std::string parola = l.dati.substr(da, a - da); parola != "~")
        r.emplace_back(l.radice, host::Maiuscolo(parola));
      da = a;
    }
  }
  return r;
}

void Strati(Differenze& d, const std::string& nome, const host::Eseguibile& a, const host::Eseguibile& b) {
  const auto prima = Livelli(a), dopo = Livelli(b);
  const std::set<std::pair<std::string, std::string>> inPrima(prima.begin(), prima.end()),
      inDopo(dopo.begin(), dopo.end());
  for (const auto& [radice, livello] : prima)
    if (!inDopo.contains({radice, livello}))
      d.push_back(Nuova(TipoDifferenza::Tolto, nome + ", " + livello, livello + " in " + radice, "",
                        "- " + nome + ": layer " + livello + " removed from " + radice));
  for (const auto& [radice, livello] : dopo)
    if (!inPrima.contains({radice, livello}))
      d.push_back(Nuova(TipoDifferenza::Aggiunto, nome + ", " + livello, "", livello + " in " + radice,
                        "+ " + nome + ": layer " + livello + " set in " + radice));
}

void Eseguibili(Differenze& d, const Ambiente& a, const Ambiente& b) {
  std::map<std::string, const formats::EseguibileAmbiente*> nuovi;
  // A name that both folders hold is told by its path.
  std::map<std::string, std::set<formats::CartellaEseguibile>> cartelle;
  for (const auto& e : b.eseguibili) {
    nuovi.try_emplace(Chiave(e), &e);
    cartelle[host::Maiuscolo(support::EstraiNomeFile(e.eseguibile.percorso))].insert(e.cartella);
  }
  std::set<std::string> visti;
  for (const auto& e : a.eseguibili) {
    const std::string chiave = Chiave(e);
    if (!visti.insert(chiave).second) continue;
    const std::string& percorso = e.eseguibile.percorso;
    const auto it = nuovi.find(chiave);
    if (it == nuovi.end()) {
      d.push_back(Nuova(TipoDifferenza::Tolto, percorso, percorso, "",
                        "- executable " + percorso + " (only in the old snapshot)"));
      continue;
    }
    const host::Eseguibile& v = e.eseguibile;
    const host::Eseguibile& n = it->second->eseguibile;
    const std::string nome = support::EstraiNomeFile(n.percorso);
    const std::string chi = cartelle[host::Maiuscolo(nome)].size() > 1 ? n.percorso : nome;
    Campo(d, chi + " machine", formats::NomeMacchina(v.macchina), formats::NomeMacchina(n.macchina));
    Campo(d, chi + " problem", v.problema, n.problema);
    Importazioni(d, chi, v, n);
    Strati(d, chi, v, n);
    Marchio(d, chi, v.zona, n.zona);
  }
  for (const auto& e : b.eseguibili)
    if (visti.insert(Chiave(e)).second)
      d.push_back(Nuova(TipoDifferenza::Aggiunto, e.eseguibile.percorso, "", e.eseguibile.percorso,
                        "+ executable " + e.eseguibile.percorso + " (only in the new snapshot)"));
}

// The check run's instant in seconds since 1970, UTC: its local time less its offset. The reader has checked
// the date's form.
std::int64_t IstanteUtc(const Ambiente& a) {
  const std::string& t = a.dataLocale;
  const auto n = [&](std::size_t da, std::size_t quanti) { return std::stoi(t.substr(da, quanti)); };
  const std::chrono::sys_days giorno{std::chrono::year{n(0, 4)} / n(5, 2) / n(8, 2)};
  const std::int64_t locale =
      std::int64_t{giorno.time_since_epoch().count()} * 86400 + n(11, 2) * 3600 + n(14, 2) * 60 + n(17, 2);
  return locale - std::int64_t{a.scartoUtcMinuti} * 60;
}

std::string Assenza(const char* lato, const AmbienteLetto& a) {
  if (a.stato == StatoAmbiente::assente)
    return std::string("the ") + lato + " snapshot records none (an older program made it)";
  return std::string("the ") + lato + " snapshot's environment member cannot be read (" + a.motivo + ")";
}

}  // namespace

Differenze ParteAmbiente(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  const Ambiente& a = AmbienteDi(v).ambiente;
  const Ambiente& b = AmbienteDi(n).ambiente;
  Differenze d;
  for (const CampoSistema& c : kCampiSistema) Campo(d, c.nome, c.testo(a), c.testo(b));
  Eseguibili(d, a, b);
  return d;
}

bool AmbientiConfrontabili(const SnapshotAperto& v, const SnapshotAperto& n) {
  return AmbienteDi(v).stato == StatoAmbiente::letto && AmbienteDi(n).stato == StatoAmbiente::letto;
}

void DateEAmbiente(const SnapshotAperto& v, const SnapshotAperto& n, Confronto& c) {
  const AmbienteLetto& a = AmbienteDi(v);
  const AmbienteLetto& b = AmbienteDi(n);
  if (a.stato == StatoAmbiente::letto) c.dataVecchio = DataControllo(a.ambiente);
  if (b.stato == StatoAmbiente::letto) c.dataNuovo = DataControllo(b.ambiente);
  if (AmbientiConfrontabili(v, n)) {
    c.vecchioPiuRecente = IstanteUtc(a.ambiente) > IstanteUtc(b.ambiente);
    return;
  }
  if (a.stato == StatoAmbiente::assente && b.stato == StatoAmbiente::assente) return;
  std::string perche;
  if (a.stato != StatoAmbiente::letto) perche = Assenza("old", a);
  if (b.stato != StatoAmbiente::letto) perche += (perche.empty() ? "" : "; ") + Assenza("new", b);
  c.ambienteNonConfrontato = perche;
}

}  // namespace analysis::parti
