#include "console.h"

#include <cstdio>

#include "host/machine.h"

namespace cli {

void ScriviByte(const std::string& byte) {
  std::fwrite(byte.data(), 1, byte.size(), stdout);
}

namespace {

// What went to standard output before the message stays before it where both go to one file.
void Messaggio(const std::string& riga) {
  std::fflush(stdout);
  std::fwrite(riga.data(), 1, riga.size(), stderr);
}

}  // namespace

void MessaggiConsole::Semplice(const std::string& testo) {
  Messaggio("plain: " + testo + "\n");
}

void MessaggiConsole::Critico(const std::string& testo) {
  critico_ = true;
  Messaggio("critical: " + testo + "\n");
}

void DialogoCartellaConsole::MostraModale() {
  if (risposte_.empty()) {
    exit_ = false;
    pathDir_.clear();
    return;
  }
  exit_ = true;
  pathDir_ = risposte_.front();
  risposte_.erase(risposte_.begin());
}

std::string ArgomentoPercorso(const std::string& argomento) {
#ifdef _WIN32
  return argomento;
#else
  if (!argomento.empty() && argomento[0] == '/') return host::PercorsoWindows(argomento);
  return host::DaUtf8(argomento);
#endif
}

}  // namespace cli
