#include "collection/controllo.h"

#include <array>
#include <optional>

#include "collection/ambiente_controllo.h"
#include "collection/blocco.h"
#include "collection/membri.h"
#include "collection/scansione.h"
#include "collection/selezione.h"
#include "collection/snapshot.h"
#include "formats/archivio.h"
#include "formats/preferenze.h"
#include "host/accesso_registro.h"
#include "host/macchina.h"
#include "support/files.h"
#include "support/installazioni.h"
#include "support/valori.h"
#include "support/versioni.h"

#ifndef CHECKORDL_SUPPORT_EMAIL
#define CHECKORDL_SUPPORT_EMAIL "support@example.invalid"
#endif

namespace collection {
namespace {

// The run is one pass from the first step to the closing of the window; clicks that arrive meanwhile
// (the folder scan gives the event loop its turns) must not start a second one.
struct InCorso {
  explicit InCorso(bool& flag) : flag_(flag) { flag_ = true; }
  ~InCorso() { flag_ = false; }
  InCorso(const InCorso&) = delete;
  InCorso& operator=(const InCorso&) = delete;
  bool& flag_;
};

void ChiudiAllaFine(Principale& p) {
  p.ChiusuraDelControllo = true;
  p.Chiudi();
}

// Where the snapshot went: the name written ("" when neither place could be), the second place tried when
// C:\ refused it ("" when none was), and the members that exist but could not be read.
struct Salvataggio {
  std::string scritto;
  std::string secondo;
  std::vector<MembroEscluso> esclusi;
};

// C:\ as ever, else the user's desktop: since Vista the root of the system drive takes folders but no new
// files from a program that is not elevated (and the manifest's "asInvoker" asks for no redirection),
// while the desktop is the user's own.
Salvataggio SalvaDoveSiPuo(const MembriSnapshot& m, const MembroGenerato* generato, Principale& p) {
  Salvataggio s;
  const auto salva = [&](const std::string& nome) {
    const bool scritto =
        SalvaSnapshot(nome, m.Membri, m.NumeroMembri, p.Label_Info, p.ProgressBar1, &s.esclusi, generato);
    if (scritto) s.scritto = nome;
    return scritto;
  };
  if (salva(kNomeSnapshot)) return s;
  const std::string desktop = support::GetCartellaSpeciale(host::kCsidlDesktopDirectory);
  if (desktop.empty()) return s;
  s.secondo = desktop + "\\" + support::EstraiNomeFile(kNomeSnapshot);
  salva(s.secondo);
  return s;
}

// Where the run found or made each member of the table; nothing for one it does not pack.
using Voluti = std::array<std::optional<std::string>, kMembri.size()>;

std::optional<std::string>& Voluto(Voluti& v, Membro m) {
  return v[static_cast<std::size_t>(m)];
}

// The files to pack, in the snapshot's order.
MembriSnapshot InOrdineDiPacco(const Voluti& voluti) {
  MembriSnapshot m;
  for (const Membro x : kOrdineDiPacco)
    if (const auto& percorso = voluti[static_cast<std::size_t>(x)]) AggiungiMembro(m, *percorso);
  return m;
}

// The environment as the machine tells it, or nothing when it cannot be had: the snapshot is then written
// without its member, as an older program writes it, and the run goes on.
std::optional<formats::Ambiente> AmbienteSeSiPuo(const CartelleControllo& cartelle, Orologio orologio) {
  try {
    return RaccogliAmbiente(cartelle, orologio ? orologio : OraLocale);
  } catch (...) {
    return std::nullopt;
  }
}

}  // namespace

std::string IndirizzoSupporto(const std::string& cartella) {
  // One line of a small text file: what stands before its line end, without blanks around it; nothing of
  // it that is not printable.
  std::string riga = support::LeggiFile(cartella + "\\" + kFileContatto).substr(0, 256);
  riga = riga.substr(0, riga.find_first_of("\r\n"));
  std::erase_if(riga, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
  riga = support::TogliSpazi(riga);
  return riga.empty() ? CHECKORDL_SUPPORT_EMAIL : riga;
}

void AggiungiMembro(MembriSnapshot& m, const std::string& percorso) {
  m.Membri.push_back(percorso);
  ++m.NumeroMembri;
}

void Pul_Start_Click(Principale& p) {
  if (p.ControlloInCorso) return;
  const std::string cartellaTrle = p.Label_NomeTrle.Testo();
  if (cartellaTrle.empty()) {
    p.Messaggi.Semplice("Please select folder where is installated the program Tomb Raider Level Editor");
    Pul_CambiaTrle_Click(p);
    return;
  }
  const std::string cartellaOrdl = p.Label_DirORDL.Testo();
  if (cartellaOrdl.empty()) {
    p.Messaggi.Semplice("Please select folder where is installated the program Ordelio");
    Pul_CambiaORDL_Click(p);
    return;
  }
  // Held to the end of the run: another program would write and delete the same working files.
  const host::BloccoCartella blocco = collection::BloccaCartellaProgramma(p.CartellaProgramma, p.Messaggi);
  if (blocco.Occupato()) return;
  InCorso guardia(p.ControlloInCorso);

  // Always the record of start-up: a header loaded from a snapshot for a report never reaches a run.
  formats::InfoHeader header = p.InfoHeader;
  Voluti voluti;
  std::string cartellaArchivio;
  const std::string& programma = p.CartellaProgramma;
  // Where each member of the table is found or made.
  const auto in = [](const std::string& cartella, Membro m) {
    return cartella + "\\" + VoceDi(m).nomeControllo;
  };
  const std::string fileInfo = in(programma, Membro::intestazione);
  Voluto(voluti, Membro::intestazione) = fileInfo;

  const std::string prf = in(cartellaOrdl, Membro::preferenze);
  if (!support::FileExists(prf)) {
    header.FlagErrori |= formats::kMancaOrdelioPrf;
  } else {
    Voluto(voluti, Membro::preferenze) = prf;
    formats::PrefRecord pref;
    const bool letto = formats::LeggiPreferenze(prf, &pref);
    const std::string archivio = letto ? support::TogliSpazi(pref.PathArchivio.Testo()) : std::string();
    Voluto(voluti, Membro::archivio) = archivio;
    if (!support::FileExists(archivio)) {
      header.FlagErrori |= formats::kMancaArchivioQlv;
    } else if (formats::ArchivioHeader ah; formats::LeggiArchivioHeader(archivio, &ah)) {
      cartellaArchivio = support::TogliSpazi(ah.SecondaryDir.Testo());
    }
  }

  const std::string exe = cartellaOrdl + "\\ordl2009.exe";
  if (!support::FileExists(exe))
    header.FlagErrori |= formats::kMancaOrdl2009Exe;
  else
    header.VersioneOrdelio.Assegna(support::GetFileVersion(exe));

  const auto elenca = [&](Membro m, const std::string& cartella) {
    const std::string file = in(programma, m);
    if (CreaElencoFile(file, cartella, {p.Label_Info, p.ProgressBar1, p.Eventi})) Voluto(voluti, m) = file;
  };
  if (!cartellaArchivio.empty()) elenca(Membro::elencoArchivio, cartellaArchivio);
  elenca(Membro::elencoTrle, cartellaTrle);
  elenca(Membro::elencoOrdl, cartellaOrdl);

  const std::string ordeio = in(cartellaTrle, Membro::ordeio);
  if (support::FileExists(ordeio))
    Voluto(voluti, Membro::ordeio) = ordeio;
  else
    header.FlagErrori |= formats::kMancaOrdeioTxt;
  const std::string script = in(cartellaTrle, Membro::script);
  if (support::FileExists(script))
    Voluto(voluti, Membro::script) = script;
  else
    header.FlagErrori |= formats::kMancaScriptDat;

  if (!support::ScriviFileSotto(programma, fileInfo, formats::CodificaInfoHeader(header))) {
    p.Messaggi.Critico("ERROR: I cann't write in current folder: " + programma);
    ChiudiAllaFine(p);
    return;
  }

  const std::optional<formats::Ambiente> ambiente =
      AmbienteSeSiPuo({cartellaTrle, cartellaOrdl, cartellaArchivio}, p.LeggiOra);
  const MembroGenerato membroAmbiente{
      in(programma, Membro::ambiente),
      [&](const std::vector<std::string>& packati, const std::vector<MembroEscluso>& esclusi) {
        return CorpoAmbiente(*ambiente, packati, esclusi);
      }};
  const Salvataggio salvataggio =
      SalvaDoveSiPuo(InOrdineDiPacco(voluti), ambiente ? &membroAmbiente : nullptr, p);
  p.SnapshotScritto = salvataggio.scritto;
  if (p.SnapshotScritto.empty()) {
    // The documented line first; the desktop, when it was tried too, on a line of its own.
    p.Messaggi.Critico(std::string("Error saving ") + kNomeSnapshot +
                       (salvataggio.secondo.empty() ? "" : "\r\nError saving " + salvataggio.secondo));
  } else {
    if (!salvataggio.esclusi.empty()) p.Messaggi.Semplice(MessaggioEsclusi(salvataggio.esclusi));
    int err = 0;
    const auto lunghezza = static_cast<double>(host::LunghezzaFile(p.SnapshotScritto, &err));
    p.Messaggi.Semplice(std::string("Scanning is complete\r\n") + "Now you should send following file:\r\n" +
                        p.SnapshotScritto + " (" + support::FormattaDimensione(err ? 0 : lunghezza) +
                        ")\r\n" + "via email to: " + IndirizzoSupporto());
  }
  // The working files, the last packed first.
  for (auto m = kOrdineDiPacco.rbegin(); m != kOrdineDiPacco.rend(); ++m)
    if (VoceDi(*m).luogo == Luogo::lavoro) support::CancellaFileSotto(programma, in(programma, *m));
  ChiudiAllaFine(p);
}

}  // namespace collection
