#include "host/registro_file.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string_view>
#include <unordered_map>

#include "host/byte_le.h"
#include "host/file_host.h"
#include "host/nomi.h"
#include "host/utf8.h"

namespace host {
namespace {

int Esadecimale(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool Spazio(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f';
}

std::size_t SaltaSpazi(std::string_view s, std::size_t i) {
  while (i < s.size() && Spazio(s[i])) ++i;
  return i;
}

// Wine orders and matches names by the lower case of each UTF-16 unit. This covers the scripts whose
// names can occur here; a unit outside them compares as it is.
char16_t MinuscolaWine(char16_t c) {
  if (c < 0x80) return (c >= 'A' && c <= 'Z') ? static_cast<char16_t>(c + 0x20) : c;
  if ((c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3AB && c != 0x3A2) ||
      (c >= 0x410 && c <= 0x42F))
    return static_cast<char16_t>(c + 0x20);
  if (c >= 0x400 && c <= 0x40F) return static_cast<char16_t>(c + 0x50);
  if (c == 0x130) return u'i';
  if (c == 0x178) return 0xFF;
  // Latin Extended-A pairs upper and lower case side by side.
  if ((c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177)) return static_cast<char16_t>(c | 1);
  if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E))
    return (c & 1) ? static_cast<char16_t>(c + 1) : c;
  return c;
}

std::u16string Minuscolo(std::u16string_view s) {
  std::u16string out(s);
  for (char16_t& c : out) c = MinuscolaWine(c);
  return out;
}

void AggiungiCodice(std::u16string* out, char32_t c) {
  if (c > 0xFFFF) {
    c -= 0x10000;
    out->push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
    out->push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
  } else {
    out->push_back(static_cast<char16_t>(c));
  }
}

// One UTF-8 character from s[i]; a byte that begins no valid character stands for U+FFFD, as Wine reads it.
char32_t Carattere(std::string_view s, std::size_t& i) {
  const char32_t c = CarattereUtf8(s, &i);
  return c == kNonUtf8 ? 0xFFFD : c;
}

// The one-letter escapes of the registry files, and what each stands for.
constexpr std::string_view kLettereEscape = "abefnrtv";
constexpr char16_t kValoriEscape[] = {u'\a', u'\b', 0x1B, u'\f', u'\n', u'\r', u'\t', u'\v'};
static_assert(std::size(kValoriEscape) == kLettereEscape.size());

// A string in Wine's escaped form from s[i] up to the closing `fine`, as UTF-16 units. Leaves i behind
// the closing character; false when it never closes.
bool LeggiStringa(std::string_view s, std::size_t& i, char fine, std::u16string* out) {
  while (i < s.size()) {
    const char c = s[i];
    if (c == fine) {
      ++i;
      return true;
    }
    if (c == '\\' && i + 1 < s.size()) {
      const char e = s[i + 1];
      i += 2;
      if (const std::size_t k = kLettereEscape.find(e); k != std::string_view::npos) {
        out->push_back(kValoriEscape[k]);
      } else if (e == 'x') {
        unsigned v = 0;
        int k = 0;
        for (; k < 4 && i < s.size() && Esadecimale(s[i]) >= 0; ++k) v = v * 16 + Esadecimale(s[i++]);
        out->push_back(k ? static_cast<char16_t>(v) : u'x');
      } else if (e >= '0' && e <= '7') {
        unsigned v = static_cast<unsigned>(e - '0');
        for (int k = 1; k < 3 && i < s.size() && s[i] >= '0' && s[i] <= '7'; ++k)
          v = v * 8 + static_cast<unsigned>(s[i++] - '0');
        out->push_back(static_cast<char16_t>(v));
      } else if (static_cast<unsigned char>(e) < 0x80) {
        out->push_back(static_cast<char16_t>(e));
      } else {
        // An escaped non-ASCII character stands for itself, whole.
        --i;
        AggiungiCodice(out, Carattere(s, i));
      }
      continue;
    }
    if (static_cast<unsigned char>(c) < 0x80) {
      out->push_back(static_cast<char16_t>(c));
      ++i;
    } else {
      AggiungiCodice(out, Carattere(s, i));
    }
  }
  return false;
}

// UTF-16 units as Windows-1252 text: one byte a character, '?' for what the code page cannot hold (a
// surrogate pair is one character).
std::string Cp1252(std::u16string_view u) {
  std::string out;
  out.reserve(u.size());
  for (std::size_t i = 0; i < u.size(); ++i) {
    const char16_t c = u[i];
    if (c >= 0xD800 && c <= 0xDFFF) {
      if (c <= 0xDBFF && i + 1 < u.size() && u[i + 1] >= 0xDC00 && u[i + 1] <= 0xDFFF) ++i;
      out += '?';
    } else {
      out += ByteCp1252(c);
    }
  }
  return out;
}

std::u16string UnitaDaByte(std::string_view b) {
  std::u16string u;
  u.reserve(b.size() / 2);
  // An odd last byte is no character; the platform drops it.
  for (std::size_t i = 0; i + 1 < b.size(); i += 2) u.push_back(static_cast<char16_t>(U16LE(b, i)));
  return u;
}

std::string ByteDaUnita(std::u16string_view u) {
  std::string b;
  b.reserve(u.size() * 2);
  for (char16_t c : u) AccodaLE(b, static_cast<std::uint16_t>(c));
  return b;
}

// Text as the platform's ANSI calls give it: code-page text without the NUL that ends it.
std::string TestoSenzaFine(std::u16string_view u) {
  if (!u.empty() && u.back() == 0) u.remove_suffix(1);
  return Cp1252(u);
}

template <class Char>
bool Normalizza(std::basic_string_view<Char> chiave, std::basic_string<Char>* out,
                bool separatoriIniziali = false) {
  out->clear();
  if (!separatoriIniziali && !chiave.empty() && chiave[0] == Char('\\')) return false;
  std::size_t i = 0;
  while (i < chiave.size()) {
    std::size_t j = chiave.find(Char('\\'), i);
    if (j == chiave.npos) j = chiave.size();
    if (j > i) {
      if (!out->empty()) out->push_back(Char('\\'));
      out->append(chiave.substr(i, j - i));
    }
    i = j + 1;
  }
  return true;
}

class Righe {
 public:
  explicit Righe(std::string_view testo) : testo_(testo) {}
  bool Prossima(std::string_view* riga) {
    if (pos_ >= testo_.size()) return false;
    std::size_t fine = testo_.find('\n', pos_);
    if (fine == std::string_view::npos) fine = testo_.size();
    *riga = testo_.substr(pos_, fine - pos_);
    pos_ = fine + 1;
    if (!riga->empty() && riga->back() == '\r') riga->remove_suffix(1);
    return true;
  }

