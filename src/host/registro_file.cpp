#include "host/registro_file.h"

#include <fstream>
#include <sstream>

#include "host/machine.h"
#include "host/nomi.h"

namespace host {
namespace {

std::string Utf8DaCodice(unsigned long c) {
  std::string out;
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | ((c >> 12) & 0x0F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
  return out;
}

int Esadecimale(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Reads an escaped string from s[i] up to the closing `fine` character (not included). Gives the text
// as UTF-8 and leaves i behind the closing character; false when it never closes.
bool LeggiEscape(const std::string& s, std::size_t& i, char fine, std::string* out) {
  while (i < s.size()) {
    const char c = s[i++];
    if (c == fine) return true;
    if (c != '\\' || i >= s.size()) {
      *out += c;
      continue;
    }
    const char e = s[i++];
    switch (e) {
      case 'n':
        *out += '\n';
        break;
      case 'r':
        *out += '\r';
        break;
      case 't':
        *out += '\t';
        break;
      case 'a':
        *out += '\a';
        break;
      case 'b':
        *out += '\b';
        break;
      case 'e':
        *out += '\x1b';
        break;
      case 'f':
        *out += '\f';
        break;
      case 'v':
        *out += '\v';
        break;
      case 'x': {
        unsigned long v = 0;
        int k = 0;
        while (k < 4 && i < s.size() && Esadecimale(s[i]) >= 0) v = v * 16 + Esadecimale(s[i++]), ++k;
        *out += k ? Utf8DaCodice(v) : std::string("x");
        break;
      }
      default:
        if (e >= '0' && e <= '7') {
          unsigned long v = e - '0';
          int k = 1;
          while (k < 3 && i < s.size() && s[i] >= '0' && s[i] <= '7') v = v * 8 + (s[i++] - '0'), ++k;
          *out += Utf8DaCodice(v);
        } else {
          *out += e;
        }
    }
  }
  return false;
}

std::string Byte(const std::string& esadecimali) {
  std::string out;
  int alto = -1;
  for (char c : esadecimali) {
    const int v = Esadecimale(c);
    if (v < 0) {
      alto = -1;
      continue;
    }
    if (alto < 0) {
      alto = v;
    } else {
      out += static_cast<char>(alto * 16 + v);
      alto = -1;
    }
  }
  return out;
}

// Turns UTF-16LE bytes of a string value into Windows-1252 text up to the first NUL.
std::string TestoDaUtf16(const std::string& b) {
  std::string utf8;
  for (std::size_t i = 0; i + 1 < b.size(); i += 2) {
    const unsigned long c = static_cast<unsigned char>(b[i]) | (static_cast<unsigned char>(b[i + 1]) << 8);
    if (c == 0) break;
    utf8 += Utf8DaCodice(c);
  }
  return DaUtf8(utf8);
}

bool AnalizzaValore(const std::string& riga, ValoreRegistro* v) {
  std::size_t i = 0;
  std::string nome;
  if (riga[0] == '@') {
    i = 1;
  } else {
    i = 1;
    if (!LeggiEscape(riga, i, '"', &nome)) return false;
  }
  if (i >= riga.size() || riga[i] != '=') return false;
  ++i;
  v->nome = DaUtf8(nome);
  const std::string resto = riga.substr(i);
  if (!resto.empty() && resto[0] == '"') {
    std::size_t k = 1;
    std::string t;
    if (!LeggiEscape(resto, k, '"', &t)) return false;
    v->tipo = kRegSz;
    v->dati = DaUtf8(t);
  } else if (resto.rfind("str(", 0) == 0) {
    const std::size_t c = resto.find("):\"");
    if (c == std::string::npos) return false;
    v->tipo = std::atoi(resto.c_str() + 4);
    std::size_t k = c + 3;
    std::string t;
    if (!LeggiEscape(resto, k, '"', &t)) return false;
    v->dati = DaUtf8(t);
  } else if (resto.rfind("dword:", 0) == 0) {
    const unsigned long d = std::strtoul(resto.c_str() + 6, nullptr, 16);
    v->tipo = kRegDword;
    for (int k = 0; k < 4; ++k) v->dati += static_cast<char>((d >> (8 * k)) & 0xFF);
  } else if (resto.rfind("hex", 0) == 0) {
    const std::size_t c = resto.find(':');
    if (c == std::string::npos) return false;
    v->tipo = kRegBinary;
    if (resto.size() > 3 && resto[3] == '(')
      v->tipo = static_cast<int>(std::strtol(resto.c_str() + 4, nullptr, 16));
    v->dati = Byte(resto.substr(c + 1));
    if (v->tipo == kRegSz || v->tipo == kRegExpandSz) v->dati = TestoDaUtf16(v->dati);
  } else {
    return false;
  }
  return true;
}

}  // namespace

std::vector<ChiaveRegistro> AnalizzaTestoRegistro(const std::string& testo) {
  std::vector<ChiaveRegistro> chiavi;
  std::istringstream in(testo);
  std::string riga;
  while (std::getline(in, riga)) {
    if (!riga.empty() && riga.back() == '\r') riga.pop_back();
    // Long hex values go on over lines that end in a backslash.
    while (!riga.empty() && riga.back() == '\\' && riga.find("=hex") != std::string::npos) {
      riga.pop_back();
      std::string seguito;
      if (!std::getline(in, seguito)) break;
      if (!seguito.empty() && seguito.back() == '\r') seguito.pop_back();
      const std::size_t k = seguito.find_first_not_of(" \t");
      riga += k == std::string::npos ? std::string() : seguito.substr(k);
    }
    if (riga.empty()) continue;
    if (riga[0] == '[') {
      std::size_t i = 1;
      std::string nome;
      if (!LeggiEscape(riga, i, ']', &nome)) continue;
      chiavi.push_back({DaUtf8(nome), {}});
    } else if ((riga[0] == '"' || riga[0] == '@') && !chiavi.empty()) {
      ValoreRegistro v;
      if (AnalizzaValore(riga, &v)) chiavi.back().valori.push_back(std::move(v));
    }
  }
  return chiavi;
}

std::vector<ChiaveRegistro> LeggiFileRegistro(const std::string& hostPath) {
  std::ifstream f(hostPath, std::ios::binary);
  if (!f) return {};
  std::ostringstream s;
  s << f.rdbuf();
  return AnalizzaTestoRegistro(s.str());
}

std::string LeggiValoreRegistroTesto(const std::string& hostPath, const std::string& chiave,
                                     const std::string& valore) {
  for (const auto& k : LeggiFileRegistro(hostPath)) {
    if (!UgualiSenzaCaso(k.nome, chiave)) continue;
    for (const auto& v : k.valori)
      if (UgualiSenzaCaso(v.nome, valore) && (v.tipo == kRegSz || v.tipo == kRegExpandSz)) return v.dati;
  }
  return {};
}

}  // namespace host
