// Reading a rules file: the JSON (comments allowed) parsed within the limits, then every rule checked for
// meaning, each fault kept with the JSON pointer of its value; one walk of the text then tells each its line
// and column. A file with any fault gives no rules.
#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <memory>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "analysis/id_esiti.h"
#include "analysis/regole.h"
#include "analysis/regole_condizione.h"
#include "analysis/regole_localizzatore.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {
namespace {

// Insertion into its objects is quadratic in their keys: the parser callback holds each to kChiaviMassime.
using Json = nlohmann::ordered_json;

constexpr std::size_t kTestoMassimo = 8 << 20;
constexpr int kProfondita = 32;
// No object of the format has more keys than an evidence's 16; past this the file is refused unparsed.
constexpr std::size_t kChiaviMassime = 64;
constexpr std::size_t kRegoleMassime = 10000;
// No array of the format holds more values than the rules of a file.
constexpr Limiti kLimiti{kProfondita, kChiaviMassime, kRegoleMassime};
constexpr std::size_t kEsitiMassimi = 16;
constexpr int kCondizioniMassime = 256;
constexpr std::size_t kStringaMassima = 4096;
constexpr std::size_t kEvidenzeMassime = 16;
constexpr std::size_t kErroriMassimi = 100;
constexpr double kInteroMassimo = 9007199254740992.0;  // 2^53

// What a condition's matches may fill in.
constexpr unsigned kFile = 1, kSize = 2, kValue = 4;

constexpr std::array<std::string_view, 8> kTipi = {"all",  "any",   "not",          "member",
                                                   "file", "field", "script_level", "exe"};

struct Difetto {
  std::string ptr;
  // At the member's name rather than its value (an unknown key).
  bool chiave = false;
  std::string testo;
  // Another place the text names the line of ("first at line N").
  std::string primo;
};

std::string Virgolette(std::string_view s) {
  std::string t(s.substr(0, 64));
  if (s.size() > 64) t += "...";
  return "\"" + t + "\"";
}

class Verifica {
 public:
  std::vector<Difetto> difetti;

  void Errore(const std::string& ptr, std::string testo, bool chiave = false, std::string primo = {}) {
    if (basta_) return;
    if (difetti.size() == kErroriMassimi) {
      difetti.push_back({ptr, chiave, "too many errors", {}});
      basta_ = true;
      return;
    }
    difetti.push_back({ptr, chiave, std::move(testo), std::move(primo)});
  }
  bool Basta() const { return basta_; }

  bool Oggetto(const Json& j, const std::string& ptr) {
    if (j.is_object()) return true;
    Errore(ptr, "expected an object");
    return false;
  }

  // Every key of `o` one of `ammesse`.
  void Chiavi(const Json& o, const std::string& ptr, std::initializer_list<std::string_view> ammesse) {
    for (const auto& [k, v] : o.items())
      if (std::find(ammesse.begin(), ammesse.end(), k) == ammesse.end())
        Errore(ptr + "/" + Segmento(k), "unknown key " + Virgolette(k), true);
  }

  const Json* Richiesto(const Json& o, const char* nome, const std::string& ptr) {
    const auto it = o.find(nome);
    if (it != o.end()) return &*it;
    Errore(ptr, std::string("missing key \"") + nome + "\"");
    return nullptr;
  }

  std::optional<std::string> Testo(const Json& v, const std::string& ptr) {
    if (!v.is_string()) {
      Errore(ptr, "expected a text");
      return std::nullopt;
    }
    const auto& s = v.get_ref<const std::string&>();
    if (s.size() > kStringaMassima) {
      Errore(ptr, "a text longer than 4096 bytes");
      return std::nullopt;
    }
    return host::DaUtf8(s);
  }

  std::optional<double> Numero(const Json& v, const std::string& ptr, bool intero) {
    if (!v.is_number() || (intero && v.is_number_float() && std::floor(v.get<double>()) != v.get<double>())) {
      Errore(ptr, intero ? "expected a whole number" : "expected a number");
      return std::nullopt;
    }
    const double x = v.get<double>();
    if (!std::isfinite(x) || (intero && std::fabs(x) > kInteroMassimo) ||
        (v.is_number_unsigned() && v.get<std::uint64_t>() > 9007199254740992ull)) {
      Errore(ptr, "a number beyond 2^53");
      return std::nullopt;
    }
    return x;
  }

