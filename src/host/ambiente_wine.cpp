// The environment in a Wine prefix, as Wine answers a 32-bit program there: the system the prefix's settings
// describe, its kind (#arch) for the bitness, the code page and DPI of its registry, and no mark of the web
// (Wine keeps no alternate data streams).
#ifndef _WIN32

#include <cstdlib>
#include <string>

#include "host/accesso_registro.h"
#include "host/byte_le.h"
#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/registro_file.h"

namespace host {
namespace {

// Wine's GetSystemDEPPolicy: opt-in, whatever the prefix says.
constexpr std::uint32_t kDepOptIn = 2;
constexpr std::uint32_t kDpiPredefinito = 96;
constexpr std::uint32_t kCodePagePredefinito = 1252;

std::uint32_t DwordDi(Vista vista, const char* chiave, const char* nome, std::uint32_t predefinito) {
  std::string dati;
  int tipo = kRegNone;
  if (LeggiValoreVista(vista, chiave, nome, &dati, &tipo) != kRegOk || tipo != kRegDword || dati.size() < 4)
    return predefinito;
  return U32LE(dati, 0);
}

}  // namespace

void grezzo::Sistema(SistemaWindows* s) {
  const VersioneOs v = VersioneWine();
  s->maggiore = v.dwMajorVersion;
  s->minore = v.dwMinorVersion;
  s->build = v.dwBuildNumber;
  s->windows64 = !Prefisso32Bit();
  // This program itself: a 32-bit build would run under WOW64 in a 64-bit prefix, this one is native.
  s->wow64 = s->windows64 && sizeof(void*) == 4;
  s->wine = true;
  std::string acp;
  int tipo = kRegNone;
  if (LeggiValoreSistema("System\\CurrentControlSet\\Control\\Nls\\CodePage", "ACP", &acp, &tipo) == kRegOk &&
      TipoTesto(tipo))
    s->codePage = static_cast<std::uint32_t>(std::strtoul(acp.c_str(), nullptr, 10));
  if (s->codePage == 0) s->codePage = kCodePagePredefinito;
  // The user's setting, else the machine's as Wine falls back to it.
  s->dpi = DwordDi(
      Vista::utente, "Control Panel\\Desktop", "LogPixels",
      DwordDi(Vista::sistema, "System\\CurrentControlSet\\Hardware Profiles\\Current\\Software\\Fonts",
              "LogPixels", kDpiPredefinito));
  s->dep = kDepOptIn;
}

// The prefix is read directly: drive_c\windows\system32 is the system's own folder whatever the bitness of
// this program.
std::string grezzo::PercorsoDelCaricatore(const std::string& winPath, const SistemaWindows&) {
  return winPath;
}

int grezzo::Zona(const std::string&) {
  return kZonaNessuna;
}

}  // namespace host

#endif  // !_WIN32
