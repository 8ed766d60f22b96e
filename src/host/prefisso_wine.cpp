// The Wine prefix that stands for the machine: which folder it is, and what is read of it once per prefix
// (each drive letter's link in dosdevices/, the ShowDotFiles setting).
#ifndef _WIN32

#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <optional>
#include <string>

#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "host/registro_file.h"
#include "host/vista_virtuale.h"

namespace host {
namespace {

struct Stato {
  bool pronto = false;
  std::string prefisso;
  std::optional<bool> mostraPuntiFile;
  // What each drive letter's link says, read once per prefix.
  bool driveLetti = false;
  std::array<std::optional<std::string>, 26> drive;
};

Stato& S() {
  static Stato s;
  return s;
}

void Prepara() {
  Stato& s = S();
  if (s.pronto) return;
  s.pronto = true;
  if (const char* p = std::getenv("WINEPREFIX"); p && *p) {
    s.prefisso = p;
  } else if (const char* h = std::getenv("HOME"); h && *h) {
    s.prefisso = std::string(h) + "/.wine";
  } else {
    s.prefisso = "/.wine";
  }
}

}  // namespace

const std::optional<std::string>& BersaglioDrive(char lettera) {
  Prepara();
  Stato& s = S();
  if (!s.driveLetti) {
    s.driveLetti = true;
    const std::string dosdevices = s.prefisso + "/dosdevices";
    for (int i = 0; i < 26; ++i) {
      const std::string link = dosdevices + "/" + static_cast<char>('a' + i) + ":";
      char buf[PATH_MAX];
      const ssize_t n = ::readlink(link.c_str(), buf, sizeof buf - 1);
      if (n <= 0) continue;
      std::string t(buf, static_cast<std::size_t>(n));
      if (t[0] != '/') t = dosdevices + "/" + t;
      s.drive[i] = Normalizza(t);
    }
    if (!s.drive[25]) s.drive[25] = "/";
  }
  return s.drive[lettera - 'A'];
}

bool MostraPuntiFile() {
  Stato& s = S();
  if (!s.mostraPuntiFile) {
    Prepara();
    const std::string v =
        LeggiValoreRegistroTesto(s.prefisso + "/user.reg", "Software\\Wine", "ShowDotFiles");
    s.mostraPuntiFile = !v.empty() && std::string("yYtT1").find(v[0]) != std::string::npos;
  }
  return *s.mostraPuntiFile;
}

void UsaPrefisso(const std::string& hostFolder) {
  Stato& s = S();
  s = Stato{};
  s.pronto = true;
  s.prefisso = hostFolder;
  DimenticaVistaVirtuale();
}

std::string PrefissoCorrente() {
  Prepara();
  return S().prefisso;
}

std::optional<std::string> DestinazioneDrive(char lettera) {
  lettera = Maiuscola(lettera);
  if (lettera < 'A' || lettera > 'Z') return std::nullopt;
  return BersaglioDrive(lettera);
}

}  // namespace host

#endif  // !_WIN32
