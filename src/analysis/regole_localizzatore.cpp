#include "analysis/regole_localizzatore.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace analysis {
namespace {

void Utf8(std::string& out, unsigned long c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

class Scorsa {
 public:
  Scorsa(std::string_view t, const std::unordered_set<std::string>& cercati, const Limiti& limiti)
      : t_(t), cercati_(cercati), limiti_(limiti) {}

  Mappa Fai() {
    while (Salta()) {
      // Asked only where the limits are passed: the first place is enough.
      if (cercati_.empty() &&
          (m_.troppoProfondo & m_.numeroInfinito & m_.troppeChiavi & m_.troppiValori) != kNessunLuogo)
        break;
      const char c = t_[i_];
      Cornice* cima = pila_.empty() ? nullptr : &pila_.back();
      if (c == '}' || c == ']') {
        if (cima) pila_.pop_back();
        ptr_.resize(pila_.empty() ? 0 : pila_.back().base);
        ++i_;
      } else if (c == ',') {
        if (cima) cima->indice++, cima->attendoChiave = cima->oggetto;
        ++i_;
      } else if (c == ':') {
        ++i_;
      } else if (cima && cima->attendoChiave) {
        const std::size_t inizio = i_;
        if (c == '"') {
          cima->chiave = Stringa(true);
        } else {
          ++i_;
          continue;
        }
        cima->offsetChiave = inizio;
        cima->attendoChiave = false;
        if (++cima->chiavi > limiti_.chiavi && m_.troppeChiavi == kNessunLuogo) m_.troppeChiavi = inizio;
      } else {
        Valore(cima);
      }
    }
    return std::move(m_);
  }

 private:
  struct Cornice {
    bool oggetto = false;
    bool attendoChiave = false;
    std::size_t indice = 0;
    std::size_t base = 0;
    std::size_t chiavi = 0;
    std::size_t offsetChiave = kNessunLuogo;
    std::string chiave;
  };

  // To the next token; false at the end.
  bool Salta() {
    while (i_ < t_.size()) {
      const char c = t_[i_];
      if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
        ++i_;
      } else if (c == '/' && i_ + 1 < t_.size() && t_[i_ + 1] == '/') {
        const std::size_t fine = t_.find('\n', i_);
        i_ = fine == std::string_view::npos ? t_.size() : fine + 1;
      } else if (c == '/' && i_ + 1 < t_.size() && t_[i_ + 1] == '*') {
        const std::size_t fine = t_.find("*/", i_ + 2);
        i_ = fine == std::string_view::npos ? t_.size() : fine + 2;
      } else {
        return true;
      }
    }
    return false;
  }

  // A string from its opening quote; decoded only when asked.
  std::string Stringa(bool decodifica) {
    std::string s;
    ++i_;
    while (i_ < t_.size() && t_[i_] != '"') {
      if (t_[i_] != '\\') {
        if (decodifica) s += t_[i_];
        ++i_;
        continue;
      }
      if (++i_ >= t_.size()) break;
      const char e = t_[i_++];
      if (!decodifica) continue;
      switch (e) {
        case 'b':
          s += '\b';
          break;
        case 'f':
          s += '\f';
          break;
        case 'n':
          s += '\n';
          break;
        case 'r':
          s += '\r';
          break;
        case 't':
          s += '\t';
          break;
        case 'u': {
          unsigned long c = Esa();
          if (c >= 0xD800 && c < 0xDC00 && t_.substr(i_, 2) == "\\u") {
            i_ += 2;
            c = 0x10000 + ((c - 0xD800) << 10) + (Esa() - 0xDC00);
          }
          Utf8(s, c);
          break;
        }
        default:
          s += e;
      }
    }
    ++i_;
    return s;
  }

  unsigned long Esa() {
    const std::string quattro(t_.substr(i_, 4));
    i_ += quattro.size();
    return std::strtoul(quattro.c_str(), nullptr, 16);
  }

  void Valore(Cornice* cima) {
    const std::size_t inizio = i_;
    if (cima) {
      if (!cima->oggetto && cima->indice >= limiti_.valori && m_.troppiValori == kNessunLuogo) {
        m_.troppiValori = inizio;
        m_.arrayTroppoLungo = ptr_.substr(0, cima->base);
      }
      ptr_.resize(cima->base);
      ptr_ += '/';
      ptr_ += cima->oggetto ? Segmento(cima->chiave) : std::to_string(cima->indice);
    }
    if (!cercati_.empty()) {
      const auto it = cercati_.find(ptr_);
      if (it != cercati_.end())
        m_.luoghi[ptr_] = {inizio, cima && cima->oggetto ? cima->offsetChiave : kNessunLuogo};
    }
    const char c = t_[i_];
    if (c == '{' || c == '[') {
      if (pila_.size() >= static_cast<std::size_t>(limiti_.profondita) && m_.troppoProfondo == kNessunLuogo)
        m_.troppoProfondo = inizio;
      pila_.push_back({c == '{', c == '{', 0, ptr_.size(), 0, kNessunLuogo, {}});
      ++i_;
    } else if (c == '"') {
      Stringa(false);
    } else {
      const std::size_t fine = t_.find_first_of(" \t\r\n,:]}/[{\"", i_);
      const std::string parola(
          t_.substr(i_, fine == std::string_view::npos ? std::string_view::npos : fine - i_));
      i_ += parola.empty() ? 1 : parola.size();
      if ((c == '-' || (c >= '0' && c <= '9')) && m_.numeroInfinito == kNessunLuogo &&
          !std::isfinite(std::strtod(parola.c_str(), nullptr)))
        m_.numeroInfinito = inizio;
    }
  }

  std::string_view t_;
  const std::unordered_set<std::string>& cercati_;
  const Limiti limiti_;
  std::size_t i_ = 0;
  std::vector<Cornice> pila_;
  std::string ptr_;
  Mappa m_;
};

}  // namespace

Mappa Localizza(std::string_view testo, const std::unordered_set<std::string>& cercati,
                const Limiti& limiti) {
  return Scorsa(testo, cercati, limiti).Fai();
}

Righe::Righe(std::string_view testo) : inizi_{0}, fine_(testo.size()) {
  for (std::size_t i = 0; i < testo.size(); ++i)
    if (testo[i] == '\n') inizi_.push_back(i + 1);
}

std::pair<int, int> Righe::Di(std::size_t offset) const {
  if (offset > fine_) offset = fine_;
  const auto dopo = std::upper_bound(inizi_.begin(), inizi_.end(), offset);
  const std::size_t riga = static_cast<std::size_t>(dopo - inizi_.begin());
  return {static_cast<int>(riga), static_cast<int>(offset - inizi_[riga - 1]) + 1};
}

std::string Segmento(std::string_view chiave) {
  std::string s;
  for (const char c : chiave) {
    if (c == '~')
      s += "~0";
    else if (c == '/')
      s += "~1";
    else
      s += c;
  }
  return s;
}

}  // namespace analysis
