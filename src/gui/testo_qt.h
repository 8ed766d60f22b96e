// Windows-1252 byte strings at the toolkit's edge. Every byte becomes one UTF-16 unit and back, so that a
// position in a string and a position in the widget that shows it differ only where line ends are joined.
#pragma once

#include <QString>
#include <array>
#include <string>

namespace gui {

QString DaByte(const std::string& cp1252);
// The UTF-16 unit of each byte.
const std::array<char16_t, 256>& UnitaDeiByte();
// A character that Windows-1252 cannot hold becomes '?'.
std::string VersoByte(const QString& testo);

// A Windows path as the host file system names it, and back.
QString PercorsoHost(const std::string& winPath);
std::string PercorsoWindows(const QString& hostPath);

// Geometry given in twips, in layout units: 15 twips to one.
constexpr int Tw(int twips) {
  return (twips + 7) / 15;
}

}  // namespace gui
