#include "collection/snapshot.h"
#include "support/files.h"
#include "verbi.h"

namespace cli {

int VerboPack(const Argomenti& args, MessaggiConsole& msg) {
  if (args.size() < 2) return Uso("pack needs a snapshot and at least one member");
  const std::string snapshot = ArgomentoPercorso(args[0]);
  std::vector<std::string> membri;
  for (std::size_t i = 1; i < args.size(); ++i) membri.push_back(ArgomentoPercorso(args[i]));
  support::DidascaliaMuta info;
  support::BarraMuta barra;
  std::vector<collection::MembroEscluso> esclusi;
  if (!collection::SalvaSnapshot(snapshot, membri, static_cast<std::int32_t>(membri.size()), info, barra,
                                 &esclusi))
    msg.Critico("Error saving " + snapshot);
  else if (!esclusi.empty())
    msg.Semplice(collection::MessaggioEsclusi(esclusi));
  return msg.CriticoMostrato() ? 1 : 0;
}

int VerboUnpack(const Argomenti& args, MessaggiConsole& msg) {
  if (args.size() != 2) return Uso("unpack needs a snapshot and a folder");
  const std::string snapshot = ArgomentoPercorso(args[0]);
  const std::string cartella = ArgomentoPercorso(args[1]);
  if (!support::DirExists(cartella)) return Uso("no such folder: " + args[1]);
  collection::ContenutoSnapshot contenuto;
  if (!collection::EstraiSnapshot(snapshot, cartella, contenuto)) {
    msg.Critico("Errrore estraendo file");
    return 1;
  }
  for (std::int32_t i = 0; i < contenuto.Numero; ++i)
    ScriviByte(contenuto.Nomi[i] + "\t" + std::to_string(contenuto.Dimensioni[i]) + "\n");
  return 0;
}

}  // namespace cli
