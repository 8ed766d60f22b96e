#include "support/versioni.h"

#include <string_view>

#include "host/nomi.h"

namespace support {
namespace {

constexpr std::string_view kChiave("FileVersion\0", 12);

std::size_t TrovaSenzaCaso(std::string_view testo, std::string_view chiave) {
  if (chiave.size() > testo.size()) return std::string_view::npos;
  for (std::size_t i = 0; i + chiave.size() <= testo.size(); ++i) {
    std::size_t k = 0;
    while (k < chiave.size() && host::Maiuscola(testo[i + k]) == host::Maiuscola(chiave[k])) ++k;
    if (k == chiave.size()) return i;
  }
  return std::string_view::npos;
}

}  // namespace

std::string InserisciNulDopoCaratteri(const std::string& testo) {
  std::string out;
  out.reserve(testo.size() * 2);
  for (char c : testo) {
    out += c;
    out += '\0';
  }
  return out;
}

std::string CercaVersioneNelBlocco(const std::string& blocco) {
  const std::string_view b(blocco);
  bool sedici = false;
  std::size_t chiave = TrovaSenzaCaso(b, kChiave);
  std::size_t lunghezzaChiave = kChiave.size();
  if (chiave == std::string_view::npos) {
    const std::string chiave16 = InserisciNulDopoCaratteri(std::string(kChiave));
    chiave = TrovaSenzaCaso(b, chiave16);
    if (chiave == std::string_view::npos) return {};
    sedici = true;
    lunghezzaChiave = chiave16.size();
  }
  std::size_t inizio = chiave + lunghezzaChiave;
  while (inizio < b.size() && b[inizio] == '\0') ++inizio;
  // The end is searched byte by byte, not per 16-bit character: a NUL pair may straddle two characters.
  const std::size_t fine = sedici ? b.find(std::string_view("\0\0", 2), inizio) : b.find('\0', inizio);
  if (fine == std::string_view::npos) return {};
  std::string testo;
  for (char c : b.substr(inizio, fine - inizio))
    if (c != '\0') testo += c;
  return testo;
}

std::string GetFileVersion(const std::string& percorso) {
  const std::string blocco = host::LeggiBloccoVersione(percorso);
  if (blocco.empty()) return {};
  return CercaVersioneNelBlocco(blocco);
}

std::int32_t CodiceVersioneWindows(const host::VersioneOs& v) {
  switch (v.dwPlatformId) {
    case 1:
      return v.dwMinorVersion < 10 ? 1 : 4;
    case 2:
      return v.dwMajorVersion == 5 ? 5 : 6;
    default:
      return 0;
  }
}

std::int32_t GetWindowsVersion() {
  host::VersioneOs v;
  if (!host::LeggiVersioneOs(&v)) return 0;
  return CodiceVersioneWindows(v);
}

bool IsWindowsNT() {
  return GetWindowsVersion() > 4;
}

}  // namespace support
