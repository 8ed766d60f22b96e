#include "analysis/analisi_backup.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <unordered_map>

#include "analysis/elenchi.h"
#include "analysis/testo.h"
#include "collection/membri.h"
#include "host/collegamenti.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "support/installazioni.h"
#include "support/valori.h"

namespace analysis {
namespace {

constexpr std::string_view kBackup = "\\backup_trle";
constexpr std::size_t kColonnaEsito = 51;

// Every occurrence of `cerca` in `s`, found without regard to case, replaced by `con`; an empty `cerca`
// changes nothing.
std::string SostituisciSenzaCaso(const std::string& s, std::string_view cerca, std::string_view con) {
  if (cerca.empty()) return s;
  const std::string ms = host::Maiuscolo(s);
  const std::string mc = host::Maiuscolo(cerca);
  std::string r;
  std::size_t da = 0;
  for (std::size_t a; (a = ms.find(mc, da)) != std::string::npos; da = a + mc.size()) {
    r.append(s, da, a - da);
    r += con;
  }
  r.append(s, da, std::string::npos);
  return r;
}

// Upper-case name to the index of its first entry in the list.
class Indice {
 public:
  explicit Indice(const formats::ElencoFile& e) {
    const std::size_t n = VociUsabili(e);
    mappa_.reserve(n);
    for (std::size_t i = 0; i < n; ++i) mappa_.try_emplace(host::Maiuscolo(e.NomiFile[i]), i);
  }
  std::optional<std::size_t> Trova(const std::string& nome) const {
    const auto it = mappa_.find(host::Maiuscolo(nome));
    if (it == mappa_.end()) return std::nullopt;
    return it->second;
  }

 private:
  std::unordered_map<std::string, std::size_t> mappa_;
};

// The good copies' lengths, read a folder at a time: one listing of a folder measures all its files, where
// asking for each file by its full path would resolve the whole path again every time.
class MisuraPerCartella {
 public:
  std::int64_t operator()(const std::string& percorso) {
    const std::size_t barra = percorso.find_last_of('\\');
    if (barra != std::string::npos) {
      const std::string cartella = percorso.substr(0, barra);
      auto it = cartelle_.find(host::Maiuscolo(cartella));
      if (it == cartelle_.end()) it = cartelle_.emplace(host::Maiuscolo(cartella), Leggi(cartella)).first;
      if (const auto f = it->second.find(host::Maiuscolo(percorso.substr(barra + 1))); f != it->second.end())
        return f->second;
    }
    // Not in its folder's listing (a folder that cannot be listed, say): asked by its path after all.
    int err = 0;
    const std::int64_t n = host::LunghezzaFile(percorso, &err);
    return err ? -1 : n;
  }

