#include <array>
#include <cstdint>
#include <string>

#include "host/machine.h"

namespace host {
namespace {

// Code points of the bytes 0x80..0x9F. The five holes map to the C1 control of the same value, as the
// platform's own conversion does.
constexpr std::array<char16_t, 32> kAlti = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ByteDaCodice(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  for (std::size_t i = 0; i < kAlti.size(); ++i)
    if (kAlti[i] == c) return static_cast<char>(0x80 + i);
  return '?';
}

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

std::string DaUtf8(const std::string& utf8) {
  std::string out;
  out.reserve(utf8.size());
  const auto* s = reinterpret_cast<const unsigned char*>(utf8.data());
  const std::size_t n = utf8.size();
  std::size_t i = 0;
  while (i < n) {
    const unsigned char b = s[i];
    if (b < 0x80) {
      out += static_cast<char>(b);
      ++i;
      continue;
    }
    int len = 0;
    char32_t c = 0;
    if ((b & 0xE0) == 0xC0) {
      len = 2;
      c = b & 0x1F;
    } else if ((b & 0xF0) == 0xE0) {
      len = 3;
      c = b & 0x0F;
    } else if ((b & 0xF8) == 0xF0) {
      len = 4;
      c = b & 0x07;
    }
    bool valido = len > 0 && i + len <= n;
    for (int k = 1; valido && k < len; ++k) {
      if ((s[i + k] & 0xC0) != 0x80) valido = false;
      c = (c << 6) | (s[i + k] & 0x3F);
    }
    if (!valido) {
      // A stray byte is one unknown character.
      out += '?';
      ++i;
      continue;
    }
    out += ByteDaCodice(c);
    i += len;
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
