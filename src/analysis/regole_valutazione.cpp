// The rules over one snapshot's facts. Conditions are three-valued: what the snapshot does not say (a member
// absent or refused, an older snapshot without its environment) is unknown, never false, and an outcome
// holds only on true. The lists are large: every name the rules ask of a list is found in one pass over it,
// made the first time a rule asks, and each wildcard pattern is tried once per entry in that same pass.
#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <unordered_map>
#include <utility>

#include "analysis/ambiente_dati.h"
#include "analysis/regole.h"
#include "analysis/regole_condizione.h"

namespace analysis {
namespace {

enum class Tri { falso, vero, ignoto };

struct Legami {
  std::optional<std::string> file, size, value;
  void Unisci(const Legami& o) {
    if (!file) file = o.file;
    if (!size) size = o.size;
    if (!value) value = o.value;
  }
};

struct Risposta {
  Tri v = Tri::falso;
  Legami l;
};

StatoMembro StatoDi(const Fatti& f, collection::Membro m) {
  using collection::Membro;
  switch (m) {
    case Membro::intestazione:
      return f.header.stato;
    case Membro::preferenze:
      return f.preferenze.stato;
    case Membro::archivio:
      return f.archivio.stato;
    case Membro::elencoOrdl:
      return f.ordl.stato;
    case Membro::elencoTrle:
      return f.trle.stato;
    case Membro::elencoArchivio:
      return f.dirarc.stato;
    case Membro::ordeio:
      return f.ordeio.stato;
    case Membro::script:
      return f.script.stato;
    case Membro::ambiente:
      break;
  }
  return f.ambiente.stato == StatoAmbiente::letto        ? StatoMembro::letto
         : f.ambiente.stato == StatoAmbiente::illeggibile ? StatoMembro::danneggiato
                                                         : StatoMembro::assente;
}

std::string TestoValore(const ValoreCampo& v) {
  if (const bool* b = std::get_if<bool>(&v)) return *b ? "true" : "false";
  if (const std::string* s = std::get_if<std::string>(&v)) return *s;
  const double x = std::get<double>(v);
  char t[32];
  if (x == static_cast<double>(static_cast<long long>(x)) && x > -1e15 && x < 1e15)
    std::snprintf(t, sizeof t, "%lld", static_cast<long long>(x));
  else
    std::snprintf(t, sizeof t, "%.15g", x);
  return t;
}

// The last component of a path already folded.
std::string_view Nome(std::string_view percorso) {
  const std::size_t b = percorso.rfind('\\');
  return b == std::string_view::npos ? percorso : percorso.substr(b + 1);
}

// A name or a path against a pattern, folded here.
bool CorrispondeTesto(const Modello& m, std::string_view testo, std::string& buf) {
  Piega(testo, buf);
  if (!m.percorso) return Corrisponde(m, Nome(buf));
  if (buf.empty() || buf.front() != '\\') buf.insert(buf.begin(), '\\');
  return Corrisponde(m, buf);
}

// What the rules ask of one list, and, once made, the entries each pattern matched (in list order).
struct Indice {
  std::unordered_map<std::string, std::vector<std::uint32_t>> nomi, percorsi, jolly;
  // Each distinct wildcard pattern and where its matches go (a map's values stay where they are).
  std::vector<std::pair<const Modello*, std::vector<std::uint32_t>*>> modelliJolly;
  // The lengths of the paths asked for: a path of another length is not looked up.
  std::vector<bool> lunghezze;
  bool fatto = false;

  void Chiedi(const Modello& m) {
    if (m.jolly) {
      const auto [voce, nuovo] = jolly.emplace(m.testo, std::vector<std::uint32_t>{});
      if (nuovo) modelliJolly.emplace_back(&m, &voce->second);
    } else {
      (m.percorso ? percorsi : nomi).emplace(m.testo, std::vector<std::uint32_t>{});
      if (m.percorso) {
        if (lunghezze.size() <= m.testo.size()) lunghezze.resize(m.testo.size() + 1);
        lunghezze[m.testo.size()] = true;
      }
    }
  }

