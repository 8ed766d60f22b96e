// What is wrong on the users' machines, for one snapshot or an inbox of them: each snapshot is unpacked
// into a folder of its own below the program folder, checked, and the folder removed, so that Dati stays
// as the last opened snapshot left it and no two snapshots ever share a folder.
#include <filesystem>
#include <string>
#include <system_error>

#include "analysis/riepilogo.h"
#include "collection/blocco.h"
#include "host/machine.h"
#include "support/files.h"
#include "support/valori.h"
#include "verbi.h"

#ifdef _WIN32
#include <process.h>
#define getpid _getpid
#else
#include <unistd.h>
#endif

namespace cli {
namespace {

// A new empty folder below the program folder, as a Windows path, with its host path; "" when none could
// be made.
std::string CartellaPropria(std::filesystem::path& host) {
  const std::string programma = host::CartellaProgramma();
  int err = 0;
  const std::filesystem::path base = host::PercorsoHost(programma, &err);
  if (err) return {};
  for (int i = 0; i < 1000; ++i) {
    const std::string nome = "findings-" + std::to_string(getpid()) + "-" + std::to_string(i);
    std::error_code ec;
    if (std::filesystem::create_directory(base / nome, ec)) {
      host = base / nome;
      return programma + "\\" + nome;
    }
    if (ec) return {};
  }
  return {};
}

analysis::RiepilogoSnapshot Verifica(const std::string& snapshot) {
  std::filesystem::path host;
  const std::string cartella = CartellaPropria(host);
  if (cartella.empty()) return {{}, "no working folder could be made in " + host::CartellaProgramma(), {}};
  analysis::RiepilogoSnapshot r =
      analysis::ApriEVerifica(snapshot, cartella, host::CartellaProgramma(), support::SeparatoreDecimale());
  std::error_code ec;
  std::filesystem::remove_all(host, ec);
  return r;
}

}  // namespace

int VerboFindings(const Argomenti& args, MessaggiConsole& msg) {
  Argomenti opzioni, snapshot;
  if (const int uso = SenzaOpzioni(args, {"--json"}, opzioni, snapshot)) return uso;
  const bool json = !opzioni.empty();
  if (snapshot.empty()) return Uso("findings needs a snapshot");
  if (!collection::PreparaCartellaProgramma(host::CartellaProgramma(), msg)) return 1;
  bool illeggibile = false;
  for (const auto& s : snapshot) {
    const analysis::RiepilogoSnapshot r = Verifica(ArgomentoPercorso(s));
    if (!r.Errore.empty()) {
      illeggibile = true;
      msg.Critico("Errore estraendo file: " + ArgomentoPercorso(s) + ": " + r.Errore);
    }
    if (json) {
#ifdef _WIN32
      ScriviByte(analysis::JsonRiepilogo(s, r) + "\n");
#else
      ScriviByte(analysis::JsonRiepilogo(host::DaUtf8(s), r) + "\n");
#endif
      continue;
    }
    if (snapshot.size() > 1) ScriviByte("== " + s + "\n");
    ScriviByte(analysis::TestoRiepilogo(r));
  }
  return illeggibile ? 1 : 0;
}

}  // namespace cli
