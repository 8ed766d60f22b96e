#include "collection/campione.h"
#include "host/macchina.h"
#include "support/files.h"
#include "verbi.h"

namespace cli {

int VerboSample(const Argomenti& args, MessaggiConsole& msg) {
  if (args.size() != 1) return Uso("sample needs one folder");
  std::string cartella = ArgomentoPercorso(args[0]);
  // The list keeps the folder as the folder dialog gives it: without a closing "\", a root as "C:".
  if (cartella.size() > 2 && cartella.back() == '\\') cartella.pop_back();
  if (!support::DirExists(cartella)) return Uso("no such folder: " + args[0]);
  support::DidascaliaMuta info;
  support::BarraMuta barra;
  support::CicloMuto eventi;
  collection::CreaElencoCampione(cartella, host::CartellaProgramma(), {info, barra, eventi}, msg);
  return msg.CriticoMostrato() ? 1 : 0;
}

}  // namespace cli
