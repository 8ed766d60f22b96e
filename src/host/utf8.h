// UTF-8 one character at a time, for the readers that work on characters rather than bytes: host names as
// Wine orders them, the registry's text, the conversion to Windows-1252.
#pragma once

#include <cstddef>
#include <string_view>

namespace host {

// What a byte that begins no valid character decodes to.
inline constexpr char32_t kNonUtf8 = 0xFFFFFFFF;

// The character that begins at s[*i], decoded as Wine decodes UTF-8 (no overlong forms, nothing past
// U+10FFFF), and *i moved past it. kNonUtf8 for a byte that begins no valid character: only that byte is
// taken, so the caller decides what it stands for.
char32_t CarattereUtf8(std::string_view s, std::size_t* i);

// The Windows-1252 byte of a character, '?' when the code page has none.
char ByteCp1252(char32_t c);

}  // namespace host