 private:
  using Dimensioni = std::unordered_map<std::string, std::int64_t>;
  static Dimensioni Leggi(const std::string& cartella) {
    Dimensioni d;
    std::vector<host::VoceCartella> voci;
    if (!host::LeggiCartella(host::ApriCartella(cartella), host::kAttrHidden | host::kAttrSystem, voci))
      return d;
    for (const auto& v : voci) d.try_emplace(host::Maiuscolo(v.nome), v.dimensione);
    return d;
  }
  std::unordered_map<std::string, Dimensioni> cartelle_;
};

}  // namespace

std::string TestoAnalisiBackup(const ListeBackup& liste, const std::string& elencoCampione,
                               const MisuraFile& misura, std::vector<std::string>& fileTrovati,
                               support::BarraProgresso& barra, char separatoreDecimale,
                               TotaliBackup* totali) {
  const formats::ElencoFile& campione = liste.Campione;
  const std::size_t numeroCampione = VociUsabili(campione);
  fileTrovati.assign(numeroCampione, {});
  for (std::size_t i = 0; i < numeroCampione; ++i)
    fileTrovati[i] = campione.CartellaBase + campione.NomiFile[i];
  const auto numeroFileTrovati = static_cast<std::int64_t>(numeroCampione);

  const Indice utente(liste.Utente);
  const Indice cd(liste.Cd);
  std::int64_t numeroBackup = 0;
  const std::string cercaBackup = host::Maiuscolo(std::string(kBackup) + "\\");
  for (std::size_t i = 0; i < VociUsabili(liste.Utente); ++i)
    if (host::Maiuscolo(liste.Utente.NomiFile[i]).find(cercaBackup) != std::string::npos) ++numeroBackup;

  std::string t;
  AggiungiRiga(t, "Controllo file di backup_trle");
  AggiungiRiga(t, std::string(30, '-'));
  AggiungiRiga(t, "Cartella da controllare : " + liste.Utente.CartellaBase + std::string(kBackup) + " (" +
                      std::to_string(numeroBackup) + " files)");
  AggiungiRiga(t, "Elenco files campione in: " + elencoCampione + " (" + std::to_string(numeroFileTrovati) +
                      " files)");
  AggiungiRiga(t, "");
  AggiungiRiga(t, "File_Sorgente e dimensione" + std::string(25, ' ') + "Esito");
  AggiungiRiga(t, std::string(77, '-'));

  std::int64_t corretti = 0, mancanti = 0, maggiori = 0, minori = 0, originaliCd = 0, senzaCopia = 0;
  for (std::size_t i = 0; i < numeroCampione; ++i) {
    support::AggiornaProgresso(barra, static_cast<double>(numeroCampione), static_cast<double>(i + 1));
    const std::string chiave = SostituisciSenzaCaso(fileTrovati[i], campione.CartellaBase, kBackup);
    const std::string nomeBreve = SostituisciSenzaCaso(chiave, kBackup, "");
    std::string esito;
    std::int64_t dimensione = 0;
    bool ok = true;
    if (const auto u = utente.Trova(chiave); !u) {
      ok = false;
      esito = kFileMancante;
      ++mancanti;
    } else {
      dimensione = liste.Utente.DimensioniFile[*u];
      const std::int64_t riferimento = misura(fileTrovati[i]);
      if (riferimento < 0) {
        ok = false;
        esito = kCampioneMancante;
        ++senzaCopia;
      } else if (dimensione != riferimento) {
        ok = false;
        const bool maggiore = dimensione > riferimento;
        esito = (maggiore ? "DIMENSIONE MAGGIORE DI " : "DIMENSIONE INFERIORE DI ") +
                std::to_string(maggiore ? dimensione - riferimento : riferimento - dimensione) + " bytes";
        ++(maggiore ? maggiori : minori);
        // Only the first CD entry of that name is looked at.
        if (const auto c = cd.Trova(nomeBreve); c && liste.Cd.DimensioniFile[*c] == dimensione) {
          esito = kOriginaleCd;
          ++originaliCd;
        }
      }
    }
    if (ok) {
      ++corretti;
      continue;
    }
    std::string riga = nomeBreve + "  " +
                       support::FormattaDimensione(static_cast<double>(dimensione), separatoreDecimale) +
                       " (" + std::to_string(dimensione) + " bytes) ";
    // A longer first column stays whole and pushes the result to the right.
    if (riga.size() < kColonnaEsito) riga.append(kColonnaEsito - riga.size(), ' ');
    AggiungiRiga(t, riga + esito);
  }

  if (totali)
    *totali = {numeroFileTrovati,
               corretti,
               mancanti,
               maggiori,
               minori,
               originaliCd,
               numeroBackup - numeroFileTrovati,
               senzaCopia};
  AggiungiRiga(t, std::string(74, '-'));
  AggiungiRiga(t, "FILE CORRETTI = " + std::to_string(corretti));
  AggiungiRiga(t, "FILE MANCANTI = " + std::to_string(mancanti));
  AggiungiRiga(t, "FILE IN PIU'  = " + std::to_string(numeroBackup - numeroFileTrovati));
  AggiungiRiga(t, "FILE CON DIMENSIONE MAGGIORE = " + std::to_string(maggiori));
  AggiungiRiga(t, "FILE CON DIMENSIONE MINORE   = " + std::to_string(minori));
  AggiungiRiga(t, "FILE ORIGINALI CD (VECCHI)   = " + std::to_string(originaliCd));
  return t;
}

MisuraFile MisuraCopieCampione() {
  return [perCartella = std::make_shared<MisuraPerCartella>()](const std::string& percorso) {
    return (*perCartella)(percorso);
  };
}

std::optional<std::string> AnalisiBackup(const std::string& cartellaProgramma,
                                         const std::string& cartellaDati,
                                         std::vector<std::string>& fileTrovati,
                                         support::BarraProgresso& barra, support::Messaggi& messaggi) {
  if (support::TrovaEseguibile("ordl2009.exe").empty()) {
    messaggi.Critico("Non trovo la cartella dove e' installato ordelio su questo computer");
    return std::nullopt;
  }
  ListeBackup liste;
  const std::string elencoCampione = cartellaProgramma + "\\backup_trle.le";
  if (!CaricaElencoFile(elencoCampione, liste.Campione, barra, messaggi)) {
    messaggi.Critico("Errore caricando elenco files: " + elencoCampione);
    return std::nullopt;
  }
  const std::string elencoUtente = collection::FileDati(cartellaDati, collection::Membro::elencoOrdl);
  if (!CaricaElencoFile(elencoUtente, liste.Utente, barra, messaggi)) {
    messaggi.Critico("Errore caricando elenco files: " + elencoUtente);
    return std::nullopt;
  }
  if (!CaricaElencoFile(cartellaProgramma + "\\trle_cd.le", liste.Cd, barra, messaggi)) {
    messaggi.Critico("Errore caricando elenco file di cartella trle_cd");
    return std::nullopt;
  }
  std::string testo = TestoAnalisiBackup(liste, elencoCampione, MisuraCopieCampione(), fileTrovati, barra,
                                         support::SeparatoreDecimale());
  barra.SetValue(0);
  barra.Refresh();
  return testo;
}

}  // namespace analysis
