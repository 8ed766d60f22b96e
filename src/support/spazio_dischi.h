// How much room the drives have: one drive's description, the fixed drives, free bytes, the fixed drive
// with the most room. Nothing here shows anything; a failure gives false, 0 or "".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace support {

// One drive, in memory only. The two text fields have a fixed length and are blank-filled.
struct DriveInfo {
  static constexpr std::size_t kLunghezzaVolume = 64;

  std::string DriveLetter = " ";  // the letter without colon; blank when nothing is known
  std::int32_t DriveType = 0;     // 2 is a fixed disk
  bool IsReady = false;
  std::int32_t SerialNumber = 0;
  std::string VolumeName = std::string(kLunghezzaVolume, ' ');
  double TotalSize = 0;
  double FreeSpace = 0;
  std::string ShareName;  // "" on a local drive
};

// A drive is named by a string whose first character is its letter ("C", "c:", "C:\Dati").
// False for a drive the machine does not have; a drive that is not ready gives true with its sizes 0.
// A field whose source fails keeps what it had.
bool GetDriveInfo(const std::string& drive, DriveInfo& info);

// The fixed drives from C to Z, in that order, each as letter and colon ("C:").
std::vector<std::string> ElencoDischiFissi();

// Free bytes as the drive's description gives them; 0 when the drive cannot be described.
double SpazioLiberoDaDriveInfo(const std::string& drive);

// Free bytes of the whole volume, by the volume call first and the drive's description behind it.
double SpazioLibero(const std::string& drive);

// The fixed drive with the most free bytes ("C:"), the earlier letter on a tie, with those bytes in
// `libero`. With no fixed drive at all it gives "" and leaves `libero` as it was.
std::string DiscoConPiuSpazio(double& libero);

}  // namespace support
