// What the machine tells about versions: the raw version block of an executable and the OS version. On
// Windows these are the platform's own calls; elsewhere the block is read out of the PE file and the OS is
// the NT system that Wine reports by default.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace host {

// Bytes at absolute offsets of something that may be too large to hold whole, such as an executable.
class LettoreByte {
 public:
  virtual ~LettoreByte() = default;
  virtual std::uint64_t Lunghezza() const = 0;
  // Exactly `n` bytes from `inizio` into *out; false when they are not all there.
  virtual bool Leggi(std::uint64_t inizio, std::size_t n, std::string* out) = 0;
};

// Bytes already in memory; the caller keeps them alive.
class LettoreMemoria final : public LettoreByte {
 public:
  explicit LettoreMemoria(std::string_view byte) : byte_(byte) {}
  std::uint64_t Lunghezza() const override { return byte_.size(); }
  bool Leggi(std::uint64_t inizio, std::size_t n, std::string* out) override;

 private:
  std::string_view byte_;
};

// The version resource (type 16, its first name, its first language) of a PE32 or PE32+ file, as the bytes
// of its data entry; "" when the file is not such a file, has none, or any part of the way to it does not
// lie inside the file. Never reads or allocates more than the file holds.
std::string EstraiRisorsaVersione(LettoreByte& lettore);

// The raw version block of an executable, "" when it has none or cannot be read.
std::string LeggiBloccoVersione(const std::string& winPath);

// The fields of the platform's OSVERSIONINFOA that the program looks at.
struct VersioneOs {
  std::uint32_t dwMajorVersion = 0;
  std::uint32_t dwMinorVersion = 0;
  std::uint32_t dwBuildNumber = 0;
  std::uint32_t dwPlatformId = 0;
  std::string szCSDVersion;
};

// False when the platform will not tell.
bool LeggiVersioneOs(VersioneOs* versione);

}  // namespace host
