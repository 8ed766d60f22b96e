// The main window as the operations see it, without a toolkit: the two folder labels, which are the only
// place the two folders live, the status line and progress bar of a check run, its message boxes, the
// folder dialog, one turn of the event loop, and closing the window (which ends the program).
#pragma once

#include <functional>
#include <string>

#include "collection/ambiente_controllo.h"
#include "formats/info_header.h"
#include "host/macchina.h"
#include "support/interfacce.h"

namespace collection {

struct Principale {
  support::Didascalia& Label_DirORDL;
  support::Didascalia& Label_NomeTrle;
  support::Didascalia& Label_Info;
  support::BarraProgresso& ProgressBar1;
  support::Messaggi& Messaggi;
  support::DialogoCartella& Dialog_GetDir;
  support::CicloEventi& Eventi;
  // Closes the main window; the program ends with it.
  std::function<void()> Chiudi;
  // The machine as found at start-up; a check run starts from this record, never from a snapshot's copy.
  formats::InfoHeader InfoHeader;
  // The folder of the running program, where the working files of a check run are made.
  std::string CartellaProgramma = host::CartellaProgramma();
  // A check run is under way: clicks on "Start check", "Change" and "Close" that arrive meanwhile are
  // ignored.
  bool ControlloInCorso = false;
  // The run itself closes the window at its end, which a click on the frame may not do during the run.
  bool ChiusuraDelControllo = false;
  // The snapshot the last check run wrote, as the machine names it; "" when it wrote none.
  std::string SnapshotScritto{};
  // The clock whose date the check run records; tests set one that stands still.
  Orologio LeggiOra = OraLocale;
};

// "Close": ignored during a check run.
inline void Pul_Annulla_Click(Principale& p) {
  if (!p.ControlloInCorso) p.Chiudi();
}

// Whether the window may close now, by its frame or by "Close".
inline bool PuoChiudersi(const Principale& p) {
  return !p.ControlloInCorso || p.ChiusuraDelControllo;
}

}  // namespace collection
