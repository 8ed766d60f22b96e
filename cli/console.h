// The headless tool's stand-ins for the window: messages go to standard error, one line each.
#pragma once

#include <string>

#include "support/interfacce.h"

namespace cli {

class MessaggiConsole : public support::Messaggi {
 public:
  void Semplice(const std::string& testo) override;
  void Critico(const std::string& testo) override;
  bool CriticoMostrato() const { return critico_; }

 private:
  bool critico_ = false;
};

// A command-line argument as a Windows path: an absolute host path is turned into the Windows path that
// the machine gives it.
std::string ArgomentoPercorso(const std::string& argomento);

void ScriviByte(const std::string& byte);

}  // namespace cli
