#include "formats/ambiente.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "host/macchina.h"

namespace formats {
namespace {

// Written with the keys in the order a reader expects them; read into the hashed form, whose look-ups stay
// cheap however many keys a hostile document puts in one object.
using Json = nlohmann::ordered_json;
using JsonLetto = nlohmann::json;

// Nothing a check run writes nests deeper; a deeper document is refused before it is parsed.
constexpr int kProfonditaMassima = 8;
// No path or name a check run records is longer.
constexpr std::size_t kTestoMassimo = 32767;

template <typename E>
struct Parola {
  E valore;
  const char* parola;
};
constexpr std::array<Parola<host::MacchinaPe>, 4> kMacchine = {{
    {host::MacchinaPe::x86, "x86"},
    {host::MacchinaPe::x64, "x64"},
    {host::MacchinaPe::altra, "other"},
    {host::MacchinaPe::nessuna, "not a program"},
}};
constexpr std::array<Parola<host::Origine>, 5> kOrigini = {{
    {host::Origine::nonTrovata, "not found"},
    {host::Origine::cartellaEseguibile, "beside the program"},
    {host::Origine::sistema, "system folder"},
    {host::Origine::cartellaWindows, "Windows folder"},
    {host::Origine::apiSet, "API set"},
}};
constexpr std::array<Parola<CartellaEseguibile>, 2> kCartelle = {{
    {CartellaEseguibile::editor, "editor"},
    {CartellaEseguibile::ordelio, "ordelio"},
}};

template <typename E, std::size_t N>
const char* ParolaDi(const std::array<Parola<E>, N>& tabella, E v) {
  for (const auto& p : tabella)
    if (p.valore == v) return p.parola;
  return "";
}

std::string Utf8(const std::string& cp1252) {
  return host::VersoUtf8(cp1252);
}

Json Testi(const std::vector<std::string>& testi) {
  Json a = Json::array();
  for (const auto& t : testi) a.push_back(Utf8(t));
  return a;
}

Json Zona(int zona) {
  return zona >= 0 ? Json(zona) : Json(nullptr);
}

Json Eseguibile(const EseguibileAmbiente& ea) {
  const host::Eseguibile& e = ea.eseguibile;
  Json importazioni = Json::array();
  for (const host::DllImportata& d : e.importazioni)
    importazioni.push_back({{"dll", Utf8(d.nome)},
                            {"found", ParolaDi(kOrigini, d.origine)},
                            {"path", Utf8(d.percorso)},
                            {"zone", Zona(d.zona)}});
  Json livelli = Json::array();
  for (const host::LivelloCompatibilita& l : e.livelli)
    livelli.push_back({{"root", Utf8(l.radice)}, {"layers", Utf8(l.dati)}});
  return {{"folder", ParolaDi(kCartelle, ea.cartella)},
          {"path", Utf8(e.percorso)},
          {"machine", ParolaDi(kMacchine, e.macchina)},
          {"problem", Utf8(e.problema)},
          {"imports", std::move(importazioni)},
          {"layers", std::move(livelli)},
          {"zone", Zona(e.zona)}};
}

template <typename T>
Json Facoltativo(const std::optional<T>& v) {
  return v ? Json(*v) : Json(nullptr);
}

// Reading: every field is checked for its type and range; the first that fails ends the reading.
class Lettura {
 public:
  explicit Lettura(std::string* motivo) : motivo_(motivo) {}

  bool Errore(const std::string& campo, const char* perche) {
    if (motivo_->empty()) *motivo_ = campo + ": " + perche;
    return false;
  }

  const JsonLetto* Campo(const JsonLetto& o, const char* nome, const std::string& dove) {
    const auto it = o.find(nome);
    if (it == o.end()) {
      Errore(dove + nome, "missing");
      return nullptr;
    }
    return &*it;
  }

  bool Testo(const JsonLetto& o, const char* nome, const std::string& dove, std::string* out) {
    const JsonLetto* v = Campo(o, nome, dove);
    if (!v) return false;
    if (!v->is_string()) return Errore(dove + nome, "not a text");
    const auto& s = v->get_ref<const std::string&>();
    if (s.size() > kTestoMassimo) return Errore(dove + nome, "too long");
    *out = host::DaUtf8(s);
    return true;
  }

