// Drives of a Wine prefix: each link in dosdevices/ is a drive (Z: stands for / when the prefix names
// none), a drive whose target is missing is there but not ready, and the type is what the prefix's
// registry says under Software\Wine\Drives, else a fixed disk, as Wine reports them.
#ifndef _WIN32

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <cctype>
#include <optional>

#include "host/accesso_dischi.h"
#include "host/accesso_registro.h"
#include "host/file_host.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "host/registro_file.h"

namespace host {
namespace {

int TipoDaRegistro(char lettera) {
  std::string dati;
  int tipo = kRegNone;
  const std::string nome = std::string(1, static_cast<char>(std::tolower(lettera))) + ":";
  if (LeggiValoreRegistroNome("Software\\Wine\\Drives", nome, &dati, &tipo) != kRegOk || !TipoTesto(tipo))
    return kDriveFisso;
  dati.resize(dati.find('\0') == std::string::npos ? dati.size() : dati.find('\0'));
  if (UgualiSenzaCaso(dati, "cdrom")) return kDriveCdRom;
  if (UgualiSenzaCaso(dati, "floppy")) return kDriveRimovibile;
  if (UgualiSenzaCaso(dati, "network")) return kDriveRete;
  if (UgualiSenzaCaso(dati, "ramdisk")) return kDriveRam;
  return kDriveFisso;
}

// The first line of a small file in the drive's root, where Wine keeps a label or a serial number.
std::string PrimaRiga(const std::string& percorso) {
  std::string riga = LeggiFileHost(percorso, 256).value_or(std::string());
  riga.resize(riga.find_first_of("\r\n") == std::string::npos ? riga.size() : riga.find_first_of("\r\n"));
  return riga;
}

}  // namespace

bool MisuraPiattaforma(const std::string& radice, MisureVolume* misure) {
  const char l = LetteraDrive(radice);
  if (!l) return false;
  const auto d = DestinazioneDrive(l);
  struct statvfs sv {};
  if (!d || ::statvfs(d->c_str(), &sv) != 0) return false;
  const std::uint64_t blocco = sv.f_frsize ? sv.f_frsize : sv.f_bsize;
  misure->disponibili = static_cast<std::uint64_t>(sv.f_bavail) * blocco;
  misure->totali = static_cast<std::uint64_t>(sv.f_blocks) * blocco;
  // Wine gives the caller's share for the whole volume too: the blocks kept for root are never free.
  misure->liberi = misure->disponibili;
  return true;
}

bool LeggiDrive(const std::string& radice, OggettoDrive* drive, int* err) {
  if (err) *err = kNessunErrore;
  const char l = LetteraDrive(radice);
  const auto d = l ? DestinazioneDrive(l) : std::nullopt;
  if (!d) {
    if (err) *err = kErrDeviceUnavailable;
    return false;
  }
  *drive = OggettoDrive{};
  drive->DriveLetter = std::string(1, l);
  drive->DriveType = TipoDaRegistro(l);
  struct stat st {};
  drive->IsReady = ::stat(d->c_str(), &st) == 0 && S_ISDIR(st.st_mode);
  if (!drive->IsReady) return true;
  const std::string base = *d == "/" ? std::string() : *d;
  drive->VolumeName = DaUtf8(PrimaRiga(base + "/.windows-label"));
  const std::string seriale = PrimaRiga(base + "/.windows-serial");
  // Without a serial of its own Wine makes one from the drive letter.
  const auto s = seriale.empty() ? static_cast<std::uint32_t>(l) << 24
                                 : static_cast<std::uint32_t>(std::strtoul(seriale.c_str(), nullptr, 16));
  drive->SerialNumber = static_cast<std::int32_t>(s);
  MisureVolume m;
  drive->SpazioLetto = MisuraVolume(std::string(1, l) + ":\\", &m);
  if (drive->SpazioLetto) {
    drive->FreeSpace = m.disponibili;
    drive->TotalSize = m.totali;
  }
  return true;
}

}  // namespace host

#endif  // !_WIN32
