#include "support/spazio_dischi.h"

#include "host/accesso_dischi.h"
#include "host/macchina.h"
#include "support/valori.h"

namespace support {
namespace {

// Assignment to a fixed-length text: cut to the length or filled with blanks.
std::string Fissa(const std::string& testo, std::size_t lunghezza) {
  std::string out = testo.substr(0, lunghezza);
  out.resize(lunghezza, ' ');
  return out;
}

std::string Radice(const std::string& drive) {
  return drive.empty() ? std::string() : drive.substr(0, 1) + ":\\";
}

}  // namespace

bool GetDriveInfo(const std::string& drive, DriveInfo& info) {
  host::OggettoDrive d;
  int err = 0;
  if (!host::LeggiDrive(Radice(drive), &d, &err)) {
    if (err == host::kErrDeviceUnavailable) {
      info.DriveLetter = Fissa("", 1);
      info.VolumeName = Fissa("", DriveInfo::kLunghezzaVolume);
      info.ShareName.clear();
      info.DriveType = 0;
      info.IsReady = false;
      info.SerialNumber = 0;
      info.TotalSize = 0;
      info.FreeSpace = 0;
      return false;
    }
    // Any other failure fills nothing; the letter the record already had decides.
    return !TogliSpazi(info.DriveLetter).empty();
  }
  info.DriveLetter = Fissa(d.DriveLetter, 1);
  info.IsReady = d.IsReady;
  info.ShareName = d.ShareName;
  if (d.IsReady) {
    info.VolumeName = Fissa(d.VolumeName, DriveInfo::kLunghezzaVolume);
    info.SerialNumber = d.SerialNumber;
    if (d.SpazioLetto) {
      info.FreeSpace = static_cast<double>(d.FreeSpace);
      info.TotalSize = static_cast<double>(d.TotalSize);
    }
  } else {
    info.VolumeName = Fissa("", DriveInfo::kLunghezzaVolume);
    info.SerialNumber = 0;
    info.FreeSpace = 0;
    info.TotalSize = 0;
  }
  info.DriveType = d.DriveType;
  return !TogliSpazi(info.DriveLetter).empty();
}

std::vector<std::string> ElencoDischiFissi() {
  std::vector<std::string> elenco;
  for (char l = 'C'; l <= 'Z'; ++l) {
    DriveInfo info;
    const std::string drive = std::string(1, l) + ":";
    if (GetDriveInfo(drive, info) && info.DriveType == host::kDriveFisso) elenco.push_back(drive);
  }
  return elenco;
}

double SpazioLiberoDaDriveInfo(const std::string& drive) {
  DriveInfo info;
  return GetDriveInfo(drive, info) ? info.FreeSpace : 0;
}

double SpazioLibero(const std::string& drive) {
  const std::string radice = Radice(drive);
  std::uint64_t liberi = 0;
  if (!host::SpazioLiberoTotale(radice, &liberi)) return SpazioLiberoDaDriveInfo(radice);
  return static_cast<double>(liberi);
}

std::string DiscoConPiuSpazio(double& libero) {
  const std::vector<std::string> elenco = ElencoDischiFissi();
  if (elenco.empty()) return {};
  std::vector<double> spazi;
  for (const auto& d : elenco) spazi.push_back(SpazioLibero(d));
  double massimo = 0;
  std::string scelto = elenco[0];
  for (std::size_t i = 0; i < elenco.size(); ++i) {
    if (spazi[i] > massimo) {
      massimo = spazi[i];
      scelto = elenco[i];
    }
  }
  libero = massimo;
  return scelto;
}

}  // namespace support
