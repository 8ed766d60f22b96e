// Drives as the platform describes them: the Drive object of the scripting runtime and the volume's free
// space. On Windows these are the volume calls; on a Wine prefix the drives are the links in dosdevices/.
#pragma once

#include <cstdint>
#include <string>

namespace host {

// The Drive object's numbering of drive types.
enum TipoDrive : int {
  kDriveSconosciuto = 0,
  kDriveRimovibile = 1,
  kDriveFisso = 2,
  kDriveRete = 3,
  kDriveCdRom = 4,
  kDriveRam = 5,
};

// The members of the Drive object. The volume's members are known only for a drive that is ready.
struct OggettoDrive {
  std::string DriveLetter;  // upper case, no colon
  bool IsReady = false;
  std::string ShareName;  // "" on a local drive
  int DriveType = kDriveSconosciuto;
  // Filled when IsReady; `SpazioLetto` tells whether the two sizes could be had.
  std::string VolumeName;
  std::int32_t SerialNumber = 0;
  bool SpazioLetto = false;
  std::uint64_t FreeSpace = 0;  // what the caller may use
  std::uint64_t TotalSize = 0;
};

// The Drive object of a root path ("C:\", only the letter counts). False with *err 68 when the machine
// has no such drive.
bool LeggiDrive(const std::string& radice, OggettoDrive* drive, int* err);

// The free bytes of the whole volume, whatever a quota leaves to this user; false when the volume cannot
// be measured.
bool SpazioLiberoTotale(const std::string& radice, std::uint64_t* byte);

// The figures of a volume in bytes, as the file system gives them.
struct MisureVolume {
  std::uint64_t disponibili = 0;  // free to the caller
  std::uint64_t totali = 0;
  std::uint64_t liberi = 0;  // free on the whole volume
};
using FunzioneMisura = bool (*)(const std::string& radice, MisureVolume* misure);

// The platform's own figures for a root path.
bool MisuraPiattaforma(const std::string& radice, MisureVolume* misure);
// The drive a root path names, in upper case; 0 when it names none.
char LetteraDrive(const std::string& radice);

// Every size above comes through this call, which is the platform's unless another is put in its place.
bool MisuraVolume(const std::string& radice, MisureVolume* misure);
// Tests put their own figures in, to show sizes that no test disk has; null puts the platform's back.
void SostituisciMisuraVolume(FunzioneMisura misura);

}  // namespace host