  std::optional<bool> Booleano(const Json& v, const std::string& ptr) {
    if (v.is_boolean()) return v.get<bool>();
    Errore(ptr, "expected true or false");
    return std::nullopt;
  }

  // One of the words, by its index.
  std::optional<std::size_t> Parola(const Json& v, const std::string& ptr,
                                    std::span<const std::string_view> parole, const char* nome) {
    const auto t = Testo(v, ptr);
    if (!t) return std::nullopt;
    for (std::size_t i = 0; i < parole.size(); ++i)
      if (parole[i] == *t) return i;
    std::string elenco;
    for (std::size_t i = 0; i < parole.size(); ++i)
      elenco += (i ? i + 1 == parole.size() ? " or \"" : ", \"" : "\"") + std::string(parole[i]) + "\"";
    Errore(ptr, std::string(nome) + " must be " + elenco);
    return std::nullopt;
  }
  std::optional<std::size_t> Parola(const Json& v, const std::string& ptr,
                                    std::initializer_list<std::string_view> parole, const char* nome) {
    return Parola(v, ptr, std::span(parole.begin(), parole.size()), nome);
  }

  // A name, or with `percorsi` a path from a list's folder: a folder in the middle of a name would match
  // nothing, so it is refused.
  std::optional<Modello> Pattern(const Json& v, const std::string& ptr, bool percorsi = true) {
    const auto t = Testo(v, ptr);
    if (!t) return std::nullopt;
    if (t->empty()) {
      Errore(ptr, "an empty pattern");
      return std::nullopt;
    }
    Modello m = FaiModello(*t, percorsi);
    if (percorsi && !m.percorso && m.testo.find('\\') != std::string::npos) {
      Errore(ptr, "a pattern with a folder begins with / (a path from the list's folder)");
      return std::nullopt;
    }
    return m;
  }

  // A comparison against a field of this type: a scalar for "=", or an object of operators.
  Confronto Cmp(const Json& v, const std::string& ptr, TipoCampo tipo) {
    Confronto c;
    if (!v.is_object()) {
      if (auto t = Termine1(Operatore::uguale, "=", v, ptr, tipo)) c.push_back(std::move(*t));
      return c;
    }
    if (v.empty()) Errore(ptr, "a comparison needs an operator");
    for (const auto& voce : v.items()) {
      const std::string& k = voce.key();
      const Json& operando = voce.value();
      static constexpr std::array<std::pair<std::string_view, Operatore>, 8> kOp = {{
          {"=", Operatore::uguale},
          {"!=", Operatore::diverso},
          {"<", Operatore::minore},
          {"<=", Operatore::minoreUguale},
          {">", Operatore::maggiore},
          {">=", Operatore::maggioreUguale},
          {"matches", Operatore::corrisponde},
          {"bits", Operatore::bit},
      }};
      const auto op = std::find_if(kOp.begin(), kOp.end(), [&](const auto& o) { return o.first == k; });
      const std::string dove = ptr + "/" + Segmento(k);
      if (op == kOp.end()) {
        Errore(dove, "unknown operator " + Virgolette(k), true);
        continue;
      }
      if (auto t = Termine1(op->second, op->first, operando, dove, tipo)) c.push_back(std::move(*t));
    }
    return c;
  }

 private:
  std::optional<Termine> Termine1(Operatore op, std::string_view nome, const Json& v, const std::string& ptr,
                                  TipoCampo tipo) {
    Termine t;
    t.op = op;
    const bool numerico = tipo == TipoCampo::intero || tipo == TipoCampo::numero;
    const bool testuale = tipo == TipoCampo::testo || tipo == TipoCampo::versione;
    const bool ordine = op != Operatore::uguale && op != Operatore::diverso;
    const bool adatto = op == Operatore::bit           ? tipo == TipoCampo::intero
                        : op == Operatore::corrisponde ? testuale
                        : ordine                       ? numerico || tipo == TipoCampo::versione
                                                       : true;
    if (!adatto) {
      Errore(ptr, Virgolette(nome) + " does not suit a field of type " + NomeTipo(tipo));
      return std::nullopt;
    }
    if (op == Operatore::corrisponde) {
      auto m = Pattern(v, ptr, false);
      if (!m) return std::nullopt;
      t.modello = std::move(*m);
    } else if (numerico) {
      const auto x = Numero(v, ptr, tipo == TipoCampo::intero || op == Operatore::bit);
      if (!x) return std::nullopt;
      t.numero = *x;
      if (op == Operatore::bit) t.bit = static_cast<std::int64_t>(*x);
    } else if (testuale) {
      const auto s = Testo(v, ptr);
      if (!s) return std::nullopt;
      Piega(support::PulisciStringa(*s), t.testo);
    } else {
      const auto b = Booleano(v, ptr);
      if (!b) return std::nullopt;
      t.booleano = *b;
    }
    return t;
  }