  void Fai(const formats::ElencoFile& e) {
    fatto = true;
    const std::size_t n = VociUsabili(e);
    std::string percorso, nome;
    for (std::size_t i = 0; i < n; ++i) {
      const std::string& voce = e.NomiFile[i];
      const bool radice = !voce.empty() && (voce.front() == '\\' || voce.front() == '/');
      Piega(voce, percorso);
      if (!radice) percorso.insert(percorso.begin(), '\\');
      const std::string_view solo = Nome(percorso);
      const auto indice = static_cast<std::uint32_t>(i);
      if (!nomi.empty()) {
        nome.assign(solo);
        if (const auto it = nomi.find(nome); it != nomi.end()) it->second.push_back(indice);
      }
      if (percorso.size() < lunghezze.size() && lunghezze[percorso.size()])
        if (const auto it = percorsi.find(percorso); it != percorsi.end()) it->second.push_back(indice);
      for (const auto& [m, trovati] : modelliJolly) {
        const std::string_view bersaglio = m->percorso ? std::string_view(percorso) : solo;
        // A pattern that ends in a letter takes only names that end in it: most fail here, unwalked.
        const char ultima = m->testo.back();
        if (ultima != '*' && ultima != '?' && (bersaglio.empty() || bersaglio.back() != ultima)) continue;
        if (Corrisponde(*m, bersaglio)) trovati->push_back(indice);
      }
    }
  }

  const std::vector<std::uint32_t>& Trovati(const Modello& m) const {
    const auto& mappa = m.jolly ? jolly : m.percorso ? percorsi : nomi;
    return mappa.at(m.testo);
  }
};

class Valutazione {
 public:
  Valutazione(const std::vector<Regola>& regole, const Fatti& f) : f_(f) {
    for (const Regola& r : regole)
      for (const EsitoRegola& e : r.esiti)
        if (e.condizione) Chiedi(*e.condizione);
  }

  Risposta Valuta(const Condizione& c) {
    switch (c.tipo) {
      case TipoCondizione::tutte: {
        Risposta r{Tri::vero, {}};
        for (const Condizione& figlio : c.figli) {
          const Risposta x = Valuta(figlio);
          if (x.v == Tri::falso) return {Tri::falso, {}};
          if (x.v == Tri::ignoto) r.v = Tri::ignoto;
          r.l.Unisci(x.l);
        }
        if (r.v != Tri::vero) r.l = {};
        return r;
      }
      case TipoCondizione::una: {
        bool ignoto = false;
        for (const Condizione& figlio : c.figli) {
          Risposta x = Valuta(figlio);
          if (x.v == Tri::vero) return x;
          ignoto = ignoto || x.v == Tri::ignoto;
        }
        return {ignoto ? Tri::ignoto : Tri::falso, {}};
      }
      case TipoCondizione::non: {
        const Tri x = c.figli.empty() ? Tri::ignoto : Valuta(c.figli.front()).v;
        return {x == Tri::ignoto ? Tri::ignoto : x == Tri::vero ? Tri::falso : Tri::vero, {}};
      }
      case TipoCondizione::membro:
        return Membro(c);
      case TipoCondizione::file:
        return File(c);
      case TipoCondizione::campo:
        return Campo(c);
      case TipoCondizione::livelloScript:
        return LivelloScript(c);
      case TipoCondizione::eseguibile:
        return Eseguibile(c);
    }
    return {Tri::ignoto, {}};
  }

 private:
  void Chiedi(const Condizione& c) {
    if (c.tipo == TipoCondizione::file) indici_[static_cast<std::size_t>(c.lista)].Chiedi(c.modello);
    for (const Condizione& figlio : c.figli) Chiedi(figlio);
  }

