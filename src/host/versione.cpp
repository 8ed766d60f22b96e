// The version block and the OS version: on Windows the platform's calls, elsewhere the PE file itself and
// the system that Wine reports when a prefix sets no other.
#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <winver.h>
#endif

#include <cstdint>
#include <string>

#include "host/machine.h"
#include "host/versione.h"

namespace host {

#ifdef _WIN32

std::string LeggiBloccoVersione(const std::string& winPath) {
  DWORD maniglia = 0;
  const DWORD dimensione = ::GetFileVersionInfoSizeA(winPath.c_str(), &maniglia);
  if (dimensione == 0) return {};
  // The platform may leave the tail of the buffer as it found it; blanks, as the program always had there.
  std::string blocco(dimensione, ' ');
  if (!::GetFileVersionInfoA(winPath.c_str(), 0, dimensione, blocco.data())) return {};
  return blocco;
}

bool LeggiVersioneOs(VersioneOs* versione) {
  OSVERSIONINFOA info{};
  static_assert(sizeof info == 148, "OSVERSIONINFOA is 148 bytes");
  info.dwOSVersionInfoSize = sizeof info;
  if (!::GetVersionExA(&info)) return false;
  versione->dwMajorVersion = info.dwMajorVersion;
  versione->dwMinorVersion = info.dwMinorVersion;
  versione->dwBuildNumber = info.dwBuildNumber;
  versione->dwPlatformId = info.dwPlatformId;
  std::size_t n = 0;
  while (n < sizeof info.szCSDVersion && info.szCSDVersion[n] != '\0') ++n;
  versione->szCSDVersion.assign(info.szCSDVersion, n);
  return true;
}

#else

namespace {

// An open executable, read piece by piece: it may be far larger than the few hundred bytes needed of it.
class LettoreFile final : public LettoreByte {
 public:
  explicit LettoreFile(File& file) : file_(file) {
    const std::int64_t n = file_.Lunghezza();
    lunghezza_ = n > 0 ? static_cast<std::uint64_t>(n) : 0;
  }
  std::uint64_t Lunghezza() const override { return lunghezza_; }
  bool Leggi(std::uint64_t inizio, std::size_t n, std::string* out) override {
    if (inizio > lunghezza_ || n > lunghezza_ - inizio) return false;
    const std::int64_t qui = file_.Posizione();
    if (qui < 0 || !file_.Salta(static_cast<std::int64_t>(inizio) - qui)) return false;
    out->resize(n);
    return file_.Leggi(out->data(), n) == n;
  }

 private:
  File& file_;
  std::uint64_t lunghezza_ = 0;
};

}  // namespace

std::string LeggiBloccoVersione(const std::string& winPath) {
  int err = 0;
  File file = File::ApriLettura(winPath, &err);
  if (err || !file.Aperto()) return {};
  LettoreFile lettore(file);
  return EstraiRisorsaVersione(lettore);
}

bool LeggiVersioneOs(VersioneOs* versione) {
  // Wine's default: Windows 10 (VER_PLATFORM_WIN32_NT), without a service pack.
  versione->dwMajorVersion = 10;
  versione->dwMinorVersion = 0;
  versione->dwBuildNumber = 19043;
  versione->dwPlatformId = 2;
  versione->szCSDVersion.clear();
  return true;
}

#endif

}  // namespace host
