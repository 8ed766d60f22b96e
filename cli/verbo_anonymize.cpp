// A copy of a snapshot without the user's account names, to post where anyone may read it.
#include <cstdio>

#include "analysis/copia_anonima.h"
#include "verbi.h"

namespace cli {

int VerboAnonymize(const Argomenti& args, MessaggiConsole& msg) {
  analysis::RichiestaCopia r;
  Argomenti file;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--authors") {
      r.opzioni.autori = true;
    } else if (args[i] == "--key") {
      if (++i == args.size()) return Uso("--key needs a file");
      r.fileChiave = ArgomentoPercorso(args[i]);
    } else if (args[i].starts_with("--")) {
      return Uso("unknown option: " + args[i]);
    } else {
      file.push_back(args[i]);
    }
  }
  if (file.size() != 2) return Uso("anonymize needs a snapshot and the copy to write: SNAPSHOT OUT");
  r.snapshot = ArgomentoPercorso(file[0]);
  r.copia = ArgomentoPercorso(file[1]);
  analysis::CopiaAnonima c;
  if (const std::string errore = analysis::SalvaCopiaAnonima(r, c); !errore.empty()) {
    msg.Critico(errore);
    return 1;
  }
  // The copy's names only: the original ones stay out of everything this prints.
  std::string righe = "(table)\t" + std::to_string(c.tabella) + "\n";
  for (const analysis::MembroAnonimo& m : c.membri)
    righe += m.nome + "\t" + std::to_string(m.sostituzioni) + "\n";
  righe += "Replaced " + std::to_string(c.chiave.size()) +
           (c.chiave.size() == 1 ? " name in " : " names in ") +
           std::to_string(analysis::TotaleSostituzioni(c)) + " places.\n";
  ScriviTesto(righe);
  // What the copy keeps that may still name the person goes where a pipe of the counts does not take it.
  if (const std::string residui = analysis::TestoResidui(c, analysis::CercaResidui(c)); !residui.empty()) {
    const std::string t = PerTerminale(residui + "\r\n");
    std::fflush(stdout);
    std::fwrite(t.data(), 1, t.size(), stderr);
  }
  return 0;
}

}  // namespace cli
