// checkordl-cli: the program's operations without a window, for scripts, tests and the supporter.
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include "analysis/voci.h"
#include "verbi.h"

namespace cli {

int Uso(const std::string& motivo) {
  if (!motivo.empty()) std::fprintf(stderr, "checkordl-cli: %s\n", motivo.c_str());
  std::string voci;
  for (const auto& v : analysis::kVoci) {
    if (!voci.empty()) voci += ' ';
    voci += v.parola;
  }
  const std::string uso =
      "usage: checkordl-cli VERB ARGS...\n"
      "  pack SNAPSHOT MEMBER...   pack the members into a snapshot\n"
      "  unpack SNAPSHOT FOLDER    unpack a snapshot into an existing folder and print its table\n"
      "  version FILE              print the version text of an executable\n"
      "  find-exe NAME             print where an executable is installed\n"
      "  discover                  print the editor folder and the Ordelio folder found at start\n"
      "  sample FOLDER             write backup_trle.le of the folder into the program folder\n"
      "  check [TRLE ORDL]         find both installations (or take these), run the check, write the "
      "snapshot\n"
      "  report SNAPSHOT [ITEM...] open a snapshot and print the report area after the items\n"
      "                            (" +
      voci +
      ")\n"
      "  compare OLD NEW [--json]  open two snapshots and print what changed from the old to the new\n"
      "  findings SNAPSHOT...      print what looks wrong in each snapshot (--json: JSON Lines)\n"
      "  demo DIR                  make a sample machine in DIR, run the check and every report on it\n"
      "Paths are Windows paths (C:\\Giochi\\Trle) or absolute host paths.\n";
  std::fputs(uso.c_str(), stderr);
  return 2;
}

}  // namespace cli

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
#ifdef _WIN32
  // Output is bytes: no line-end translation.
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
#endif
  if (argc < 2) return cli::Uso();
  const std::string verbo = argv[1];
  const cli::Argomenti args(argv + 2, argv + argc);
  cli::MessaggiConsole msg;
  struct Verbo {
    const char* nome;
    int (*esegui)(const cli::Argomenti&, cli::MessaggiConsole&);
  };
  static constexpr Verbo kVerbi[] = {
      {"pack", cli::VerboPack},        {"unpack", cli::VerboUnpack},     {"version", cli::VerboVersion},
      {"find-exe", cli::VerboFindExe}, {"discover", cli::VerboDiscover}, {"sample", cli::VerboSample},
      {"check", cli::VerboCheck},      {"demo", cli::VerboDemo},         {"report", cli::VerboReport},
      {"compare", cli::VerboCompare},  {"findings", cli::VerboFindings}};
  for (const auto& v : kVerbi)
    if (verbo == v.nome) return v.esegui(args, msg);
  return cli::Uso("unknown verb: " + verbo);
}
