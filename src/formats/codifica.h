// Fixed records as files hold them: fields one behind the other, little-endian, no gaps. Each record lists
// its fields once, in file order, as a walk `campi(v, record)` that shows every field to a visitor `v`; the
// writer, the reader and the length check all take that one walk, so an offset is never spelt out.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/byte_le.h"

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

// The kinds of field a record holds and their lengths. A boolean is a 16-bit -1 or 0.
struct Misura {
  std::size_t byte = 0;
  constexpr void operator()(bool) { byte += 2; }
  constexpr void operator()(std::int16_t) { byte += 2; }
  constexpr void operator()(std::int32_t) { byte += 4; }
  constexpr void operator()(double) { byte += 8; }
  template <std::size_t N>
  constexpr void operator()(const StringaFissa<N>&) {
    byte += N;
  }
  template <std::size_t N>
  constexpr void operator()(const std::array<std::int16_t, N>&) {
    byte += 2 * N;
  }
};

// Writes each field it is shown behind the one before.
class Scrittore {
 public:
  explicit Scrittore(std::size_t dimensione) : byte_(dimensione, '\0') {}
  void operator()(bool v) { (*this)(static_cast<std::int16_t>(v ? -1 : 0)); }
  void operator()(std::int16_t v) { Scrivi(static_cast<std::uint16_t>(v)); }
  void operator()(std::int32_t v) { Scrivi(static_cast<std::uint32_t>(v)); }
  void operator()(double v) { Scrivi(std::bit_cast<std::uint64_t>(v)); }
  template <std::size_t N>
  void operator()(const StringaFissa<N>& s) {
    std::copy(s.byte.begin(), s.byte.end(), byte_.begin() + static_cast<std::ptrdiff_t>(pos_));
    pos_ += N;
  }
  template <std::size_t N>
  void operator()(const std::array<std::int16_t, N>& a) {
    for (const std::int16_t v : a) (*this)(v);
  }
  const std::string& Byte() const { return byte_; }

 private:
  template <typename U>
  void Scrivi(U u) {
    host::ScriviLE(byte_, pos_, u);
    pos_ += sizeof(U);
  }
  std::string byte_;
  std::size_t pos_ = 0;
};

// Reads each field it is shown from behind the one before, out of a buffer of the record's whole length.
class Lettore {
 public:
  explicit Lettore(std::string_view byte) : byte_(byte) {}
  // Any non-zero value is true.
  void operator()(bool& v) { v = Leggi<std::uint16_t>() != 0; }
  void operator()(std::int16_t& v) { v = static_cast<std::int16_t>(Leggi<std::uint16_t>()); }
  void operator()(std::int32_t& v) { v = static_cast<std::int32_t>(Leggi<std::uint32_t>()); }
  void operator()(double& v) { v = std::bit_cast<double>(Leggi<std::uint64_t>()); }
  template <std::size_t N>
  void operator()(StringaFissa<N>& s) {
    byte_.substr(pos_, N).copy(s.byte.data(), N);
    pos_ += N;
  }
  template <std::size_t N>
  void operator()(std::array<std::int16_t, N>& a) {
    for (std::int16_t& v : a) (*this)(v);
  }

 private:
  template <typename U>
  U Leggi() {
    const U u = host::LeggiLE<U>(byte_, pos_);
    pos_ += sizeof(U);
    return u;
  }
  std::string_view byte_;
  std::size_t pos_ = 0;
};

// Where a fixed string of a record stands, for a caller that changes text in place and leaves every other
// byte as it was.
struct CampoTesto {
  std::size_t posizione = 0;
  std::size_t lunghezza = 0;
  // The field in the record walked, while that lives: it tells one field from another.
  const void* campo = nullptr;
};

// Notes the place of each fixed string it is shown, counting the other fields' lengths in between.
class Posizioni {
 public:
  template <std::size_t N>
  void operator()(const StringaFissa<N>& s) {
    campi_.push_back({pos_, N, &s});
    pos_ += N;
  }
  template <typename T>
  void operator()(const T& v) {
    Misura m;
    m(v);
    pos_ += m.byte;
  }
  std::vector<CampoTesto> Campi() && { return std::move(campi_); }

 private:
  std::vector<CampoTesto> campi_;
  std::size_t pos_ = 0;
};

// The places of the fixed strings of the record `r`, in file order.
template <typename R, typename Campi>
std::vector<CampoTesto> CampiTesto(Campi campi, const R& r) {
  Posizioni p;
  campi(p, r);
  return std::move(p).Campi();
}

// The length that a record's fields add up to, for a compile-time check against the record's own.
template <typename R, typename Campi>
constexpr std::size_t LunghezzaCampi(Campi campi) {
  Misura m;
  R r{};
  campi(m, r);
  return m.byte;
}

template <typename R, typename Campi>
std::string Codifica(const R& r, Campi campi) {
  Scrittore s(R::kDimensione);
  campi(s, r);
  return s.Byte();
}

// The record's bytes as a read from a file of `letti` bytes leaves them: what the file holds over what the
// record held before, so fields past the end of a short file keep their earlier values.
std::string Sovrapponi(std::string base, std::string_view letti);

// `byte` read over the record `base` (see Sovrapponi).
template <typename R, typename Campi>
R Decodifica(std::string_view byte, const R& base, Campi campi) {
  const std::string tutto = Sovrapponi(Codifica(base, campi), byte);
  Lettore l(tutto);
  R r;
  campi(l, r);
  return r;
}

// Up to `massimo` bytes from the start of a file; false when it cannot be opened.
bool LeggiTesta(const std::string& percorso, std::size_t massimo, std::string* byte, std::int64_t* lunghezza);

}  // namespace formats
