#include "support/installazioni.h"
#include "verbi.h"

namespace cli {

int VerboFindExe(const Argomenti& args, MessaggiConsole&) {
  if (args.size() != 1) return Uso("find-exe needs the name of an executable");
  ScriviByte(support::TrovaEseguibile(ArgomentoPercorso(args[0])) + "\n");
  return 0;
}

}  // namespace cli