  const ListaFatti& ListaDi(Lista l) const {
    return l == Lista::editor ? f_.trle : l == Lista::ordelio ? f_.ordl : f_.dirarc;
  }

  Risposta Membro(const Condizione& c) const {
    const StatoMembro s = StatoDi(f_, c.membro);
    bool vale = false;
    switch (c.stato) {
      case StatoVoluto::presente:
        vale = s != StatoMembro::assente;
        break;
      case StatoVoluto::assente:
        vale = s == StatoMembro::assente;
        break;
      case StatoVoluto::danneggiato:
        vale = s == StatoMembro::danneggiato;
        break;
      case StatoVoluto::letto:
        vale = s == StatoMembro::letto;
        break;
    }
    if (!vale) return {};
    Risposta r{Tri::vero, {}};
    r.l.file = collection::VoceDi(c.membro).nomeDati;
    return r;
  }

  Risposta File(const Condizione& c) {
    const ListaFatti& lista = ListaDi(c.lista);
    if (lista.stato != StatoMembro::letto || !lista.letto) return {Tri::ignoto, {}};
    const formats::ElencoFile& e = lista.letto->elenco;
    Indice& indice = indici_[static_cast<std::size_t>(c.lista)];
    if (!indice.fatto) indice.Fai(e);
    const std::vector<std::uint32_t>& trovati = indice.Trovati(c.modello);
    std::optional<std::uint32_t> scelto;
    for (const std::uint32_t i : trovati) {
      if (!c.dimensione || ConfrontaNumero(*c.dimensione, e.DimensioniFile[i])) {
        scelto = i;
        break;
      }
    }
    Risposta r{(scelto.has_value() == c.presente) ? Tri::vero : Tri::falso, {}};
    // A file absent by size still names the first entry of the name, whose size was not the one asked.
    if (!scelto && !trovati.empty()) scelto = trovati.front();
    if (r.v == Tri::vero && scelto) {
      r.l.file = e.NomiFile[*scelto];
      r.l.size = std::to_string(e.DimensioniFile[*scelto]);
    }
    return r;
  }

  Risposta Campo(const Condizione& c) const {
    if (!c.campo || StatoDi(f_, c.campo->membro) != StatoMembro::letto) return {Tri::ignoto, {}};
    const std::optional<ValoreCampo> v = c.campo->leggi(f_);
    if (!v) return {Tri::ignoto, {}};
    if (!Confronta(c.valore, c.campo->tipo, *v)) return {};
    Risposta r{Tri::vero, {}};
    r.l.value = TestoValore(*v);
    return r;
  }

  Risposta LivelloScript(const Condizione& c) {
    if (f_.script.stato != StatoMembro::letto) return {Tri::ignoto, {}};
    for (const std::string& livello : f_.script.livelli) {
      if (!CorrispondeTesto(c.modello, livello, buf_)) continue;
      Risposta r{Tri::vero, {}};
      r.l.file = livello;
      r.l.value = std::to_string(f_.script.livelli.size());
      return r;
    }
    return {};
  }

  Risposta Eseguibile(const Condizione& c) {
    if (f_.ambiente.stato != StatoAmbiente::letto) return {Tri::ignoto, {}};
    for (const formats::EseguibileAmbiente& ea : f_.ambiente.ambiente.eseguibili) {
      const host::Eseguibile& e = ea.eseguibile;
      if (c.cartella && *c.cartella != ea.cartella) continue;
      if (!CorrispondeTesto(c.modello, e.percorso, buf_)) continue;
      if (c.macchina && *c.macchina != formats::NomeMacchina(e.macchina)) continue;
      if (c.marcato && *c.marcato != ZonaDelWeb(e.zona)) continue;
      std::optional<std::string> valore;
      if (c.dllNonTrovata) {
        for (const host::DllImportata& d : e.importazioni)
          if (d.origine == host::Origine::nonTrovata && CorrispondeTesto(*c.dllNonTrovata, d.nome, buf_)) {
            valore = d.nome;
            break;
          }
        if (!valore) continue;
      }
      if (c.livello) {
        std::optional<std::string> livello = Livello(*c.livello, e);
        if (!livello) continue;
        if (!valore) valore = std::move(livello);
      }
      Risposta r{Tri::vero, {}};
      const std::size_t barra = e.percorso.find_last_of("\\/");
      r.l.file = barra == std::string::npos ? e.percorso : e.percorso.substr(barra + 1);
      r.l.value = valore ? *valore : formats::NomeMacchina(e.macchina);
      return r;
    }
    return {};
  }

