#include "formats/codifica.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "host/machine.h"
#include "support/files.h"

namespace formats {

void Scrittore::I16(std::size_t off, std::int16_t v) {
  const auto u = static_cast<std::uint16_t>(v);
  byte_[off] = static_cast<char>(u & 0xFF);
  byte_[off + 1] = static_cast<char>(u >> 8);
}

void Scrittore::I32(std::size_t off, std::int32_t v) {
  const auto u = static_cast<std::uint32_t>(v);
  for (int i = 0; i < 4; ++i) byte_[off + i] = static_cast<char>((u >> (8 * i)) & 0xFF);
}

void Scrittore::Doppio(std::size_t off, double v) {
  const auto u = std::bit_cast<std::uint64_t>(v);
  for (int i = 0; i < 8; ++i) byte_[off + i] = static_cast<char>((u >> (8 * i)) & 0xFF);
}

std::int16_t Lettore::I16(std::size_t off) const {
  const auto b0 = static_cast<std::uint8_t>(byte_[off]);
  const auto b1 = static_cast<std::uint8_t>(byte_[off + 1]);
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(b0 | (b1 << 8)));
}

std::int32_t Lettore::I32(std::size_t off) const {
  std::uint32_t u = 0;
  for (int i = 0; i < 4; ++i)
    u |= static_cast<std::uint32_t>(static_cast<std::uint8_t>(byte_[off + i])) << (8 * i);
  return static_cast<std::int32_t>(u);
}

double Lettore::Doppio(std::size_t off) const {
  std::uint64_t u = 0;
  for (int i = 0; i < 8; ++i)
    u |= static_cast<std::uint64_t>(static_cast<std::uint8_t>(byte_[off + i])) << (8 * i);
  return std::bit_cast<double>(u);
}

std::string Sovrapponi(std::string base, std::string_view letti) {
  letti.substr(0, base.size()).copy(base.data(), base.size());
  return base;
}

bool LeggiTesta(const std::string& percorso, std::size_t massimo, std::string* byte,
                std::int64_t* lunghezza) {
  int err = 0;
  host::File f = host::File::ApriLettura(percorso, &err);
  if (err || !f.Aperto()) return false;
  const std::int64_t n = f.Lunghezza();
  if (lunghezza) *lunghezza = n;
  // Never more room than the file has.
  const std::size_t quanti = n < 0 ? 0 : std::min(massimo, static_cast<std::size_t>(n));
  byte->assign(quanti, '\0');
  byte->resize(f.Leggi(byte->data(), quanti));
  return true;
}

bool ScriviRecord(const std::string& percorso, const std::string& byte) {
  return support::ScriviFileTesto(percorso, byte);
}

}  // namespace formats
