// Bytes written down in hex, as the golden files under tests/data hold them: two digits a byte, blanks
// ignored, "#" starting a comment that runs to the end of the line.
#pragma once

#include <cctype>
#include <fstream>
#include <string>

inline std::string LeggiEsadecimale(const std::string& percorso) {
  std::ifstream f(percorso);
  std::string riga, cifre, byte;
  while (std::getline(f, riga))
    for (const char c : riga.substr(0, riga.find('#')))
      if (std::isxdigit(static_cast<unsigned char>(c))) cifre += c;
  for (std::size_t i = 0; i + 1 < cifre.size(); i += 2)
    byte += static_cast<char>(std::stoi(cifre.substr(i, 2), nullptr, 16));
  return byte;
}
