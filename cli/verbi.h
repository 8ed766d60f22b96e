// The verbs of the headless tool, one file each; main.cpp only dispatches.
#pragma once

#include <string>
#include <vector>

#include "console.h"

namespace cli {

using Argomenti = std::vector<std::string>;

// Prints the usage text (after a reason, when given) and gives the usage exit status.
int Uso(const std::string& motivo = {});

int VerboPack(const Argomenti& args, MessaggiConsole& msg);
int VerboUnpack(const Argomenti& args, MessaggiConsole& msg);
int VerboVersion(const Argomenti& args, MessaggiConsole& msg);
int VerboFindExe(const Argomenti& args, MessaggiConsole& msg);
int VerboDiscover(const Argomenti& args, MessaggiConsole& msg);
int VerboSample(const Argomenti& args, MessaggiConsole& msg);
int VerboCheck(const Argomenti& args, MessaggiConsole& msg);
int VerboDemo(const Argomenti& args, MessaggiConsole& msg);

}  // namespace cli
