// The verbs of the headless tool, one file each; main.cpp only dispatches.
#pragma once

#include <string>
#include <vector>

#include "console.h"

namespace cli {

using Argomenti = std::vector<std::string>;

// Prints the usage text (after a reason, when given) and gives the usage exit status.
int Uso(const std::string& motivo = {});

// Splits the arguments into the options (those of `note` that were given) and the rest; 0, or the usage
// exit status after an unknown option.
int SenzaOpzioni(const Argomenti& args, const std::vector<std::string>& note, Argomenti& opzioni,
                 Argomenti& resto);

int VerboPack(const Argomenti& args, MessaggiConsole& msg);
int VerboUnpack(const Argomenti& args, MessaggiConsole& msg);
int VerboVersion(const Argomenti& args, MessaggiConsole& msg);
int VerboFindExe(const Argomenti& args, MessaggiConsole& msg);
int VerboDiscover(const Argomenti& args, MessaggiConsole& msg);
int VerboSample(const Argomenti& args, MessaggiConsole& msg);
int VerboCheck(const Argomenti& args, MessaggiConsole& msg);
int VerboDemo(const Argomenti& args, MessaggiConsole& msg);
int VerboReport(const Argomenti& args, MessaggiConsole& msg);
int VerboCompare(const Argomenti& args, MessaggiConsole& msg);
int VerboFindings(const Argomenti& args, MessaggiConsole& msg);
int VerboAnonymize(const Argomenti& args, MessaggiConsole& msg);
int VerboRules(const Argomenti& args, MessaggiConsole& msg);

// Opens `snapshot` as the analysis window does and runs the report items named in `voci` (header pref
// archive ordl trle dirarc ordeio script backup environment) in order. Prints the report area's text at the
// end, or, with `ognuno`, after each item under a line "== item". The backup analysis reads the sample lists
// in `elenchi`, the program folder but for the demo. Exit 1 when a critical message was shown.
int Prospetti(const std::string& snapshot, const std::vector<std::string>& voci, bool ognuno,
              const std::string& elenchi, MessaggiConsole& msg);

// The findings of each snapshot, as text or JSON Lines, the backup's against the sample lists in `elenchi`.
// Exit 1 when one could not be read.
int Riepiloghi(const Argomenti& snapshot, bool json, const std::string& elenchi, MessaggiConsole& msg);
std::vector<std::string> TutteLeVoci();

// Opens both snapshots and prints their comparison, as text or JSON. Exit 1 when one could not be read.
int Confronta(const std::string& vecchio, const std::string& nuovo, bool json, MessaggiConsole& msg);

}  // namespace cli
