#include <array>
#include <cstdint>
#include <string>

#include "host/macchina.h"
#include "host/utf8.h"

namespace host {
namespace {

// Code points of the bytes 0x80..0x9F. The five holes map to the C1 control of the same value, as the
// platform's own conversion does.
constexpr std::array<char16_t, 32> kAlti = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AggiungiUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

}  // namespace

char32_t CarattereUtf8(std::string_view s, std::size_t* i) {
  const auto b = static_cast<unsigned char>(s[*i]);
  std::size_t len = 0;
  char32_t c = 0;
  if (b < 0x80) {
    ++*i;
    return b;
  }
  if (b >= 0xC2 && b <= 0xDF) {
    len = 2;
    c = b & 0x1F;
  } else if (b >= 0xE0 && b <= 0xEF) {
    len = 3;
    c = b & 0x0F;
  } else if (b >= 0xF0 && b <= 0xF4) {
    len = 4;
    c = b & 0x07;
  }
  if (len == 0 || *i + len > s.size()) {
    ++*i;
    return kNonUtf8;
  }
  for (std::size_t k = 1; k < len; ++k) {
    const auto t = static_cast<unsigned char>(s[*i + k]);
    if ((t & 0xC0) != 0x80) {
      ++*i;
      return kNonUtf8;
    }
    c = (c << 6) | (t & 0x3F);
  }
  if ((len == 3 && c < 0x800) || (len == 4 && (c < 0x10000 || c > 0x10FFFF))) {
    ++*i;
    return kNonUtf8;
  }
  *i += len;
  return c;
}

char ByteCp1252(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  for (std::size_t i = 0; i < kAlti.size(); ++i)
    if (kAlti[i] == c) return static_cast<char>(0x80 + i);
  return '?';
}

std::string DaUtf8(const std::string& utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const char32_t c = CarattereUtf8(utf8, &i);
    // A stray byte is one unknown character.
    out += c == kNonUtf8 ? '?' : ByteCp1252(c);
  }
  return out;
}

std::string VersoUtf8(const std::string& cp1252) {
  std::string out;
  out.reserve(cp1252.size());
  for (char ch : cp1252) {
    const auto b = static_cast<unsigned char>(ch);
    if (b >= 0x80 && b < 0xA0)
      AggiungiUtf8(out, kAlti[b - 0x80]);
    else
      AggiungiUtf8(out, b);
  }
  return out;
}

}  // namespace host
