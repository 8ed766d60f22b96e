// The whole road from a snapshot's bytes to its findings: unpacked into a folder of its own, every check run
// on whatever members it holds, the text and the JSON line made. The JSON must parse, and a snapshot either
// gives findings or the one finding that says why it could not be read. The same bytes then stand as the
// environment member of what was unpacked, whatever they hold, and the checks run again; then as every member
// at once, where a member its reader refuses must never be passed.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "analysis/fatti.h"
#include "analysis/riepilogo.h"
#include "collection/membri.h"
#include "prefisso_fuzz.h"

namespace {

// The bytes as every member at once: each is there, and none that its reader refused is passed over.
void Ognuno(const std::string& drive, const std::uint8_t* dati, std::size_t n) {
  using analysis::StatoMembro, collection::Membro;
  std::filesystem::remove_all(drive + "/Dati");
  std::filesystem::create_directory(drive + "/Dati");
  collection::ContenutoSnapshot contenuto{static_cast<std::int32_t>(collection::kMembri.size()), {}, {}};
  for (const collection::VoceMembro& m : collection::kMembri) {
    std::ofstream(drive + "/Dati/" + m.nomeDati, std::ios::binary)
        .write(reinterpret_cast<const char*>(dati), static_cast<std::streamsize>(n));
    contenuto.Nomi.push_back(std::string("C:\\") + m.nomeControllo);
    contenuto.Dimensioni.push_back(static_cast<std::int32_t>(n));
  }
  const analysis::Fatti f = analysis::LeggiFatti("C:\\Dati", contenuto);
  const auto esiti = analysis::CalcolaRiepilogo("C:\\Dati", contenuto, "C:\\Dati", '.');
  const std::pair<Membro, const char*> passi[] = {{Membro::script, "script.levels-present"},
                                                  {Membro::intestazione, "flag.none"},
                                                  {Membro::preferenze, "prefs.same-editor-folder"},
                                                  {Membro::archivio, "archive.folders-match"}};
  for (const auto& [m, passa] : passi) {
    if (f.Stato(m) == StatoMembro::assente) std::abort();
    for (const auto& e : esiti)
      if (f.Stato(m) != StatoMembro::letto && e.Id == passa) std::abort();
  }
  const auto contati = static_cast<std::size_t>(f.archivio.header.TotLivelli);
  if (f.archivio.stato == StatoMembro::letto && f.archivio.livelli.size() != contati) std::abort();
}

}  // namespace

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
  Ognuno(drive, dati, n);
  const auto j = nlohmann::json::parse(analysis::JsonRiepilogo("C:\\s.bin", r), nullptr, false);
  const bool illeggibile = r.Esiti.size() == 1 && r.Esiti[0].Id == "snapshot.unreadable";
  if (r.Errore.empty() == illeggibile || r.Esiti.empty() || !testo.ends_with("\r\n") || j.is_discarded() ||
      j["findings"].size() != r.Esiti.size())
    std::abort();
  return 0;
}
