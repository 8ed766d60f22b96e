#include "console.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

#include "host/machine.h"

#ifdef _WIN32
#include <process.h>
#define getpid _getpid
#else
#include <unistd.h>
#endif

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

CartellaPropria::CartellaPropria(const std::string& prefisso) {
  const std::string programma = host::CartellaProgramma();
  int err = 0;
  const std::filesystem::path base = host::PercorsoHost(programma, &err);
  if (err) return;
  for (int i = 0; i < 1000; ++i) {
    const std::string nome = prefisso + "-" + std::to_string(getpid()) + "-" + std::to_string(i);
    std::error_code ec;
    if (std::filesystem::create_directory(base / nome, ec)) {
      host_ = (base / nome).string();
      percorso_ = programma + "\\" + nome;
      return;
    }
    if (ec) return;
  }
}

CartellaPropria::~CartellaPropria() {
  std::error_code ec;
  if (!host_.empty()) std::filesystem::remove_all(host_, ec);
}

}  // namespace cli
