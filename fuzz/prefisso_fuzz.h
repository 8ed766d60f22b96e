// One Wine prefix for a whole fuzzing run, with drive C, made on first use in a temporary folder.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "host/macchina.h"

inline const std::string& PrefissoFuzz() {
  static const std::string p = [] {
    std::string modello = "/tmp/checkordl-fuzz-XXXXXX";
    if (!::mkdtemp(modello.data())) std::abort();
    const std::string drive = modello + "/drive_c";
    if (::mkdir((modello + "/dosdevices").c_str(), 0700) || ::mkdir(drive.c_str(), 0700) ||
        ::symlink("../drive_c", (modello + "/dosdevices/c:").c_str()))
      std::abort();
    host::UsaPrefisso(modello);
    return modello;
  }();
  return p;
}
