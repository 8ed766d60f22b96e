// The part of the comparison that compares findings: the failures and warnings that appeared, went away or
// changed between the two snapshots. Passes are left out: each is the other side of a finding listed here.
#include <unordered_map>
#include <variant>

#include "analysis/confronto_parti.h"
#include "analysis/riepilogo.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace analysis::parti {
namespace {

struct Voce {
  const Esito* esito;
  bool preso = false;
};

// A finding is the same one on both sides when its identifier and the thing it names (its first piece of
// evidence, where that is a name) agree: a level still missing, a drive still low.
const std::string* Nome(const Esito& e) {
  return e.Evidenze.empty() ? nullptr : std::get_if<std::string>(&e.Evidenze.front().Valore);
}

// The thing named, and any other name its title gives: the same program missing another DLL is another
// finding, not a changed one.
std::string Chiave(const Esito& e) {
  std::string chiave = e.Id;
  for (std::size_t i = 0; i < e.Evidenze.size(); ++i) {
    const std::string* s = std::get_if<std::string>(&e.Evidenze[i].Valore);
    if (s && (i == 0 || (!s->empty() && e.Titolo.find(*s) != std::string::npos)))
      chiave += '\n' + host::Maiuscolo(*s);
  }
  return chiave;
}

std::string Riga(char segno, const Esito& e) {
  const std::string* n = Nome(e);
  const std::string nome = n && !n->empty() && e.Titolo.find(*n) == std::string::npos ? " (" + *n + ")" : "";
  return std::string(1, segno) + " " + (e.Livello == Gravita::fail ? "FAIL " : "WARN ") + e.Id + ": " +
         e.Titolo + nome;
}

std::vector<Esito> Problemi(const SnapshotAperto& s) {
  // The lists the comparison's own parts read already.
  std::vector<Esito> esiti = CalcolaRiepilogo(s.cartella, s.contenuto, host::CartellaProgramma(), '.',
                                              [&s](const std::string& file) { return ElencoDi(s, file); });
  std::erase_if(esiti, [](const Esito& e) { return e.Livello == Gravita::pass; });
  return esiti;
}

}  // namespace

Differenze ParteRiepilogo(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  const std::vector<Esito> vecchi = Problemi(v), nuovi = Problemi(n);
  std::unordered_multimap<std::string, Voce> perChiave;
  for (const auto& e : nuovi) perChiave.emplace(Chiave(e), Voce{&e});
  Differenze d;
  for (const auto& e : vecchi) {
    auto [da, a] = perChiave.equal_range(Chiave(e));
    while (da != a && da->second.preso) ++da;
    if (da == a) {
      d.push_back(Nuova(TipoDifferenza::Tolto, e.Id, e.Titolo, "", Riga('-', e)));
      continue;
    }
    da->second.preso = true;
    const Esito& nuovo = *da->second.esito;
    if (nuovo.Titolo != e.Titolo || nuovo.Livello != e.Livello)
      d.push_back(Nuova(TipoDifferenza::Cambiato, e.Id, e.Titolo, nuovo.Titolo, Riga('*', nuovo)));
  }
  for (const auto& e : nuovi)
    for (auto [da, a] = perChiave.equal_range(Chiave(e)); da != a; ++da)
      if (da->second.esito == &e && !da->second.preso)
        d.push_back(Nuova(TipoDifferenza::Aggiunto, e.Id, "", e.Titolo, Riga('+', e)));
  return d;
}

}  // namespace analysis::parti
