// Fixed records as files hold them: fields one behind the other, little-endian, no gaps. Each field is
// written and read at its own offset; nothing is cast over the bytes.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace formats {

// A fixed string of N single-byte characters: NUL bytes until something is assigned, blank-filled after.
template <std::size_t N>
struct StringaFissa {
  std::array<char, N> byte{};

  void Assegna(std::string_view testo) {
    byte.fill(' ');
    testo.copy(byte.data(), std::min(N, testo.size()));
  }
  std::string Testo() const { return std::string(byte.data(), N); }
  bool operator==(const StringaFissa&) const = default;
};

// Writes fields into a record buffer of known length.
class Scrittore {
 public:
  explicit Scrittore(std::size_t dimensione) : byte_(dimensione, '\0') {}
  void I16(std::size_t off, std::int16_t v);
  void I32(std::size_t off, std::int32_t v);
  void Booleano(std::size_t off, bool v) { I16(off, v ? -1 : 0); }
  void Doppio(std::size_t off, double v);
  template <std::size_t N>
  void Stringa(std::size_t off, const StringaFissa<N>& s) {
    std::copy(s.byte.begin(), s.byte.end(), byte_.begin() + static_cast<std::ptrdiff_t>(off));
  }
  const std::string& Byte() const { return byte_; }

 private:
  std::string byte_;
};

// Reads fields from a whole record buffer (the caller makes sure it has the record's length).
class Lettore {
 public:
  explicit Lettore(std::string_view byte) : byte_(byte) {}
  std::int16_t I16(std::size_t off) const;
  std::int32_t I32(std::size_t off) const;
  bool Booleano(std::size_t off) const { return I16(off) != 0; }
  double Doppio(std::size_t off) const;
  template <std::size_t N>
  void Stringa(std::size_t off, StringaFissa<N>& s) const {
    byte_.substr(off, N).copy(s.byte.data(), N);
  }

 private:
  std::string_view byte_;
};

// The record's bytes as a read from a file of `letti` bytes leaves them: what the file holds over what the
// record held before, so fields past the end of a short file keep their earlier values.
std::string Sovrapponi(std::string base, std::string_view letti);

// Up to `massimo` bytes from the start of a file; false when it cannot be opened.
bool LeggiTesta(const std::string& percorso, std::size_t massimo, std::string* byte, std::int64_t* lunghezza);

// Creates or replaces the file with these bytes.
bool ScriviRecord(const std::string& percorso, const std::string& byte);

}  // namespace formats