  template <typename T>
  bool Numero(const JsonLetto& o, const char* nome, const std::string& dove, long long minimo,
              long long massimo, T* out) {
    const JsonLetto* v = Campo(o, nome, dove);
    if (!v) return false;
    if (!v->is_number_integer()) return Errore(dove + nome, "not a whole number");
    const auto n = v->get<long long>();
    if (v->is_number_unsigned() && v->get<unsigned long long>() > static_cast<unsigned long long>(massimo))
      return Errore(dove + nome, "out of range");
    if (n < minimo || n > massimo) return Errore(dove + nome, "out of range");
    *out = static_cast<T>(n);
    return true;
  }

  template <typename T>
  bool Facoltativo(const JsonLetto& o, const char* nome, const std::string& dove, long long massimo,
                   std::optional<T>* out) {
    const JsonLetto* v = Campo(o, nome, dove);
    if (!v) return false;
    if (v->is_null()) {
      out->reset();
      return true;
    }
    T n{};
    if (!Numero(o, nome, dove, 0, massimo, &n)) return false;
    *out = n;
    return true;
  }

  bool Zona(const JsonLetto& o, const std::string& dove, int* out) {
    std::optional<int> z;
    if (!Facoltativo(o, "zone", dove, 4, &z)) return false;
    *out = z.value_or(host::kZonaNessuna);
    return true;
  }

  bool Vero(const JsonLetto& o, const char* nome, const std::string& dove, bool* out) {
    const JsonLetto* v = Campo(o, nome, dove);
    if (!v) return false;
    if (!v->is_boolean()) return Errore(dove + nome, "not true or false");
    *out = v->get<bool>();
    return true;
  }

  template <typename E, std::size_t N>
  bool Parola(const JsonLetto& o, const char* nome, const std::string& dove,
              const std::array<formats::Parola<E>, N>& t, E* out) {
    std::string s;
    if (!Testo(o, nome, dove, &s)) return false;
    for (const auto& p : t)
      if (s == p.parola) {
        *out = p.valore;
        return true;
      }
    return Errore(dove + nome, "not a known word");
  }

  const JsonLetto* Lista(const JsonLetto& o, const char* nome, const std::string& dove, std::size_t massimo) {
    const JsonLetto* v = Campo(o, nome, dove);
    if (!v) return nullptr;
    if (!v->is_array()) {
      Errore(dove + nome, "not a list");
      return nullptr;
    }
    if (v->size() > massimo) {
      Errore(dove + nome, "too many entries");
      return nullptr;
    }
    return v;
  }

  const JsonLetto* Oggetto(const JsonLetto& o, const char* nome, const std::string& dove) {
    const JsonLetto* v = Campo(o, nome, dove);
    if (v && !v->is_object()) {
      Errore(dove + nome, "not an object");
      return nullptr;
    }
    return v;
  }

  bool Testi(const JsonLetto& o, const char* nome, const std::string& dove, std::size_t massimo,
             std::vector<std::string>* out) {
    const JsonLetto* l = Lista(o, nome, dove, massimo);
    if (!l) return false;
    for (const JsonLetto& t : *l) {
      if (!t.is_string() || t.get_ref<const std::string&>().size() > kTestoMassimo)
        return Errore(dove + nome, "holds something that is not a path");
      out->push_back(host::DaUtf8(t.get<std::string>()));
    }
    return true;
  }