  bool basta_ = false;
};

class LetturaRegole {
 public:
  explicit LetturaRegole(Verifica& v) : v_(v) {}

  void Documento(const Json& j, std::vector<Regola>& regole, std::vector<std::string>& puntatoriId) {
    if (!v_.Oggetto(j, "")) return;
    if (const auto f = j.find("format");
        f != j.end() && f->is_number_integer() && f->get<double>() > kFormatoRegole) {
      v_.Errore("/format", "format " + f->dump() + " is newer than this program reads (" +
                               std::to_string(kFormatoRegole) + ")");
      return;
    }
    v_.Chiavi(j, "", {"format", "rules"});
    if (const Json* f = v_.Richiesto(j, "format", "")) {
      const auto n = v_.Numero(*f, "/format", true);
      if (n && *n != kFormatoRegole) v_.Errore("/format", "format must be 1");
    }
    const Json* r = v_.Richiesto(j, "rules", "");
    if (!r) return;
    if (!r->is_array()) {
      v_.Errore("/rules", "expected an array");
      return;
    }
    for (std::size_t i = 0; i < r->size() && !v_.Basta(); ++i) {
      const std::string ptr = "/rules/" + std::to_string(i);
      Regola regola = UnaRegola((*r)[i], ptr);
      regole.push_back(std::move(regola));
      puntatoriId.push_back(ptr + "/id");
    }
  }

 private:
  Regola UnaRegola(const Json& r, const std::string& ptr) {
    Regola regola;
    if (!v_.Oggetto(r, ptr)) return regola;
    v_.Chiavi(r, ptr, {"id", "outcomes"});
    if (const Json* id = v_.Richiesto(r, "id", ptr)) Id(*id, ptr + "/id", regola);
    const Json* esiti = v_.Richiesto(r, "outcomes", ptr);
    if (!esiti) return regola;
    const std::string dove = ptr + "/outcomes";
    if (!esiti->is_array() || esiti->empty() || esiti->size() > kEsitiMassimi) {
      v_.Errore(dove, "expected an array of 1 to 16 outcomes");
      return regola;
    }
    contate_ = 0;
    for (std::size_t i = 0; i < esiti->size(); ++i)
      regola.esiti.push_back(UnEsito((*esiti)[i], dove + "/" + std::to_string(i)));
    return regola;
  }

  void Id(const Json& v, const std::string& ptr, Regola& regola) {
    const auto id = v_.Testo(v, ptr);
    if (!id) return;
    const bool valido =
        !id->empty() && id->size() <= 64 && (*id)[0] >= 'a' && (*id)[0] <= 'z' &&
        std::all_of(id->begin(), id->end(), [](char c) {
          return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '_';
        });
    if (!valido) {
      v_.Errore(ptr, "an id is 1 to 64 of a-z 0-9 . - _, beginning with a letter");
      return;
    }
    if (CercaEsito(*id)) {
      v_.Errore(ptr, Virgolette(*id) + " is the id of a built-in finding");
      return;
    }
    const auto [primo, nuovo] = ids_.emplace(*id, ptr);
    if (!nuovo) v_.Errore(ptr, "duplicate id " + Virgolette(*id), false, primo->second);
    regola.id = *id;
  }

