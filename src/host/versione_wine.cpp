// The version block and the OS version in a Wine prefix: the block read out of the PE file, and the system
// that Wine reports when the prefix sets no other.
#ifndef _WIN32

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/accesso_registro.h"
#include "host/byte_le.h"
#include "host/grezzo.h"
#include "host/interno_wine.h"
#include "host/lettore_file.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "host/registro_file.h"
#include "host/versione.h"

namespace host {

std::string grezzo::BloccoVersione(const std::string& winPath) {
  int err = 0;
  File file = File::ApriLetturaGrezza(winPath, &err);
  if (err || !file.Aperto()) return {};
  LettoreFile lettore(file);
  return EstraiRisorsaVersione(lettore);
}

namespace {

struct SistemaWine {
  const char* nome;
  VersioneOs versione;
};

// The systems that a prefix's "Version" setting names, as Wine describes them.
const SistemaWine kSistemi[] = {
    {"win11", {10, 0, 22000, 2, ""}},
    {"win10", {10, 0, 19043, 2, ""}},
    {"win81", {6, 3, 9600, 2, ""}},
    {"win8", {6, 2, 9200, 2, ""}},
    {"win2008r2", {6, 1, 7601, 2, "Service Pack 1"}},
    {"win7", {6, 1, 7601, 2, "Service Pack 1"}},
    {"win2008", {6, 0, 6002, 2, "Service Pack 2"}},
    {"vista", {6, 0, 6002, 2, "Service Pack 2"}},
    {"win2003", {5, 2, 3790, 2, "Service Pack 2"}},
    {"winxp64", {5, 2, 3790, 2, "Service Pack 2"}},
    {"winxp", {5, 1, 2600, 2, "Service Pack 3"}},
    {"win2k", {5, 0, 2195, 2, "Service Pack 4"}},
    {"nt40", {4, 0, 1381, 2, "Service Pack 6a"}},
    {"nt351", {3, 51, 1057, 2, "Service Pack 5"}},
    {"winme", {4, 90, 0x45A0BB8, 1, " "}},
    {"win98", {4, 10, 0x40A08AE, 1, " A "}},
    {"win95", {4, 0, 0x40003B6, 1, ""}},
};

std::string Testo(const std::string& chiave, const std::string& nome) {
  std::string dati;
  int tipo = kRegNone;
  if (LeggiValoreRegistroNome(chiave, nome, &dati, &tipo) != kRegOk || !TipoTesto(tipo)) return {};
  return dati.substr(0, dati.find('\0'));
}

// What the prefix's own registry says of the running system; false when it says nothing usable.
bool VersioneDelRegistro(VersioneOs* v) {
  const std::string chiave = "Software\\Microsoft\\Windows NT\\CurrentVersion";
  const std::string numero = Testo(chiave, "CurrentVersion");
  unsigned major = 0, minor = 0;
  if (std::sscanf(numero.c_str(), "%u.%u", &major, &minor) != 2 || major == 0) return false;
  // Windows 10 on keeps "6.3" there for old programs and the real numbers in two DWORDs.
  std::string dati;
  int tipo = kRegNone;
  if (LeggiValoreRegistroNome(chiave, "CurrentMajorVersionNumber", &dati, &tipo) == kRegOk &&
      tipo == kRegDword && dati.size() >= 4) {
    major = U32LE(dati, 0);
    minor = LeggiValoreRegistroNome(chiave, "CurrentMinorVersionNumber", &dati, &tipo) == kRegOk &&
                    tipo == kRegDword && dati.size() >= 4
                ? U32LE(dati, 0)
                : 0;
  }
  v->dwMajorVersion = major;
  v->dwMinorVersion = minor;
  v->dwBuildNumber =
      static_cast<std::uint32_t>(std::strtoul(Testo(chiave, "CurrentBuildNumber").c_str(), nullptr, 10));
  v->dwPlatformId = 2;
  v->szCSDVersion = Testo(chiave, "CSDVersion");
  return true;
}

}  // namespace

VersioneOs VersioneWine() {
  // As Wine decides: the prefix's "Version" setting, else the system its registry describes, else Windows 7.
  VersioneOs v;
  const std::string scelta =
      LeggiValoreRegistroTesto(PrefissoCorrente() + "/user.reg", "Software\\Wine", "Version");
  const SistemaWine* trovato = nullptr;
  for (const auto& s : kSistemi)
    if (UgualiSenzaCaso(scelta, s.nome)) trovato = &s;
  if (trovato)
    v = trovato->versione;
  else if (!VersioneDelRegistro(&v))
    v = {6, 1, 7601, 2, "Service Pack 1"};
  return v;
}

bool LeggiVersioneOs(VersioneOs* versione) {
  *versione = VersioneWine();
  // As a program whose manifest names no system newer than Windows 8 is told. checkordl.exe's manifest names
  // Windows 10, which then answers 10.0; the code recorded from either is 6, NT.
  if (versione->dwMajorVersion > 6 || (versione->dwMajorVersion == 6 && versione->dwMinorVersion > 2))
    *versione = {6, 2, 9200, 2, versione->szCSDVersion};
  return true;
}

}  // namespace host

#endif  // !_WIN32