  // The first layer of any of the executable's settings ("~ RUNASADMIN WINXPSP3") that matches.
  std::optional<std::string> Livello(const Modello& m, const host::Eseguibile& e) {
    for (const host::LivelloCompatibilita& l : e.livelli) {
      std::size_t i = 0;
      while (i < l.dati.size()) {
        const std::size_t inizio = l.dati.find_first_not_of(' ', i);
        if (inizio == std::string::npos) break;
        const std::size_t fine = std::min(l.dati.find(' ', inizio), l.dati.size());
        const std::string parola = l.dati.substr(inizio, fine - inizio);
        if (parola != "~" && CorrispondeTesto(m, parola, buf_)) return parola;
        i = fine;
      }
    }
    return std::nullopt;
  }

  const Fatti& f_;
  std::array<Indice, 3> indici_;
  std::string buf_;
};

std::string Riempi(std::string_view t, const Legami& l) {
  std::string out;
  for (std::size_t i = 0; i < t.size(); ++i) {
    if ((t[i] == '{' || t[i] == '}') && i + 1 < t.size() && t[i + 1] == t[i]) {
      out += t[i++];
      continue;
    }
    const std::size_t fine = t[i] == '{' ? t.find('}', i) : std::string_view::npos;
    if (fine == std::string_view::npos) {
      out += t[i];
      continue;
    }
    const std::string_view nome = t.substr(i + 1, fine - i - 1);
    const std::optional<std::string>& v = nome == "file" ? l.file : nome == "size" ? l.size : l.value;
    if (v) out += *v;
    i = fine;
  }
  return out;
}

bool SoloCifre(const std::string& s) {
  return !s.empty() && s.size() < 19 && s.find_first_not_of("0123456789") == std::string::npos;
}

Esito Finding(const Regola& regola, const EsitoRegola& e, const Legami& l) {
  Esito out;
  out.Id = regola.id;
  out.Livello = e.livello;
  out.Titolo = Riempi(e.titolo, l);
  for (const auto& [nome, testo] : e.evidenze) {
    if (testo == "{size}" && l.size && SoloCifre(*l.size))
      out.Evidenze.push_back({nome, static_cast<std::int64_t>(std::stoll(*l.size))});
    else
      out.Evidenze.push_back({nome, Riempi(testo, l)});
  }
  out.Azione = Riempi(e.azione, l);
  out.Regola = regola.file;
  return out;
}

}  // namespace

std::vector<RisultatoRegola> ValutaRegole(const std::vector<Regola>& regole, const Fatti& fatti) {
  Valutazione v(regole, fatti);
  std::vector<RisultatoRegola> out;
  out.reserve(regole.size());
  for (const Regola& regola : regole) {
    RisultatoRegola r;
    r.regola = &regola;
    for (std::size_t i = 0; i < regola.esiti.size(); ++i) {
      const EsitoRegola& e = regola.esiti[i];
      Risposta x{Tri::vero, {}};
      if (e.condizione) x = v.Valuta(*e.condizione);
      if (x.v != Tri::vero) continue;
      r.esito = i;
      r.finding = Finding(regola, e, x.l);
      break;
    }
    out.push_back(std::move(r));
  }
  return out;
}

}  // namespace analysis