  EsitoRegola UnEsito(const Json& o, const std::string& ptr) {
    EsitoRegola e;
    if (!v_.Oggetto(o, ptr)) return e;
    v_.Chiavi(o, ptr, {"severity", "title", "evidence", "action", "answer", "when"});
    if (const Json* s = v_.Richiesto(o, "severity", ptr))
      if (const auto g = v_.Parola(*s, ptr + "/severity", kNomiGravita, "severity"))
        e.livello = static_cast<Gravita>(*g);
    unsigned legami = 0;
    if (const auto w = o.find("when"); w != o.end()) {
      auto c = std::make_shared<Condizione>(UnaCondizione(*w, ptr + "/when", legami));
      e.condizione = std::move(c);
    }
    if (const Json* t = v_.Richiesto(o, "title", ptr)) {
      if (const auto s = v_.Testo(*t, ptr + "/title")) {
        if (s->empty()) v_.Errore(ptr + "/title", "an empty title");
        Segnaposti(*s, legami, ptr + "/title");
        e.titolo = *s;
      }
    }
    if (const auto a = o.find("action"); a != o.end()) {
      if (const auto s = v_.Testo(*a, ptr + "/action")) {
        Segnaposti(*s, legami, ptr + "/action");
        e.azione = *s;
      }
    }
    if (const auto a = o.find("answer"); a != o.end()) {
      if (const auto s = v_.Testo(*a, ptr + "/answer")) {
        Segnaposti(*s, legami, ptr + "/answer");
        e.risposta = *s;
      }
    }
    if (const auto ev = o.find("evidence"); ev != o.end()) {
      const std::string dove = ptr + "/evidence";
      if (!v_.Oggetto(*ev, dove)) return e;
      if (ev->size() > kEvidenzeMassime) v_.Errore(dove, "more than 16 evidence entries");
      for (const auto& [k, v] : ev->items()) {
        const std::string qui = dove + "/" + Segmento(k);
        if (k.size() > kStringaMassima) v_.Errore(qui, "a name longer than 4096 bytes", true);
        if (const auto s = v_.Testo(v, qui)) {
          Segnaposti(*s, legami, qui);
          e.evidenze.emplace_back(host::DaUtf8(k), *s);
        }
      }
    }
    return e;
  }

  void Segnaposti(std::string_view t, unsigned legami, const std::string& ptr) {
    for (std::size_t i = 0; i < t.size(); ++i) {
      if ((t[i] == '{' || t[i] == '}') && i + 1 < t.size() && t[i + 1] == t[i]) {
        ++i;
        continue;
      }
      if (t[i] == '}') {
        v_.Errore(ptr, "a lone } (write }} for one)");
        return;
      }
      if (t[i] != '{') continue;
      const std::size_t fine = t.find('}', i);
      const std::string_view nome = t.substr(i + 1, fine == std::string_view::npos ? 0 : fine - i - 1);
      const unsigned l = nome == "file" ? kFile : nome == "size" ? kSize : nome == "value" ? kValue : 0u;
      if (fine == std::string_view::npos || !l) {
        v_.Errore(ptr, fine == std::string_view::npos
                           ? "a lone { (write {{ for one)"
                           : "unknown placeholder {" + std::string(nome.substr(0, 64)) +
                                 "} (there are {file}, {size} and {value})");
        return;
      }
      if (!(legami & l)) {
        v_.Errore(ptr, "no condition of this outcome fills {" + std::string(nome) + "}");
        return;
      }
      i = fine;
    }
  }

