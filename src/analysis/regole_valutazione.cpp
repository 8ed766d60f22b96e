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

std::string TestoValore(const ValoreCampo& v) {
  if (const bool* b = std::get_if<bool>(&v)) return *b ? "true" : "false";
  if (const std::string* s = std::get_if<std::string>(&v)) return *s;
  const double x = std::get<double>(v);
  if (x > -1e15 && x < 1e15 && x == static_cast<double>(static_cast<long long>(x)))
    return std::to_string(static_cast<long long>(x));
  char t[32];
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

// The string hash under a name of its own: libstdc++ looks a key up in a map of up to 20 strings by comparing
// it with each, unhashed.
struct Hash {
  std::size_t operator()(const std::string& s) const { return std::hash<std::string_view>{}(s); }
};

// A first sieve before a lookup, for every entry of a large list: the last eight characters (folded) of a
// name, or of a path after its first `\\`, as one number, mixed with the length, and a set of such numbers as
// bits.
std::uint64_t Coda(std::string_view s, std::size_t salta, const std::array<char, 256>& piega) {
  std::uint64_t k = 0;
  for (std::size_t i = std::max(salta, s.size() > 8 ? s.size() - 8 : 0); i < s.size(); ++i)
    k = k * 131 + static_cast<unsigned char>(piega[static_cast<unsigned char>(s[i])]);
  return k;
}
std::uint64_t Chiave(std::uint64_t coda, std::size_t lunghezza) {
  return coda ^ (lunghezza * 0xC2B2AE3D27D4EB4FULL);
}
struct Setaccio {
  std::array<std::uint64_t, 64> bit{};
  static std::size_t Posto(std::uint64_t k) {
    return static_cast<std::size_t>((k * 0x9E3779B97F4A7C15ULL) >> 52);
  }
  void Metti(std::uint64_t k) { bit[Posto(k) / 64] |= std::uint64_t{1} << (Posto(k) % 64); }
  bool Forse(std::uint64_t k) const { return (bit[Posto(k) / 64] >> (Posto(k) % 64)) & 1; }
};

// What the rules ask of one list, and, once made, the entries each pattern matched (in list order).
struct Indice {
  std::unordered_map<std::string, std::vector<std::uint32_t>, Hash> nomi, percorsi, jolly;
  // Each distinct wildcard pattern and where its matches go (a map's values stay where they are), by the
  // last character a name must end in to match it (a pattern that ends in `*` or `?` under every one): an
  // entry is tried only against the patterns of its last character.
  using ModelloJolly = std::pair<const Modello*, std::vector<std::uint32_t>*>;
  std::vector<ModelloJolly> modelliJolly;
  std::array<std::vector<ModelloJolly>, 256> perUltima;
  // The lengths of the paths and names asked for: one of another length is not looked up; nor one that the
  // sieve does not hold.
  std::vector<bool> lunghezze, lunghezzeNomi;
  Setaccio setaccioNomi, setaccioPercorsi;
  bool fatto = false;

  void Chiedi(const Modello& m) {
    if (m.jolly) {
      const auto [voce, nuovo] = jolly.emplace(m.testo, std::vector<std::uint32_t>{});
      if (nuovo) modelliJolly.emplace_back(&m, &voce->second);
      return;
    }
    (m.percorso ? percorsi : nomi).emplace(m.testo, std::vector<std::uint32_t>{});
    std::vector<bool>& l = m.percorso ? lunghezze : lunghezzeNomi;
    if (l.size() <= m.testo.size()) l.resize(m.testo.size() + 1);
    l[m.testo.size()] = true;
    const std::uint64_t k = Chiave(Coda(m.testo, m.percorso ? 1 : 0, TabellaPiega()), m.testo.size());
    (m.percorso ? setaccioPercorsi : setaccioNomi).Metti(k);
  }

  void Fai(const formats::ElencoFile& e) {
    fatto = true;
    const std::array<char, 256>& piega = TabellaPiega();
    for (const ModelloJolly& mj : modelliJolly) {
      const char ultima = mj.first->testo.back();
      for (int c = 0; c < 256; ++c)
        if (ultima == '*' || ultima == '?' || piega[static_cast<std::size_t>(c)] == ultima)
          perUltima[static_cast<std::size_t>(c)].push_back(mj);
    }
    const std::size_t n = VociUsabili(e);
    std::string percorso, nome;
    for (std::size_t i = 0; i < n; ++i) {
      const std::string_view voce = e.NomiFile[i];
      const bool radice = !voce.empty() && (voce.front() == '\\' || voce.front() == '/');
      std::size_t inizioNome = voce.size();
      while (inizioNome > 0 && voce[inizioNome - 1] != '\\' && voce[inizioNome - 1] != '/') --inizioNome;
      const std::string_view solo = voce.substr(inizioNome);
      const std::size_t lunghezza = voce.size() + (radice ? 0 : 1);
      const auto indice = static_cast<std::uint32_t>(i);
      // Folded only when a sieve or a pattern lets it through: most entries are looked at, never copied.
      bool haPercorso = false, haNome = false;
      const auto Percorso = [&]() -> const std::string& {
        if (!haPercorso) {
          Piega(voce, percorso);
          if (!radice) percorso.insert(percorso.begin(), '\\');
          haPercorso = true;
        }
        return percorso;
      };
      const auto NomeEntrata = [&]() -> const std::string& {
        if (!haNome) Piega(solo, nome);
        haNome = true;
        return nome;
      };
      // A name of eight characters or more ends as its path does: one tail serves both sieves.
      const std::uint64_t codaPercorso = Coda(voce, radice ? 1 : 0, piega);
      const std::uint64_t codaNome = solo.size() >= 8 ? codaPercorso : Coda(solo, 0, piega);
      if (solo.size() < lunghezzeNomi.size() && lunghezzeNomi[solo.size()] &&
          setaccioNomi.Forse(Chiave(codaNome, solo.size())))
        if (const auto it = nomi.find(NomeEntrata()); it != nomi.end()) it->second.push_back(indice);
      if (lunghezza < lunghezze.size() && lunghezze[lunghezza] &&
          setaccioPercorsi.Forse(Chiave(codaPercorso, lunghezza)))
        if (const auto it = percorsi.find(Percorso()); it != percorsi.end()) it->second.push_back(indice);
      for (const auto& [m, trovati] : perUltima[voce.empty() ? 0 : static_cast<unsigned char>(voce.back())])
        if (Corrisponde(*m, m->percorso ? Percorso() : NomeEntrata())) trovati->push_back(indice);
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
    const StatoMembro s = f_.Stato(c.membro);
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
    if (!c.campo || f_.Stato(c.campo->membro) != StatoMembro::letto) return {Tri::ignoto, {}};
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
  if (out.Livello != Gravita::pass) out.Risposta = Riempi(e.risposta.empty() ? e.azione : e.risposta, l);
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
