// The headless tool's stand-ins for the window: messages go to standard error, one line each.
#pragma once

#include <string>
#include <vector>

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

// The folder dialog without a window: each showing takes the next queued folder as the user's OK; with none
// queued it is cancelled, so a prompt never waits for anyone.
class DialogoCartellaConsole : public support::DialogoCartella {
 public:
  void Accoda(const std::string& cartella) { risposte_.push_back(cartella); }
  void ImpostaTitolo(const std::string&) override {}
  void ImpostaValori(const std::string& percorso) override {
    exit_ = false;
    pathDir_ = percorso;
  }
  void MostraModale() override;
  bool ExitValue() const override { return exit_; }
  std::string PathDir() const override { return pathDir_; }

 private:
  std::vector<std::string> risposte_;
  bool exit_ = false;
  std::string pathDir_;
};

// A command-line argument as a Windows path: an absolute host path is turned into the Windows path that
// the machine gives it.
std::string ArgomentoPercorso(const std::string& argomento);

void ScriviByte(const std::string& byte);

// Our own text (Windows-1252, CR LF, as the window keeps it) as the terminal wants it
// (support::TestoLocale).
std::string PerTerminale(const std::string& testo);
void ScriviTesto(const std::string& testo);

// A new empty folder of this run's own below the program folder ("findings-<pid>-<n>",
// "findings-win-<pid>-<n>" from the Windows build), removed with all it holds when the object goes, on
// success and on failure alike: no copy of a snapshot outlives the command. A run that is killed cannot
// remove its own: the next one of the same kind removes the folders of runs whose process is gone.
class CartellaPropria {
 public:
  explicit CartellaPropria(const std::string& tipo);
  ~CartellaPropria();
  CartellaPropria(const CartellaPropria&) = delete;
  CartellaPropria& operator=(const CartellaPropria&) = delete;
  // Its Windows path; "" when none could be made.
  const std::string& Percorso() const { return percorso_; }

 private:
  std::string programma_;
  std::string percorso_;
};

}  // namespace cli