  Condizione UnaCondizione(const Json& c, const std::string& ptr, unsigned& legami) {
    Condizione k;
    if (++contate_ > kCondizioniMassime) {
      if (contate_ == kCondizioniMassime + 1) v_.Errore(ptr, "more than 256 conditions in one rule");
      return k;
    }
    if (!v_.Oggetto(c, ptr)) return k;
    std::size_t tipo = kTipi.size(), quanti = 0;
    for (std::size_t i = 0; i < kTipi.size(); ++i)
      if (c.contains(kTipi[i])) tipo = i, ++quanti;
    if (quanti != 1) {
      v_.Errore(ptr, "a condition has exactly one of all, any, not, member, file, field, script_level, exe");
      return k;
    }
    k.tipo = static_cast<TipoCondizione>(tipo);
    const Json& v = c[std::string(kTipi[tipo])];
    const std::string dove = ptr + "/" + std::string(kTipi[tipo]);
    switch (k.tipo) {
      case TipoCondizione::tutte:
      case TipoCondizione::una:
        v_.Chiavi(c, ptr, {kTipi[tipo]});
        if (!v.is_array() || v.empty()) {
          v_.Errore(dove, "expected a non-empty array of conditions");
          break;
        }
        for (std::size_t i = 0; i < v.size() && contate_ <= kCondizioniMassime; ++i)
          k.figli.push_back(UnaCondizione(v[i], dove + "/" + std::to_string(i), legami));
        break;
      case TipoCondizione::non: {
        v_.Chiavi(c, ptr, {"not"});
        unsigned nessuno = 0;
        k.figli.push_back(UnaCondizione(v, dove, nessuno));
        break;
      }
      case TipoCondizione::membro:
        Membro(c, v, ptr, dove, k);
        legami |= kFile;
        break;
      case TipoCondizione::file:
        File(c, v, ptr, dove, k);
        legami |= kFile | kSize;
        break;
      case TipoCondizione::campo:
        Campo(c, v, ptr, dove, k);
        legami |= kValue;
        break;
      case TipoCondizione::livelloScript:
        v_.Chiavi(c, ptr, {"script_level"});
        if (auto m = v_.Pattern(v, dove)) k.modello = std::move(*m);
        legami |= kFile | kValue;
        break;
      case TipoCondizione::eseguibile:
        Eseguibile(c, v, ptr, dove, k);
        legami |= kFile | kValue;
        break;
    }
    return k;
  }

  void Membro(const Json& c, const Json& v, const std::string& ptr, const std::string& dove, Condizione& k) {
    v_.Chiavi(c, ptr, {"member", "state"});
    if (const auto nome = v_.Testo(v, dove)) {
      const auto voce = std::find_if(collection::kMembri.begin(), collection::kMembri.end(),
                                     [&](const auto& m) { return host::UgualiSenzaCaso(m.nomeDati, *nome); });
      if (voce == collection::kMembri.end())
        v_.Errore(dove, "unknown member " + Virgolette(*nome));
      else
        k.membro = voce->membro;
    }
    if (const auto s = c.find("state"); s != c.end())
      if (const auto i = v_.Parola(*s, ptr + "/state", {"present", "absent", "damaged", "read"}, "state"))
        k.stato = static_cast<StatoVoluto>(*i);
  }

  void File(const Json& c, const Json& v, const std::string& ptr, const std::string& dove, Condizione& k) {
    v_.Chiavi(c, ptr, {"file", "in", "present", "size"});
    if (auto m = v_.Pattern(v, dove)) k.modello = std::move(*m);
    if (const Json* in = v_.Richiesto(c, "in", ptr))
      if (const auto i = v_.Parola(*in, ptr + "/in", {"editor", "ordelio", "archive"}, "in"))
        k.lista = static_cast<Lista>(*i);
    if (const auto p = c.find("present"); p != c.end())
      if (const auto b = v_.Booleano(*p, ptr + "/present")) k.presente = *b;
    if (const auto s = c.find("size"); s != c.end())
      k.dimensione = v_.Cmp(*s, ptr + "/size", TipoCampo::intero);
  }

  void Campo(const Json& c, const Json& v, const std::string& ptr, const std::string& dove, Condizione& k) {
    v_.Chiavi(c, ptr, {"field", "value"});
    if (const auto nome = v_.Testo(v, dove)) {
      k.campo = CercaCampo(*nome);
      if (!k.campo) v_.Errore(dove, "unknown field " + Virgolette(*nome));
    }
    const Json* valore = v_.Richiesto(c, "value", ptr);
    if (valore && k.campo) k.valore = v_.Cmp(*valore, ptr + "/value", k.campo->tipo);
  }

  void Eseguibile(const Json& c, const Json& v, const std::string& ptr, const std::string& dove,
                  Condizione& k) {
    v_.Chiavi(c, ptr, {"exe", "in", "machine", "dll_not_found", "layer", "web_marked"});
    if (auto m = v_.Pattern(v, dove)) k.modello = std::move(*m);
    if (const auto in = c.find("in"); in != c.end())
      if (const auto i = v_.Parola(*in, ptr + "/in", {"editor", "ordelio"}, "in"))
        k.cartella = static_cast<formats::CartellaEseguibile>(*i);
    if (const auto m = c.find("machine"); m != c.end())
      if (const auto i = v_.Parola(*m, ptr + "/machine", {"x86", "x64", "arm64", "other"}, "machine"))
        k.macchina = std::array{"x86", "x64", "arm64", "other"}[*i];
    if (const auto d = c.find("dll_not_found"); d != c.end())
      k.dllNonTrovata = v_.Pattern(*d, ptr + "/dll_not_found");
    if (const auto l = c.find("layer"); l != c.end()) k.livello = v_.Pattern(*l, ptr + "/layer");
    if (const auto w = c.find("web_marked"); w != c.end()) k.marcato = v_.Booleano(*w, ptr + "/web_marked");
  }

