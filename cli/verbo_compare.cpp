// Two snapshots of one support case side by side: what changed on the user's machine between two check runs.
#include <tuple>

#include "analysis/confronto.h"
#include "collection/blocco.h"
#include "host/machine.h"
#include "support/files.h"
#include "verbi.h"

namespace cli {

int Confronta(const std::string& vecchio, const std::string& nuovo, bool json, MessaggiConsole& msg) {
  // Each one in a folder of its own, so that Dati, the window's open snapshot, stays as it is.
  const host::BloccoCartella blocco = collection::BloccaCartellaProgramma(host::CartellaProgramma(), msg);
  if (blocco.Occupato()) return 1;
  const std::string programma = host::CartellaProgramma() + "\\";
  analysis::SnapshotAperto v, n;
  for (auto [percorso, cartella, aperto] : {std::tuple{vecchio, analysis::kCartellaConfrontoVecchio, &v},
                                            std::tuple{nuovo, analysis::kCartellaConfronto, &n}})
    if (!analysis::ApriSnapshot(percorso, programma + cartella, *aperto, msg)) return 1;
  const analysis::Confronto c = analysis::ConfrontaSnapshot(v, n, msg);
  ScriviByte(json ? analysis::JsonConfronto(c) : analysis::TestoConfronto(c));
  return 0;
}

int VerboCompare(const Argomenti& args, MessaggiConsole& msg) {
  Argomenti opzioni, snapshot;
  if (const int uso = SenzaOpzioni(args, {"--json"}, opzioni, snapshot)) return uso;
  if (snapshot.size() != 2) return Uso("compare needs two snapshots: OLD NEW");
  return Confronta(ArgomentoPercorso(snapshot[0]), ArgomentoPercorso(snapshot[1]), !opzioni.empty(), msg);
}

}  // namespace cli
