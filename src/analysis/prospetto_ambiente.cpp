#include "analysis/prospetto_ambiente.h"

#include "analysis/ambiente_dati.h"
#include "analysis/forma_analisi.h"
#include "analysis/testo.h"
#include "collection/snapshot.h"

namespace analysis {
namespace {

// A line below the first five, indented by `rientro` and laid out to fit the report area; those five stay
// whole, one line each, as the builds' cross-check expects them.
void Riga(std::string& t, const std::string& riga, std::size_t rientro = 0) {
  AggiungiRigaAvvolta(t, riga, rientro, rientro + 4, static_cast<std::size_t>(ColonneAreaProspetto()));
}

std::string Bit(bool sessantaquattro) {
  return sessantaquattro ? "64-bit" : "32-bit";
}

std::string SiNo(bool v) {
  return v ? "on" : "off";
}

std::string Windows(const host::SistemaWindows& w) {
  std::string t = w.prodotto.empty() ? "(no product name)" : w.prodotto;
  if (!w.rilascio.empty()) t += " " + w.rilascio;
  t += ", " + std::to_string(w.maggiore) + "." + std::to_string(w.minore) + " build " +
       std::to_string(w.build);
  return t + ", " + Bit(w.windows64) + " Windows";
}

void Eseguibile(std::string& t, const formats::EseguibileAmbiente& ea, bool zoneLeggibili) {
  const host::Eseguibile& e = ea.eseguibile;
  AggiungiRiga(t, "");
  Riga(t, std::string(formats::NomeCartella(ea.cartella)) + ": " + e.percorso);
  Riga(t, std::string("Machine: ") + formats::NomeMacchina(e.macchina), 2);
  if (!e.problema.empty()) Riga(t, std::string("Problem: ") + e.problema, 2);
  if (e.livelli.empty()) Riga(t, "Compatibility layers: none", 2);
  for (const host::LivelloCompatibilita& l : e.livelli)
    Riga(t, std::string("Compatibility layers: ") + l.radice + " \"" + l.dati + "\"", 2);
  // Where the streams cannot be read, no zone recorded does not mean no mark.
  const int zona = !zoneLeggibili && e.zona == host::kZonaNessuna ? host::kZonaIgnota : e.zona;
  Riga(t, std::string("Mark of the web: ") + TestoZona(zona), 2);
  Riga(t, std::string("Imported DLLs: ") + std::to_string(e.importazioni.size()), 2);
  for (const host::DllImportata& d : e.importazioni) {
    std::string riga = d.nome + ": " + formats::NomeOrigine(d.origine);
    if (!d.percorso.empty()) riga += ", " + d.percorso;
    if (d.zona != host::kZonaNessuna) riga += ", mark of the web " + TestoZona(d.zona);
    Riga(t, riga, 4);
  }
}

}  // namespace

std::string TestoAmbiente(const formats::Ambiente& a) {
  const host::SistemaWindows& w = a.windows;
  std::string t;
  AggiungiRiga(t, std::string("Made: ") + DataControllo(a));
  AggiungiRiga(t, std::string("Program: ") + a.programma + " " + a.versioneProgramma + ", " +
                      Bit(a.bitProgramma == 64));
  AggiungiRiga(t, std::string("Windows: ") + Windows(w));
  AggiungiRiga(t, std::string("Runs as: ") + Bit(a.bitProgramma == 64) + " program" +
                      (w.wow64 ? ", under WOW64" : ""));
  AggiungiRiga(t, std::string("Wine: ") + (!w.wine                  ? "no"
                                           : w.versioneWine.empty() ? "yes"
                                                                    : "yes, " + w.versioneWine));
  Riga(t, std::string("UAC: ") + SiNo(w.uac) + ", virtualization: " + SiNo(w.virtualizzazione));
  Riga(t, std::string("ANSI code page: ") + std::to_string(w.codePage));
  Riga(t, std::string("System DPI: ") + std::to_string(w.dpi));
  Riga(t, std::string("Controlled Folder Access: ") + TestoAccessoControllato(w.accessoControllato));
  Riga(t, std::string("DEP policy: ") + TestoDep(w.dep));
  AggiungiRiga(t, "");
  AggiungiRiga(t,
               "Executables at the top of the installation folders: " + std::to_string(a.eseguibili.size()));
  for (const formats::EseguibileAmbiente& e : a.eseguibili) Eseguibile(t, e, w.zoneLeggibili);
  AggiungiRiga(t, "");
  Riga(t, std::string("From the VirtualStore: ") + Quanti(a.membriVirtuali.size(), "member") + ", " +
              Quanti(a.fileVirtualiTotale, "listed file"));
  for (const std::string& m : a.membriVirtuali) Riga(t, std::string("Member: ") + m, 2);
  for (const std::string& f : a.fileVirtuali) Riga(t, std::string("Listed: ") + f, 2);
  if (a.fileVirtualiTotale > a.fileVirtuali.size())
    Riga(t,
         std::string("... and ") + std::to_string(a.fileVirtualiTotale - a.fileVirtuali.size()) +
             " more listed files",
         2);
  AggiungiRiga(t, "");
  Riga(t, std::string("Members not read: ") + std::to_string(a.nonLetti.size()));
  for (const formats::MembroNonLetto& m : a.nonLetti)
    Riga(t, m.percorso + " (" + collection::MotivoEsclusione(m.errore) + ")", 2);
  return t;
}

std::optional<std::string> ProspettoAmbiente(const std::string& cartellaDati, support::Messaggi& messaggi) {
  const AmbienteLetto letto = LeggiAmbienteDati(cartellaDati);
  switch (letto.stato) {
    case StatoAmbiente::assente:
      messaggi.Critico(kAmbienteAssente);
      return std::nullopt;
    case StatoAmbiente::illeggibile:
      messaggi.Critico(std::string("The snapshot's ambiente.json cannot be read: ") + letto.motivo);
      return std::nullopt;
    case StatoAmbiente::letto:
      break;
  }
  return TestoAmbiente(letto.ambiente);
}

}  // namespace analysis
