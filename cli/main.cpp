// checkordl-cli: the program's operations without a window, for scripts, tests and the supporter.
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include "collection/snapshot.h"
#include "console.h"
#include "support/files.h"

namespace {

constexpr const char* kUso =
    "usage: checkordl-cli VERB ARGS...\n"
    "  pack SNAPSHOT MEMBER...   pack the members into a snapshot\n"
    "  unpack SNAPSHOT FOLDER    unpack a snapshot into an existing folder and print its table\n"
    "Paths are Windows paths (C:\\Giochi\\Trle) or absolute host paths.\n";

int Uso(const std::string& motivo = {}) {
  if (!motivo.empty()) std::fprintf(stderr, "checkordl-cli: %s\n", motivo.c_str());
  std::fputs(kUso, stderr);
  return 2;
}

int Pack(const std::vector<std::string>& args, cli::MessaggiConsole& msg) {
  if (args.size() < 2) return Uso("pack needs a snapshot and at least one member");
  const std::string snapshot = cli::ArgomentoPercorso(args[0]);
  std::vector<std::string> membri;
  for (std::size_t i = 1; i < args.size(); ++i) membri.push_back(cli::ArgomentoPercorso(args[i]));
  support::DidascaliaMuta info;
  support::BarraMuta barra;
  if (!collection::SalvaSnapshot(snapshot, membri, static_cast<std::int32_t>(membri.size()), info, barra))
    msg.Critico("Error saving " + snapshot);
  return msg.CriticoMostrato() ? 1 : 0;
}

int Unpack(const std::vector<std::string>& args, cli::MessaggiConsole& msg) {
  if (args.size() != 2) return Uso("unpack needs a snapshot and a folder");
  const std::string snapshot = cli::ArgomentoPercorso(args[0]);
  const std::string cartella = cli::ArgomentoPercorso(args[1]);
  if (!support::DirExists(cartella)) return Uso("no such folder: " + args[1]);
  collection::ContenutoSnapshot contenuto;
  if (!collection::EstraiSnapshot(snapshot, cartella, contenuto)) {
    msg.Critico("Errrore estraendo file");
    return 1;
  }
  for (std::int32_t i = 0; i < contenuto.Numero; ++i)
    cli::ScriviByte(contenuto.Nomi[i] + "\t" + std::to_string(contenuto.Dimensioni[i]) + "\n");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
#ifdef _WIN32
  // Output is bytes: no line-end translation.
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
#endif
  if (argc < 2) return Uso();
  const std::string verbo = argv[1];
  const std::vector<std::string> args(argv + 2, argv + argc);
  cli::MessaggiConsole msg;
  if (verbo == "pack") return Pack(args, msg);
  if (verbo == "unpack") return Unpack(args, msg);
  return Uso("unknown verb: " + verbo);
}
