#include "verbi.h"

namespace cli {

int VerboFindExe(const Argomenti&, MessaggiConsole&) {
  return Uso("find-exe: not built yet");
}

}  // namespace cli