 private:
  std::string_view testo_;
  std::size_t pos_ = 0;
};

// Comma-separated bytes. Wine takes any run of hex digits whose value fits a byte, blanks around the
// commas, and a backslash after the list to carry it on over the next line; anything else spoils the value.
bool LeggiByte(std::string_view riga, Righe& righe, std::string* out) {
  std::size_t i = SaltaSpazi(riga, 0);
  for (;;) {
    while (i < riga.size() && Esadecimale(riga[i]) >= 0) {
      unsigned v = 0;
      for (; i < riga.size() && Esadecimale(riga[i]) >= 0; ++i)
        v = std::min(v * 16 + static_cast<unsigned>(Esadecimale(riga[i])), 0x100u);
      if (v > 0xFF) return false;
      out->push_back(static_cast<char>(v));
      i = SaltaSpazi(riga, i);
      if (i < riga.size() && riga[i] == ',') i = SaltaSpazi(riga, i + 1);
    }
    if (i >= riga.size()) return true;
    if (riga[i] != '\\') return false;
    if (!righe.Prossima(&riga)) return true;
    i = SaltaSpazi(riga, 0);
  }
}

// "str(2)" and "hex(7)": the type is written in hex.
bool LeggiTipo(std::string_view s, std::size_t& i, int* tipo) {
  std::uint64_t v = 0;
  const std::size_t inizio = i;
  for (; i < s.size() && Esadecimale(s[i]) >= 0; ++i)
    v = std::min<std::uint64_t>(v * 16 + static_cast<unsigned>(Esadecimale(s[i])), 0x100000000u);
  if (i == inizio || v > 0xFFFFFFFFu || i + 1 >= s.size() || s[i] != ')' || s[i + 1] != ':') return false;
  i += 2;
  *tipo = static_cast<int>(static_cast<std::uint32_t>(v));
  return true;
}

bool AnalizzaDati(std::string_view resto, Righe& righe, ValoreRegistro* v) {
  std::size_t i = 0;
  std::u16string testo;
  auto stringa = [&](int tipo) {
    if (i >= resto.size() || resto[i] != '"') return false;
    ++i;
    if (!LeggiStringa(resto, i, '"', &testo)) return false;
    v->tipo = tipo;
    // Wine keeps the terminating NUL as part of the data.
    testo.push_back(0);
    v->dati = TipoTesto(tipo) ? TestoSenzaFine(testo) : ByteDaUnita(testo);
    return true;
  };
  // Wine knows these string forms only; text after the closing quote does not matter.
  if (resto.starts_with('"')) return stringa(kRegSz);
  if (resto.starts_with("str:")) {
    i = 4;
    return stringa(kRegSz);
  }
  if (resto.starts_with("str(2):") || resto.starts_with("str(7):")) {
    i = 7;
    return stringa(resto[4] - '0');
  }
  int tipo = kRegNone;
  if (resto.starts_with("dword:")) {
    // As Wine reads it: strtoul, cut to 32 bits, 0 when there are no digits.
    const std::string cifre(resto.substr(6));
    const auto d = static_cast<std::uint32_t>(std::strtoull(cifre.c_str(), nullptr, 16));
    v->tipo = kRegDword;
    v->dati.clear();
    AccodaLE(v->dati, d);
    return true;
  }
  if (resto.starts_with("hex:")) {
    i = 4;
    tipo = kRegBinary;
  } else if (resto.starts_with("hex(")) {
    i = 4;
    if (!LeggiTipo(resto, i, &tipo)) return false;
  } else {
    return false;
  }
  std::string byte;
  if (!LeggiByte(resto.substr(i), righe, &byte)) return false;
  v->tipo = tipo;
  v->dati = TipoTesto(tipo) ? TestoSenzaFine(UnitaDaByte(byte)) : std::move(byte);
  return true;
}

struct Voce {
  std::u16string ordine;      // the name in lower case
  std::size_t posizione = 0;  // in the file, which decides between equal names
  ValoreRegistro valore;
};

struct ChiaveInCorso {
  ChiaveRegistro chiave;
  std::vector<Voce> voci;
};

bool AnalizzaValore(std::string_view riga, Righe& righe, Voce* voce) {
  std::size_t i = 1;
  std::u16string nome;
  if (riga[0] == '"' && !LeggiStringa(riga, i, '"', &nome)) return false;
  i = SaltaSpazi(riga, i);
  if (i >= riga.size() || riga[i] != '=') return false;
  i = SaltaSpazi(riga, i + 1);
  // Once the name stands, Wine keeps the value even when its data does not parse: empty and of no type.
  if (!AnalizzaDati(riga.substr(i), righe, &voce->valore)) voce->valore = ValoreRegistro{};
  voce->valore.nome = Cp1252(nome);
  voce->ordine = Minuscolo(nome);
  return true;
}

// Sorted as Wine enumerates; of a name given twice the first spelling and the last data count.
std::vector<ValoreRegistro> Ordina(std::vector<Voce>& voci) {
  std::sort(voci.begin(), voci.end(), [](const Voce& a, const Voce& b) {
    return a.ordine != b.ordine ? a.ordine < b.ordine : a.posizione < b.posizione;
  });
  std::vector<ValoreRegistro> valori;
  valori.reserve(voci.size());
  for (std::size_t k = 0; k < voci.size();) {
    std::size_t fine = k + 1;
    while (fine < voci.size() && voci[fine].ordine == voci[k].ordine) ++fine;
    ValoreRegistro v = std::move(voci[fine - 1].valore);
    if (fine - 1 != k) v.nome = std::move(voci[k].valore.nome);
    valori.push_back(std::move(v));
    k = fine;
  }
  return valori;
}

}  // namespace

