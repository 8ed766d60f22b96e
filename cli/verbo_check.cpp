// The check run and the demo machine from the command line.
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "collection/blocco.h"
#include "collection/controllo.h"
#include "collection/scoperta.h"
#include "collection/selezione.h"
#include "collection/snapshot.h"
#include "formats/preferenze.h"
#include "host/macchina.h"
#include "macchina_demo.h"
#include "support/files.h"
#include "verbi.h"

namespace cli {
namespace {

// Discovery, then the folders given as if chosen with the "Change" buttons,
// then "Start check". Exit 1 when a critical message was shown or the run ended
// in a prompt for a folder. `scritto` names the snapshot written, "" for none.
int Controlla(const std::string& trle, const std::string& ordl, MessaggiConsole& msg, std::string* scritto) {
  support::DidascaliaMuta dirOrdl, nomeTrle, info;
  support::BarraMuta barra;
  support::CicloMuto eventi;
  DialogoCartellaConsole dialogo;
  bool chiusa = false;
  collection::Principale p{dirOrdl, nomeTrle, info, barra, msg, dialogo, eventi, [&] { chiusa = true; }, {}};
  formats::PrefRecord pref;
  collection::CercaInstallazioni(p, pref);
  if (!trle.empty()) {
    dialogo.Accoda(trle);
    collection::Pul_CambiaTrle_Click(p);
  }
  if (!ordl.empty()) {
    dialogo.Accoda(ordl);
    collection::Pul_CambiaORDL_Click(p);
  }
  collection::Pul_Start_Click(p);
  *scritto = p.SnapshotScritto;
  return msg.CriticoMostrato() || !chiusa ? 1 : 0;
}

}  // namespace

int VerboCheck(const Argomenti& args, MessaggiConsole& msg) {
  if (args.size() != 0 && args.size() != 2) return Uso("check takes no folders or two: TRLE ORDL");
  const host::BloccoCartella blocco = collection::BloccaCartellaProgramma(host::CartellaProgramma(), msg);
  if (blocco.Occupato()) return 1;
  std::string scritto;
  const int esito = args.empty()
                        ? Controlla({}, {}, msg, &scritto)
                        : Controlla(ArgomentoPercorso(args[0]), ArgomentoPercorso(args[1]), msg, &scritto);
  // The message names the snapshot as the machine sees it; the user attaches the host's file, which is worth
  // sending after a critical message too.
  int err = 0;
  const std::string host = host::PercorsoHost(scritto, &err);
  if (!scritto.empty() && err == 0 && support::FileExists(scritto)) ScriviByte(host + "\n");
  return esito;
}

int VerboDemo(const Argomenti& args, MessaggiConsole& msg) {
  if (args.size() != 1) return Uso("demo needs a folder");
  std::error_code ec;
  const std::string cartella = std::filesystem::absolute(args[0], ec).lexically_normal().string();
  // A folder that holds something else, a Wine prefix above all, is never written over.
  if (!ec && !CartellaPerDemo(cartella)) {
    std::fprintf(
        stderr,
        "checkordl-cli: demo: %s is not empty and holds no demo machine; nothing was written: give a "
        "new or empty folder\n",
        cartella.c_str());
    return 2;
  }
  const host::BloccoCartella blocco = collection::BloccaCartellaProgramma(host::CartellaProgramma(), msg);
  if (blocco.Occupato()) return 1;
  std::string errore;
  if (ec || !CreaMacchinaDemo(cartella, &errore)) {
    msg.Critico(errore.empty() ? "cannot use " + args[0] : errore);
    return 1;
  }
  std::string snapshot;
  const int esito = Controlla({}, {}, msg, &snapshot);
  if (esito != 0) return esito;
  // The supporter's side on the same machine: the sample lists, kept in the machine so that the supporter's
  // own beside the program stay as they are, then every report of the snapshot.
  if (!CreaElenchiDemo(kCartellaSupporto)) {
    msg.Critico(std::string("cannot write the sample lists into ") + kCartellaSupporto);
    return 1;
  }
  int prospetti = Prospetti(snapshot, TutteLeVoci(), true, kCartellaSupporto, msg);
  ScriviByte("== findings\n");
  const int riepilogo = Riepiloghi({snapshot}, false, kCartellaSupporto, msg);
  if (prospetti == 0) prospetti = riepilogo;
  // A second check run after the user changed a few things, kept beside the first, which stays under its
  // own name; then what the supporter sees of the change.
  const std::string primo = support::LeggiFile(snapshot);
  const std::string secondo = support::EstraiCartella(snapshot) + "\\INFO_ORDL_2.BIN";
  if (!CambiaMacchinaDemo()) {
    msg.Critico("cannot change the demo machine in " + cartella);
    return 1;
  }
  if (const int esito = Controlla({}, {}, msg, &snapshot); esito != 0) return esito;
  if (!support::ScriviFileTesto(secondo, support::LeggiFile(snapshot)) ||
      !support::ScriviFileTesto(snapshot, primo)) {
    msg.Critico("cannot write " + secondo);
    return 1;
  }
  ScriviByte("== compare\n");
  const int confronto = Confronta(snapshot, secondo, false, msg);
  ScriviByte("\n");
  return prospetti != 0 ? prospetti : confronto;
}

}  // namespace cli
