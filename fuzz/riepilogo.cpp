// The whole road from a snapshot's bytes to its findings: unpacked into a folder of its own, every check run
// on whatever members it holds, the text and the JSON line made. The JSON must parse, and a snapshot either
// gives findings or the one finding that says why it could not be read. The same bytes then stand as the
// environment member of what was unpacked, whatever they hold, and the checks run again.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "analysis/riepilogo.h"
#include "prefisso_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  const std::string drive = PrefissoFuzz() + "/drive_c";
  std::filesystem::remove_all(drive + "/Dati");
  std::filesystem::create_directory(drive + "/Dati");
  std::ofstream(drive + "/s.bin", std::ios::binary | std::ios::trunc)
      .write(reinterpret_cast<const char*>(dati), static_cast<std::streamsize>(n));

  // Members named as the sample lists stand in for those beside the program: the backup totals run too.
  const auto r = analysis::ApriEVerifica("C:\\s.bin", "C:\\Dati", "C:\\Dati", '.');
  const std::string testo = analysis::TestoRiepilogo(r);
  std::ofstream(drive + "/Dati/ambiente.json", std::ios::binary | std::ios::trunc)
      .write(reinterpret_cast<const char*>(dati), static_cast<std::streamsize>(n));
  const auto esiti = analysis::CalcolaRiepilogo("C:\\Dati", r.Contenuto, "C:\\Dati", '.');
  if (esiti.empty() || !analysis::TestoRiepilogo(esiti).ends_with("\r\n")) std::abort();
  const auto j = nlohmann::json::parse(analysis::JsonRiepilogo("C:\\s.bin", r), nullptr, false);
  const bool illeggibile = r.Esiti.size() == 1 && r.Esiti[0].Id == "snapshot.unreadable";
  if (r.Errore.empty() == illeggibile || r.Esiti.empty() || !testo.ends_with("\r\n") || j.is_discarded() ||
      j["findings"].size() != r.Esiti.size())
    std::abort();
  return 0;
}
