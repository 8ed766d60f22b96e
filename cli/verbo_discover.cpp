#include "collection/principale.h"
#include "collection/scoperta.h"
#include "formats/preferenze.h"
#include "picker/dialog_getdir.h"
#include "support/interfacce.h"
#include "verbi.h"

namespace cli {

int VerboDiscover(const Argomenti& args, MessaggiConsole& msg) {
  if (!args.empty()) return Uso("discover takes no arguments");
  support::DidascaliaMuta dirOrdl, nomeTrle, info;
  support::BarraMuta barra;
  support::CicloMuto eventi;
  // Discovery never opens the folder dialog; one without a user would close at once.
  picker::DialogoGetDir dialogo(msg, nullptr);
  collection::Principale p{dirOrdl, nomeTrle, info, barra, msg, dialogo, eventi, [] {}, {}};
  formats::PrefRecord pref;
  collection::CercaInstallazioni(p, pref);
  ScriviByte(nomeTrle.Testo() + "\n" + dirOrdl.Testo() + "\n");
  return msg.CriticoMostrato() ? 1 : 0;
}

}  // namespace cli
