// The version block and the OS version in a Wine prefix: the block read out of the PE file, and the system
// that Wine reports when the prefix sets no other.
#ifndef _WIN32

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/accesso_registro.h"
#include "host/grezzo.h"
#include "host/machine.h"
#include "host/nomi.h"
#include "host/registro_file.h"
#include "host/versione.h"

namespace host {

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
  v->dwMajorVersion = major;
  v->dwMinorVersion = minor;
  v->dwBuildNumber =
      static_cast<std::uint32_t>(std::strtoul(Testo(chiave, "CurrentBuildNumber").c_str(), nullptr, 10));
  v->dwPlatformId = 2;
  v->szCSDVersion = Testo(chiave, "CSDVersion");
  return true;
}

}  // namespace

bool LeggiVersioneOs(VersioneOs* versione) {
  // As Wine decides: the prefix's "Version" setting, else the system its registry describes, else Windows 7.
  const std::string scelta =
      LeggiValoreRegistroTesto(PrefissoCorrente() + "/user.reg", "Software\\Wine", "Version");
  const SistemaWine* trovato = nullptr;
  for (const auto& s : kSistemi)
    if (UgualiSenzaCaso(scelta, s.nome)) trovato = &s;
  if (trovato)
    *versione = trovato->versione;
  else if (!VersioneDelRegistro(versione))
    *versione = {6, 1, 7601, 2, "Service Pack 1"};
  // As a program whose manifest names no system newer than Windows 8 is told. checkordl.exe's manifest names
  // Windows 10, which then answers 10.0; the code recorded from either is 6, NT.
  if (versione->dwMajorVersion > 6 || (versione->dwMajorVersion == 6 && versione->dwMinorVersion > 2))
    *versione = {6, 2, 9200, 2, versione->szCSDVersion};
  return true;
}

}  // namespace host

#endif  // !_WIN32
