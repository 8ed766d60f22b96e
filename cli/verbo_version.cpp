#include "verbi.h"

namespace cli {

int VerboVersion(const Argomenti&, MessaggiConsole&) {
  return Uso("version: not built yet");
}

}  // namespace cli
