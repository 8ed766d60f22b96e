#include "analysis/confronto.h"

#include <string_view>
#include <unordered_map>
#include <utility>

#include "analysis/confronto_parti.h"
#include "analysis/elenchi.h"
#include "host/nomi.h"
#include "support/files.h"

namespace analysis::parti {

Differenza Nuova(TipoDifferenza tipo, std::string oggetto, std::string vecchio, std::string nuovo,
                 std::string riga) {
  return {tipo, std::move(oggetto), std::move(vecchio), std::move(nuovo), std::move(riga)};
}

void Campo(Differenze& d, const std::string& oggetto, const std::string& a, const std::string& b) {
  if (a != b)
    d.push_back(
        Nuova(TipoDifferenza::Cambiato, oggetto, a, b, "* " + oggetto + ": \"" + a + "\" -> \"" + b + "\""));
}

bool Presenti(Differenze& d, const std::string& nome, bool vecchio, bool nuovo) {
  if (vecchio && !nuovo)
    d.push_back(Nuova(TipoDifferenza::Tolto, nome, nome, "", "- " + nome + " (only in the old snapshot)"));
  if (nuovo && !vecchio)
    d.push_back(Nuova(TipoDifferenza::Aggiunto, nome, "", nome, "+ " + nome + " (only in the new snapshot)"));
  return vecchio && nuovo;
}

bool Ha(const SnapshotAperto& s, const std::string& nome) {
  return support::FileExists(s.cartella + "\\" + nome);
}

bool Presenti(Differenze& d, collection::Membro m, const SnapshotAperto& v, const SnapshotAperto& n) {
  const std::string nome = collection::VoceDi(m).nomeDati;
  return Presenti(d, nome, Ha(v, nome), Ha(n, nome));
}

void Accoppia(const std::vector<std::string>& vecchie, const std::vector<std::string>& nuove,
              std::vector<std::size_t>& coppia, std::vector<char>& preso) {
  struct Catena {
    std::size_t primo, ultimo;
  };
  std::unordered_map<std::string_view, Catena> catene;
  catene.reserve(nuove.size());
  std::vector<std::size_t> seguente(nuove.size(), kNessuno);
  for (std::size_t j = 0; j < nuove.size(); ++j) {
    if (preso[j]) continue;
    const auto [it, primo] = catene.try_emplace(nuove[j], Catena{j, j});
    if (!primo) seguente[std::exchange(it->second.ultimo, j)] = j;
  }
  for (std::size_t i = 0; i < vecchie.size(); ++i) {
    if (coppia[i] != kNessuno) continue;
    const auto it = catene.find(vecchie[i]);
    if (it == catene.end() || it->second.primo == kNessuno) continue;
    const std::size_t j = it->second.primo;
    it->second.primo = seguente[j];
    coppia[i] = j;
    preso[j] = 1;
  }
}

std::vector<std::string> Maiuscoli(const std::vector<std::string>& nomi, std::size_t quanti) {
  const std::size_t n = std::min(quanti, nomi.size());
  std::vector<std::string> m;
  m.reserve(n);
  for (std::size_t i = 0; i < n; ++i) m.push_back(host::Maiuscolo(nomi[i]));
  return m;
}

}  // namespace analysis::parti

namespace analysis {
namespace {

using parti::Differenze;

struct Parte {
  const char* chiave;
  const char* titolo;
  Differenze (*confronta)(const SnapshotAperto& vecchio, const SnapshotAperto& nuovo, support::Messaggi&);
  // Only when both snapshots hold what it compares: two snapshots without it compare as they always have.
  bool (*confrontabile)(const SnapshotAperto& vecchio, const SnapshotAperto& nuovo);
};

template <const ProspettoDirectory& quale>
Differenze Elenco(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi& m) {
  return parti::ParteElenco(quale.File, v, n, m);
}

// The parts in the order of the menus; one more part is one more row.
const Parte kParti[] = {
    {"header", "HEADER", parti::ParteHeader, nullptr},
    {"pref", "PREFERENZE", parti::PartePreferenze, nullptr},
    {"archive", "ARCHIVIO LIVELLI", parti::ParteArchivio, nullptr},
    {"ordl", "DIRECTORY ORDELIO", Elenco<kDirectoryOrdl>, nullptr},
    {"trle", "DIRECTORY LEVEL EDITOR", Elenco<kDirectoryTrle>, nullptr},
    {"dirarc", "DIRECTORY ARCHIVIO LIVELLI", Elenco<kDirectoryArchivio>, nullptr},
    {"ordeio", "ORDEIO.TXT", parti::ParteOrdeio, nullptr},
    {"script", "SCRIPT.DAT", parti::ParteScript, nullptr},
    {"environment", "AMBIENTE", parti::ParteAmbiente, parti::AmbientiConfrontabili},
    {"findings", "RIEPILOGO PROBLEMI", parti::ParteRiepilogo, nullptr},
};

}  // namespace

bool ApriSnapshot(const std::string& snapshot, const std::string& cartella, SnapshotAperto& aperto,
                  support::Messaggi& messaggi) {
  const std::string base = support::EstraiCartella(cartella);
  aperto = {cartella, {}, snapshot};
  if (const std::string motivo = support::PreparaCartellaDiLavoro(base, cartella); !motivo.empty()) {
    messaggi.Critico("Cannot use the working folder " + cartella + ": " + motivo);
    return false;
  }
  if (collection::EstraiSnapshot(snapshot, cartella, aperto.contenuto, base)) return true;
  messaggi.Critico("The snapshot cannot be read: " + snapshot);
  return false;
}

std::shared_ptr<const ElencoLetto> ElencoDi(const SnapshotAperto& s, const std::string& file) {
  auto& letto = s.elenchi[host::Maiuscolo(file)];
  if (!letto) letto = std::make_shared<const ElencoLetto>(LeggiElencoUnaVolta(s.cartella + "\\" + file));
  return letto;
}

const AmbienteLetto& AmbienteDi(const SnapshotAperto& s) {
  if (!s.ambiente) s.ambiente = std::make_shared<const AmbienteLetto>(LeggiAmbienteDati(s.cartella));
  return *s.ambiente;
}

Confronto ConfrontaSnapshot(const SnapshotAperto& vecchio, const SnapshotAperto& nuovo,
                            support::Messaggi& messaggi) {
  Confronto c{vecchio.nome, nuovo.nome, {}};
  parti::DateEAmbiente(vecchio, nuovo, c);
  for (const auto& p : kParti)
    if (!p.confrontabile || p.confrontabile(vecchio, nuovo))
      c.parti.push_back({p.chiave, p.titolo, p.confronta(vecchio, nuovo, messaggi)});
  return c;
}

std::size_t NumeroDifferenze(const Confronto& c) {
  std::size_t n = 0;
  for (const auto& p : c.parti) n += p.differenze.size();
  return n;
}

}  // namespace analysis
