// checkordl-cli: the program's operations without a window, for scripts, tests and the supporter.
#include <algorithm>
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include "avvio.h"
#include "uso.h"

#ifndef CHECKORDL_VERSIONE
#error "the build gives the project's version"
#endif

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
#ifdef _WIN32
  // Output is bytes: no line-end translation.
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
#endif
  if (argc < 2) {
    const int esito = cli::Uso();
    if (cli::ConsoleDaSola()) {
      std::fputs(
          "\nThis is the command-line tool: run it in a Command Prompt with a verb, or start checkordl.exe "
          "for the window.\nPress Enter to close this window.\n",
          stderr);
      cli::AttendiInvio();
    }
    return esito;
  }
  const std::string verbo = argv[1];
  const cli::Argomenti args(argv + 2, argv + argc);
  if (verbo == "--help" || verbo == "-h") {
    std::fputs(cli::TestoUso().c_str(), stdout);
    return 0;
  }
  if (verbo == "--version") {
    std::fputs("checkordl-cli " CHECKORDL_VERSIONE "\n", stdout);
    return 0;
  }
  // Not in the usage: the build makes the manual page from it.
  if (verbo == "--man") {
    std::fputs(cli::PaginaManuale(CHECKORDL_VERSIONE).c_str(), stdout);
    return 0;
  }
  const bool aiuto = verbo == "help";
  const std::string nome = aiuto && !args.empty() ? args[0] : verbo;
  const cli::Verbo* v = cli::TrovaVerbo(nome);
  if (aiuto && args.empty()) {
    std::fputs(cli::TestoUso().c_str(), stdout);
    return 0;
  }
  if (!v) return cli::Uso("unknown verb: " + nome);
  if (aiuto || std::find(args.begin(), args.end(), "--help") != args.end()) {
    std::fputs(cli::TestoUsoVerbo(*v).c_str(), stdout);
    return 0;
  }
  cli::MessaggiConsole msg;
  return v->esegui(args, msg);
}