bool TipoTesto(int tipo) {
  return tipo == kRegSz || tipo == kRegExpandSz || tipo == kRegMultiSz;
}

std::string TestoDaUtf16(std::string_view byte) {
  return Cp1252(UnitaDaByte(byte));
}

bool NormalizzaChiave(std::string_view chiave, std::string* out) {
  return Normalizza(chiave, out);
}

std::vector<ChiaveRegistro> AnalizzaTestoRegistro(std::string_view testo) {
  Righe righe(testo);
  std::string_view riga;
  if (!righe.Prossima(&riga) || riga != "WINE REGISTRY Version 2") return {};

  std::vector<ChiaveInCorso> chiavi;
  std::unordered_map<std::u16string, std::size_t> perNome;
  constexpr std::size_t kNessuna = static_cast<std::size_t>(-1);
  std::size_t corrente = kNessuna;
  while (righe.Prossima(&riga)) {
    riga.remove_prefix(std::min(SaltaSpazi(riga, 0), riga.size()));
    if (riga.empty()) continue;
    switch (riga[0]) {
      case '[': {
        corrente = kNessuna;
        std::size_t i = 1;
        std::u16string grezzo, nome;
        // A key line may begin with separators, which Wine skips, unlike a program's request.
        if (!LeggiStringa(riga, i, ']', &grezzo) || !Normalizza(std::u16string_view(grezzo), &nome, true))
          break;
        auto [it, nuovo] = perNome.try_emplace(Minuscolo(nome), chiavi.size());
        if (nuovo) chiavi.push_back({{Cp1252(nome), false, {}}, {}});
        corrente = it->second;
        break;
      }
      case '@':
      case '"': {
        Voce voce;
        if (corrente != kNessuna && AnalizzaValore(riga, righe, &voce)) {
          voce.posizione = chiavi[corrente].voci.size();
          chiavi[corrente].voci.push_back(std::move(voce));
        }
        break;
      }
      case '#':
        if (corrente != kNessuna && riga.starts_with("#link")) chiavi[corrente].chiave.collegamento = true;
        break;
      default:
        // Comments (';') and lines Wine does not recognise.
        break;
    }
  }

  std::vector<ChiaveRegistro> out;
  out.reserve(chiavi.size());
  for (auto& c : chiavi) {
    c.chiave.valori = Ordina(c.voci);
    out.push_back(std::move(c.chiave));
  }
  return out;
}

std::vector<ChiaveRegistro> LeggiFileRegistro(const std::string& hostPath) {
  const auto testo = LeggiFileHost(hostPath);
  return testo ? AnalizzaTestoRegistro(*testo) : std::vector<ChiaveRegistro>{};
}

std::string LeggiValoreRegistroTesto(const std::string& hostPath, const std::string& chiave,
                                     const std::string& valore) {
  std::string cercata;
  if (!NormalizzaChiave(chiave, &cercata)) return {};
  for (const auto& k : LeggiFileRegistro(hostPath)) {
    if (!UgualiSenzaCaso(k.nome, cercata)) continue;
    for (const auto& v : k.valori)
      if (UgualiSenzaCaso(v.nome, valore) && TipoTesto(v.tipo)) return v.dati.substr(0, v.dati.find('\0'));
  }
  return {};
}

}  // namespace host
