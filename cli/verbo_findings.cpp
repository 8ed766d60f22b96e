// What is wrong on the users' machines, for one snapshot or an inbox of them: each snapshot is unpacked
// into a folder of its own below the program folder, checked, and the folder removed, so that Dati stays
// as the last opened snapshot left it and no two snapshots ever share a folder.
#include <algorithm>
#include <string>

#include "analysis/riepilogo.h"
#include "analysis/risposta.h"
#include "collection/blocco.h"
#include "host/macchina.h"
#include "support/files.h"
#include "support/valori.h"
#include "verbi.h"

namespace cli {
namespace {

analysis::RiepilogoSnapshot Verifica(const std::string& snapshot, const std::string& elenchi) {
  const CartellaPropria cartella("findings");
  if (cartella.Percorso().empty())
    return {{}, "no working folder could be made in " + host::CartellaProgramma(), {}, {}};
  return analysis::ApriEVerifica(snapshot, cartella.Percorso(), elenchi, support::SeparatoreDecimale());
}

bool Presente(const Argomenti& opzioni, const char* opzione) {
  return std::find(opzioni.begin(), opzioni.end(), opzione) != opzioni.end();
}

// The answer for the user of each snapshot; one that cannot be read is answered too, with a request for a
// new one, and said on standard error.
int Risposte(const Argomenti& snapshot, analysis::FormaRisposta forma, MessaggiConsole& msg) {
  if (!collection::PreparaCartellaProgramma(host::CartellaProgramma(), msg)) return 1;
  bool illeggibile = false;
  for (const auto& s : snapshot) {
    const std::string percorso = ArgomentoPercorso(s);
    const analysis::RiepilogoSnapshot r = Verifica(percorso, host::CartellaProgramma());
    if (!r.Errore.empty()) {
      illeggibile = true;
      msg.Critico("The snapshot cannot be read: " + percorso + ": " + r.Errore);
    }
    if (snapshot.size() > 1) ScriviByte("== " + s + "\n");
    ScriviTesto(analysis::TestoRisposta(r, percorso, forma));
  }
  return illeggibile ? 1 : 0;
}

}  // namespace

int VerboFindings(const Argomenti& args, MessaggiConsole& msg) {
  Argomenti opzioni, snapshot;
  if (const int uso = SenzaOpzioni(args, {"--json", "--answer", "--markdown", "--bbcode"}, opzioni, snapshot))
    return uso;
  if (snapshot.empty()) return Uso("findings needs a snapshot");
  const bool json = Presente(opzioni, "--json"), risposta = Presente(opzioni, "--answer"),
             markdown = Presente(opzioni, "--markdown"), bbcode = Presente(opzioni, "--bbcode");
  if (json && risposta) return Uso("--json and --answer do not go together");
  if ((markdown || bbcode) && !risposta) return Uso("--markdown and --bbcode go with --answer");
  if (markdown && bbcode) return Uso("--markdown and --bbcode do not go together");
  if (risposta)
    return Risposte(snapshot,
                    markdown ? analysis::FormaRisposta::markdown
                    : bbcode ? analysis::FormaRisposta::bbcode
                             : analysis::FormaRisposta::testo,
                    msg);
  return Riepiloghi(snapshot, json, host::CartellaProgramma(), msg);
}

int Riepiloghi(const Argomenti& snapshot, bool json, const std::string& elenchi, MessaggiConsole& msg) {
  if (!collection::PreparaCartellaProgramma(host::CartellaProgramma(), msg)) return 1;
  bool illeggibile = false;
  for (const auto& s : snapshot) {
    const analysis::RiepilogoSnapshot r = Verifica(ArgomentoPercorso(s), elenchi);
    if (!r.Errore.empty()) {
      illeggibile = true;
      msg.Critico("The snapshot cannot be read: " + ArgomentoPercorso(s) + ": " + r.Errore);
    }
    if (json) {
#ifdef _WIN32
      ScriviByte(analysis::JsonRiepilogo(s, r) + "\n");
#else
      ScriviByte(analysis::JsonRiepilogo(host::DaUtf8(s), r) + "\n");
#endif
      continue;
    }
    if (snapshot.size() > 1) ScriviByte("== " + s + "\n");
    // Unwrapped: a path pasted from the terminal stays whole.
    ScriviTesto(analysis::TestoRiepilogo(r, 0));
  }
  return illeggibile ? 1 : 0;
}

}  // namespace cli
