// Little-endian integers at a byte position of a buffer, and appended to one: every file this program reads
// or writes keeps its numbers so (records, lists, the snapshot, PE headers, the registry's hex values).
// The caller has checked that the bytes are there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace host {

template <typename U>
constexpr U LeggiLE(std::string_view b, std::size_t off) {
  U u = 0;
  for (std::size_t i = 0; i < sizeof(U); ++i)
    u = static_cast<U>(u | static_cast<U>(static_cast<U>(static_cast<unsigned char>(b[off + i])) << (8 * i)));
  return u;
}

inline std::uint16_t U16LE(std::string_view b, std::size_t off) {
  return LeggiLE<std::uint16_t>(b, off);
}
inline std::uint32_t U32LE(std::string_view b, std::size_t off) {
  return LeggiLE<std::uint32_t>(b, off);
}
inline std::int16_t I16LE(std::string_view b, std::size_t off) {
  return static_cast<std::int16_t>(U16LE(b, off));
}
inline std::int32_t I32LE(std::string_view b, std::size_t off) {
  return static_cast<std::int32_t>(U32LE(b, off));
}

// Writes the low `sizeof(U)` bytes of `u` at `off` of a buffer that is long enough.
template <typename U>
constexpr void ScriviLE(std::string& b, std::size_t off, U u) {
  for (std::size_t i = 0; i < sizeof(U); ++i) b[off + i] = static_cast<char>((u >> (8 * i)) & 0xFF);
}

template <typename U>
void AccodaLE(std::string& b, U u) {
  for (std::size_t i = 0; i < sizeof(U); ++i) b.push_back(static_cast<char>((u >> (8 * i)) & 0xFF));
}

}  // namespace host
