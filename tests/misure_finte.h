// Volume figures by drive letter, handed out in place of the file system's while one of these lives.
#pragma once

#include <map>
#include <string>

#include "host/accesso_dischi.h"

class MisureFinte {
 public:
  MisureFinte() {
    Figure().clear();
    host::SostituisciMisuraVolume(Misura);
  }
  ~MisureFinte() { host::SostituisciMisuraVolume(nullptr); }
  MisureFinte(const MisureFinte&) = delete;
  MisureFinte& operator=(const MisureFinte&) = delete;

  static std::map<char, host::MisureVolume>& Figure() {
    static std::map<char, host::MisureVolume> f;
    return f;
  }

 private:
  static bool Misura(const std::string& radice, host::MisureVolume* m) {
    const auto it = Figure().find(radice.empty() ? '\0' : radice[0]);
    return it != Figure().end() && (*m = it->second, true);
  }
};
