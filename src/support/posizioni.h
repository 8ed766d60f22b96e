// Positions in a report string and in a text control that shows each CR LF as one line break. The string
// counts a CR LF as two characters, the control as one; every other byte is one character in both.
#pragma once

#include <string>
#include <vector>

namespace support {

class MappaPosizioni {
 public:
  void Imposta(const std::string& testo);
  long VersoControllo(long posizione) const;
  long DaControllo(long posizione) const;

 private:
  // Where each CR LF pair starts in the string.
  std::vector<long> coppie_;
};

}  // namespace support