 private:
  std::string* motivo_;
};

// "YYYY-MM-DDTHH:MM:SS" with plausible fields.
bool DataValida(const std::string& d) {
  if (d.size() != 19 || d[4] != '-' || d[7] != '-' || d[10] != 'T' || d[13] != ':' || d[16] != ':')
    return false;
  for (std::size_t i : {0, 1, 2, 3, 5, 6, 8, 9, 11, 12, 14, 15, 17, 18})
    if (d[i] < '0' || d[i] > '9') return false;
  const auto due = [&](std::size_t i) { return (d[i] - '0') * 10 + (d[i + 1] - '0'); };
  return due(5) >= 1 && due(5) <= 12 && due(8) >= 1 && due(8) <= 31 && due(11) <= 23 && due(14) <= 59 &&
         due(17) <= 60;
}

bool LeggiWindows(Lettura& l, const JsonLetto& w, host::SistemaWindows* s) {
  const std::string d = "windows.";
  return l.Testo(w, "product", d, &s->prodotto) && l.Testo(w, "release", d, &s->rilascio) &&
         l.Numero(w, "major", d, 0, 1000, &s->maggiore) && l.Numero(w, "minor", d, 0, 1000, &s->minore) &&
         l.Numero(w, "build", d, 0, 1000000, &s->build) && l.Vero(w, "windows_64", d, &s->windows64) &&
         l.Vero(w, "wow64", d, &s->wow64) && l.Vero(w, "wine", d, &s->wine) &&
         l.Testo(w, "wine_version", d, &s->versioneWine) && l.Vero(w, "uac", d, &s->uac) &&
         l.Vero(w, "virtualization", d, &s->virtualizzazione) &&
         l.Numero(w, "ansi_code_page", d, 0, 65535, &s->codePage) &&
         l.Numero(w, "dpi", d, 0, 10000, &s->dpi) &&
         l.Facoltativo(w, "controlled_folder_access", d, 0xFFFFFFFFLL, &s->accessoControllato) &&
         l.Facoltativo(w, "dep_policy", d, 0xFFFFFFFFLL, &s->dep) &&
         l.Vero(w, "zone_readable", d, &s->zoneLeggibili);
}

bool LeggiEseguibile(Lettura& l, const JsonLetto& j, const std::string& d, EseguibileAmbiente* ea) {
  if (!j.is_object()) return l.Errore(d, "not an object");
  host::Eseguibile& e = ea->eseguibile;
  if (!l.Parola(j, "folder", d, kCartelle, &ea->cartella) || !l.Testo(j, "path", d, &e.percorso) ||
      !l.Parola(j, "machine", d, kMacchine, &e.macchina) || !l.Testo(j, "problem", d, &e.problema) ||
      !l.Zona(j, d, &e.zona))
    return false;
  const JsonLetto* imp = l.Lista(j, "imports", d, host::kMassimoImportazioni);
  const JsonLetto* liv = l.Lista(j, "layers", d, 8);
  if (!imp || !liv) return false;
  for (const JsonLetto& i : *imp) {
    const std::string di = d + "imports.";
    if (!i.is_object()) return l.Errore(di, "not an object");
    host::DllImportata dll;
    if (!l.Testo(i, "dll", di, &dll.nome) || !l.Parola(i, "found", di, kOrigini, &dll.origine) ||
        !l.Testo(i, "path", di, &dll.percorso) || !l.Zona(i, di, &dll.zona))
      return false;
    e.importazioni.push_back(std::move(dll));
  }
  for (const JsonLetto& i : *liv) {
    const std::string di = d + "layers.";
    if (!i.is_object()) return l.Errore(di, "not an object");
    host::LivelloCompatibilita lc;
    if (!l.Testo(i, "root", di, &lc.radice) || !l.Testo(i, "layers", di, &lc.dati)) return false;
    e.livelli.push_back(std::move(lc));
  }
  return true;
}

}  // namespace

const char* NomeMacchina(host::MacchinaPe m) {
  return ParolaDi(kMacchine, m);
}
const char* NomeOrigine(host::Origine o) {
  return ParolaDi(kOrigini, o);
}
const char* NomeCartella(CartellaEseguibile c) {
  return ParolaDi(kCartelle, c);
}

std::string CodificaAmbiente(const Ambiente& a) {
  const host::SistemaWindows& w = a.windows;
  Json eseguibili = Json::array();
  for (const auto& e : a.eseguibili) eseguibili.push_back(Eseguibile(e));
  Json nonLetti = Json::array();
  for (const auto& m : a.nonLetti) nonLetti.push_back({{"path", Utf8(m.percorso)}, {"error", m.errore}});
  const Json j = {
      {"format", a.formato},
      {"program",
       {{"name", Utf8(a.programma)}, {"version", Utf8(a.versioneProgramma)}, {"bits", a.bitProgramma}}},
      {"made", {{"local", a.dataLocale}, {"utc_offset_minutes", a.scartoUtcMinuti}}},
      {"windows",
       {{"product", Utf8(w.prodotto)},
        {"release", Utf8(w.rilascio)},
        {"major", w.maggiore},
        {"minor", w.minore},
        {"build", w.build},
        {"windows_64", w.windows64},
        {"wow64", w.wow64},
        {"wine", w.wine},
        {"wine_version", Utf8(w.versioneWine)},
        {"uac", w.uac},
        {"virtualization", w.virtualizzazione},
        {"ansi_code_page", w.codePage},
        {"dpi", w.dpi},
        {"controlled_folder_access", Facoltativo(w.accessoControllato)},
        {"dep_policy", Facoltativo(w.dep)},
        {"zone_readable", w.zoneLeggibili}}},
      {"executables", std::move(eseguibili)},
      {"virtual_store",
       {{"members", Testi(a.membriVirtuali)},
        {"listed", Testi(a.fileVirtuali)},
        {"listed_total", a.fileVirtualiTotale}}},
      {"unread_members", std::move(nonLetti)},
  };
  return j.dump(2) + "\n";
}

bool DecodificaAmbiente(std::string_view byte, Ambiente* a, std::string* motivo) {
  motivo->clear();
  *a = Ambiente{};
  // The parser tells each array's and object's depth as it opens (the document itself at 0): what lies
  // deeper is dropped unbuilt, and the document refused.
  bool profondo = false;
  const JsonLetto::parser_callback_t limite = [&](int profondita, JsonLetto::parse_event_t evento,
                                                  JsonLetto&) {
    const bool apre =
        evento == JsonLetto::parse_event_t::object_start || evento == JsonLetto::parse_event_t::array_start;
    if (apre && profondita >= kProfonditaMassima) profondo = true;
    return !profondo;
  };
  const JsonLetto j = JsonLetto::parse(byte.begin(), byte.end(), limite, false);
  if (profondo) {
    *motivo = "nested too deeply";
    return false;
  }
  if (j.is_discarded()) {
    *motivo = "not JSON";
    return false;
  }
  if (!j.is_object()) {
    *motivo = "not a JSON object";
    return false;
  }
  Lettura l(motivo);
  if (!l.Numero(j, "format", "", 1, 1000000, &a->formato)) return false;
  const JsonLetto* programma = l.Oggetto(j, "program", "");
  const JsonLetto* fatto = l.Oggetto(j, "made", "");
  const JsonLetto* windows = l.Oggetto(j, "windows", "");
  const JsonLetto* virtuale = l.Oggetto(j, "virtual_store", "");
  if (!programma || !fatto || !windows || !virtuale) return false;
  if (!l.Testo(*programma, "name", "program.", &a->programma) ||
      !l.Testo(*programma, "version", "program.", &a->versioneProgramma) ||
      !l.Numero(*programma, "bits", "program.", 32, 64, &a->bitProgramma))
    return false;
  if (a->bitProgramma != 32 && a->bitProgramma != 64) return l.Errore("program.bits", "neither 32 nor 64");
  if (!l.Testo(*fatto, "local", "made.", &a->dataLocale) ||
      !l.Numero(*fatto, "utc_offset_minutes", "made.", -16 * 60, 16 * 60, &a->scartoUtcMinuti))
    return false;
  if (!DataValida(a->dataLocale)) return l.Errore("made.local", "not a date and time");
  if (!LeggiWindows(l, *windows, &a->windows)) return false;

  const JsonLetto* eseguibili = l.Lista(j, "executables", "", 2 * host::kMassimoEseguibili);
  if (!eseguibili) return false;
  for (const JsonLetto& e : *eseguibili) {
    EseguibileAmbiente ea;
    if (!LeggiEseguibile(l, e, "executables.", &ea)) return false;
    a->eseguibili.push_back(std::move(ea));
  }
  if (!l.Testi(*virtuale, "members", "virtual_store.", 64, &a->membriVirtuali) ||
      !l.Testi(*virtuale, "listed", "virtual_store.", kMassimoPercorsiVirtuali, &a->fileVirtuali) ||
      !l.Numero(*virtuale, "listed_total", "virtual_store.", 0, 100000000, &a->fileVirtualiTotale))
    return false;
  if (a->fileVirtualiTotale < a->fileVirtuali.size())
    return l.Errore("virtual_store.listed_total", "fewer than the paths listed");

  const JsonLetto* nonLetti = l.Lista(j, "unread_members", "", 64);
  if (!nonLetti) return false;
  for (const JsonLetto& m : *nonLetti) {
    if (!m.is_object()) return l.Errore("unread_members.", "not an object");
    MembroNonLetto n;
    if (!l.Testo(m, "path", "unread_members.", &n.percorso) ||
        !l.Numero(m, "error", "unread_members.", 0, 100000, &n.errore))
      return false;
    a->nonLetti.push_back(std::move(n));
  }
  return true;
}

}  // namespace formats