  Verifica& v_;
  int contate_ = 0;
  std::unordered_map<std::string, std::string> ids_;
};

// The document built from the parser's events, as nlohmann's own builder does, but held to the limits as it
// goes: a container opened too deep or a key past the most one object may have stops the parse. (The
// parser's callback form would do the same, but it looks through a container's values again each time one
// of them closes, which a file of many rules makes quadratic.)
class Costruttore {
 public:
  explicit Costruttore(Json& radice) : radice_(radice) {}

  bool null() { return Metti(nullptr) != nullptr; }
  bool boolean(bool v) { return Metti(v) != nullptr; }
  bool number_integer(Json::number_integer_t v) { return Metti(v) != nullptr; }
  bool number_unsigned(Json::number_unsigned_t v) { return Metti(v) != nullptr; }
  bool number_float(Json::number_float_t v, const Json::string_t&) { return Metti(v) != nullptr; }
  bool string(Json::string_t& v) { return Metti(std::move(v)) != nullptr; }
  bool binary(Json::binary_t&) { return false; }
  bool start_object(std::size_t) {
    if (!Apri(Json::object())) return false;
    chiavi_.push_back(0);
    return true;
  }
  bool key(Json::string_t& k) {
    if (++chiavi_.back() > kChiaviMassime) {
      oltre = true;
      return false;
    }
    chiave_ = &(*pila_.back())[k];
    return true;
  }
  bool end_object() {
    chiavi_.pop_back();
    pila_.pop_back();
    return true;
  }
  bool start_array(std::size_t) { return Apri(Json::array()); }
  bool end_array() {
    pila_.pop_back();
    return true;
  }
  bool parse_error(std::size_t posizione, const std::string&, const Json::exception& e) {
    errore.emplace(e.id, e.what());
    dove = posizione;
    return false;
  }

  bool oltre = false;
  struct Errore {
    int id;
    std::string what;
    Errore(int i, const char* w) : id(i), what(w) {}
  };
  std::optional<Errore> errore;
  std::size_t dove = 0;

 private:
  bool Apri(Json v) {
    if (pila_.size() >= static_cast<std::size_t>(kProfondita)) {
      oltre = true;
      return false;
    }
    Json* messo = Metti(std::move(v));
    if (messo) pila_.push_back(messo);
    return messo != nullptr;
  }
  // Into the open array, or as the value of the key just read; the containers on the stack are not touched
  // while one inside them is open, so the pointers to them stay good.
  Json* Metti(Json v) {
    if (pila_.empty()) {
      radice_ = std::move(v);
      return &radice_;
    }
    Json& cima = *pila_.back();
    if (cima.is_array()) {
      if (cima.size() >= kRegoleMassime) {
        oltre = true;
        return nullptr;
      }
      cima.push_back(std::move(v));
      return &cima.back();
    }
    *chiave_ = std::move(v);
    return chiave_;
  }

  Json& radice_;
  std::vector<Json*> pila_;
  std::vector<std::size_t> chiavi_;
  Json* chiave_ = nullptr;
};

// The text after nlohmann's "[json.exception...] parse error at line L, column C: ".
std::string MessaggioSintassi(const std::string& what) {
  std::string m = what;
  const std::size_t colonna = m.find("column ");
  const std::size_t due = colonna == std::string::npos ? std::string::npos : m.find(": ", colonna);
  if (due != std::string::npos) m = m.substr(due + 2);
  if (m.size() > 200) m = m.substr(0, 200) + "...";
  return m;
}

}  // namespace

std::string TestoErrore(const ErroreRegole& e) {
  if (e.riga <= 0) return e.file + ": " + e.testo;
  return e.file + ":" + std::to_string(e.riga) + ":" + std::to_string(e.colonna) + ": " + e.testo;
}

