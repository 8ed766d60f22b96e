// A whole machine in a temporary folder: a Wine prefix with C: on drive_c and D: on a missing target.
#pragma once

#include <cstdint>
#include <string>

// A 32-bit signed integer as the four little-endian bytes that files hold.
std::string Le32(std::int32_t v);

class MacchinaProva {
 public:
  MacchinaProva();
  ~MacchinaProva();
  MacchinaProva(const MacchinaProva&) = delete;
  MacchinaProva& operator=(const MacchinaProva&) = delete;

  // Host path of a Windows path below C:\ ("Dati\a.txt" -> <prefix>/drive_c/Dati/a.txt).
  std::string C(const std::string& relativo) const;
  const std::string& Prefisso() const { return prefisso_; }

  static void ScriviHost(const std::string& host, const std::string& byte);
  static std::string LeggiHost(const std::string& host);
  static bool EsisteHost(const std::string& host);

 private:
  std::string prefisso_;
};
