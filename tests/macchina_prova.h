// A whole machine for one test. Elsewhere than on Windows: a Wine prefix in a temporary folder, with C: on
// drive_c and D: on a missing target. On Windows (only ever a throwaway Wine prefix): the real C: drive and
// HKEY_LOCAL_MACHINE, put back as they were when the test ends.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

// A 32-bit signed integer as the four little-endian bytes that files hold.
std::string Le32(std::int32_t v);

class MacchinaProva {
 public:
  MacchinaProva();
  ~MacchinaProva();
  MacchinaProva(const MacchinaProva&) = delete;
  MacchinaProva& operator=(const MacchinaProva&) = delete;

  // Host path of a Windows path below C:\ ("Dati\a.txt" -> <prefix>/drive_c/Dati/a.txt, or C:\Dati\a.txt
  // on Windows). Names are given in UTF-8.
  std::string C(const std::string& relativo) const;
  // The prefix folder; nothing on Windows.
  const std::string& Prefisso() const { return prefisso_; }

  // HKEY_LOCAL_MACHINE becomes what a system.reg text says: the prefix's file, or on Windows the keys and
  // values written into the real registry.
  void Registro(const std::string& testo) const;

  // The user's local application data folder made where the machine has none (a test prefix: in user.reg);
  // on Windows the user's own, whose VirtualStore goes with the test.
  void AppDataLocale() const;

  // Whether the machine is a 64-bit Windows: on Windows the system the test runs on, elsewhere the kind of
  // prefix that system.reg names (a prefix without the line is the 64-bit kind Wine makes).
  bool Windows64() const;

  static void ScriviHost(const std::string& host, const std::string& byte);
  static std::string LeggiHost(const std::string& host);
  static bool EsisteHost(const std::string& host);

 private:
  std::string prefisso_;
  struct Ripristino;
  std::unique_ptr<Ripristino> ripristino_;
};