FileRegole AnalizzaRegole(std::string_view testo, const std::string& file) {
  FileRegole out;
  out.file = file;
  auto errore = [&](std::pair<int, int> rc, std::string t) {
    out.errori.push_back({file, rc.first, rc.second, std::move(t)});
  };
  if (testo.size() > kTestoMassimo) {
    errore({1, 1}, "the file is larger than 8 MiB");
    return out;
  }
  const Righe righe(testo);
  Json j;
  Costruttore c(j);
  Json::sax_parse(testo.begin(), testo.end(), &c, nlohmann::json::input_format_t::json, true, true);
  const bool oltre = c.oltre, infinito = c.errore && c.errore->id == 406;
  if (oltre || infinito) {
    // The first place past a limit; the parser stopped there.
    const Mappa m = Localizza(testo, {}, kLimiti);
    const std::pair<std::size_t, const char*> luoghi[] = {
        {m.troppoProfondo, "nested deeper than 32 levels"},
        {m.troppeChiavi, "more than 64 keys in one object"},
        {m.numeroInfinito, "a number too large"},
        {m.troppiValori, m.arrayTroppoLungo == "/rules" ? "more than 10000 rules in one file"
                                                        : "more than 10000 values in one array"},
    };
    const auto primo = std::min_element(std::begin(luoghi), std::end(luoghi),
                                        [](const auto& a, const auto& b) { return a.first < b.first; });
    if (primo->first != kNessunLuogo)
      errore(righe.Di(primo->first), primo->second);
    else
      errore({1, 1}, oltre ? "nested deeper than 32 levels" : "a number too large");
    return out;
  }
  if (c.errore) {
    errore(righe.Di(c.dove > 0 ? c.dove - 1 : 0), MessaggioSintassi(c.errore->what));
    return out;
  }

  Verifica v;
  std::vector<Regola> regole;
  std::vector<std::string> puntatoriId;
  LetturaRegole(v).Documento(j, regole, puntatoriId);

  std::unordered_set<std::string> cercati;
  for (const Difetto& d : v.difetti) {
    cercati.insert(d.ptr);
    if (!d.primo.empty()) cercati.insert(d.primo);
  }
  if (v.difetti.empty()) cercati.insert(puntatoriId.begin(), puntatoriId.end());
  const Mappa m = Localizza(testo, cercati, kLimiti);
  auto luogo = [&](const std::string& ptr, bool chiave) {
    const auto it = m.luoghi.find(ptr);
    if (it == m.luoghi.end()) return std::pair{1, 1};
    const std::size_t o = chiave && it->second.chiave != kNessunLuogo ? it->second.chiave : it->second.valore;
    return righe.Di(o);
  };
  for (const Difetto& d : v.difetti) {
    std::string t = d.testo;
    if (!d.primo.empty()) t += " (first at line " + std::to_string(luogo(d.primo, false).first) + ")";
    errore(luogo(d.ptr, d.chiave), std::move(t));
  }
  // In the file's order; "too many errors" stays last.
  const bool troppi = v.difetti.size() > kErroriMassimi;
  std::stable_sort(out.errori.begin(), out.errori.end() - (troppi ? 1 : 0),
                   [](const ErroreRegole& a, const ErroreRegole& b) {
                     return std::pair(a.riga, a.colonna) < std::pair(b.riga, b.colonna);
                   });
  if (!out.errori.empty()) return out;
  for (std::size_t i = 0; i < regole.size(); ++i) {
    regole[i].file = file;
    regole[i].riga = luogo(puntatoriId[i], false).first;
  }
  out.regole = std::move(regole);
  return out;
}

FileRegole LeggiRegole(const std::string& file) {
  int err = 0;
  const std::int64_t lunghezza = support::FileExists(file) ? host::LunghezzaFile(file, &err) : -1;
  if (lunghezza < 0 || err) {
    FileRegole out;
    out.file = file;
    out.errori.push_back({file, 0, 0, "the file cannot be read"});
    return out;
  }
  if (lunghezza > static_cast<std::int64_t>(kTestoMassimo)) {
    FileRegole out;
    out.file = file;
    out.errori.push_back({file, 1, 1, "the file is larger than 8 MiB"});
    return out;
  }
  return AnalizzaRegole(support::LeggiFile(file), file);
}

}  // namespace analysis
