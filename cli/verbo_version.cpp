#include "support/versioni.h"
#include "verbi.h"

namespace cli {

int VerboVersion(const Argomenti& args, MessaggiConsole&) {
  if (args.size() != 1) return Uso("version: one FILE");
  ScriviByte(support::GetFileVersion(ArgomentoPercorso(args[0])) + "\n");
  return 0;
}

}  // namespace cli
