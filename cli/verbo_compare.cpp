// Two snapshots of one support case side by side: what changed on the user's machine between two check runs.
#include <tuple>

#include "analysis/confronto.h"
#include "collection/blocco.h"
#include "host/macchina.h"
#include "support/files.h"
#include "verbi.h"

namespace cli {

int Confronta(const std::string& vecchio, const std::string& nuovo, bool json, MessaggiConsole& msg) {
  // Each one in a folder of its own, removed when the command ends, so that Dati, the window's open snapshot,
  // stays as it is and no copy of someone's snapshot is left behind.
  const host::BloccoCartella blocco = collection::BloccaCartellaProgramma(host::CartellaProgramma(), msg);
  if (blocco.Occupato()) return 1;
  const CartellaPropria cartellaVecchio("compare-old"), cartellaNuovo("compare-new");
  analysis::SnapshotAperto v, n;
  for (auto [percorso, cartella, aperto] :
       {std::tuple{vecchio, &cartellaVecchio, &v}, std::tuple{nuovo, &cartellaNuovo, &n}}) {
    if (cartella->Percorso().empty()) {
      msg.Critico("Cannot make a working folder in " + host::CartellaProgramma());
      return 1;
    }
    if (!analysis::ApriSnapshot(percorso, cartella->Percorso(), *aperto, msg)) return 1;
  }
  const analysis::Confronto c = analysis::ConfrontaSnapshot(v, n, msg);
  if (json)
    ScriviByte(analysis::JsonConfronto(c));
  else
    ScriviTesto(analysis::TestoConfronto(c, 0));
  return 0;
}

int VerboCompare(const Argomenti& args, MessaggiConsole& msg) {
  Argomenti opzioni, snapshot;
  if (const int uso = SenzaOpzioni(args, {"--json"}, opzioni, snapshot)) return uso;
  if (snapshot.size() != 2) return Uso("compare needs two snapshots: OLD NEW");
  return Confronta(ArgomentoPercorso(snapshot[0]), ArgomentoPercorso(snapshot[1]), !opzioni.empty(), msg);
}

}  // namespace cli
