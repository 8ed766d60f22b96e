#include "analysis/prospetto_archivio.h"

#include "analysis/testo.h"
#include "collection/membri.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {

RigheRecord RigheArchivioHeader(const std::string& nomeFile, const formats::ArchivioHeader& h) {
  using support::FormattaDimensione;
  return {
      {"Header archivio livelli", nomeFile},
      {"MainDir", Valore(h.MainDir)},
      {"NVersione", Valore(h.NVersione)},
      {"SecondaryDir", Valore(h.SecondaryDir)},
      {"SizeMainDir", FormattaDimensione(h.SizeMainDir)},
      {"SizeSecondayDir", FormattaDimensione(h.SizeSecondayDir)},
      {"TestAudioInMp3", Valore(h.TestAudioInMp3)},
      {"TestCompresso", Valore(h.TestCompresso)},
      {"TestSetupCd", Valore(h.TestSetupCd)},
      {"TotCD", Valore(h.TotCD)},
      {"TotLivelli", Valore(h.TotLivelli)},
  };
}

RigheRecord RigheLivello(const formats::ArchivioLivello& l) {
  using support::FormattaDimensione;
  return {
      {"Nome", Valore(l.Nome)},
      {"Autore_Email", Valore(l.Autore_Email)},
      {"Autore_Nome", Valore(l.Autore_Nome)},
      {"Autore_Note", Valore(l.Autore_Note)},
      {"Autore_Sito", Valore(l.Autore_Sito)},
      {"Codice", Valore(l.Codice)},
      {"NomeSoluzione", Valore(l.NomeSoluzione)},
      {"MaxSavegames", Valore(l.MaxSavegames)},
      {"Flags", "0x" + Esadecimale(l.Flags, 16)},
      {"Note", Valore(l.Note)},
      {"NumeroCd", Valore(l.NumeroCd)},
      {"SizeFiles", FormattaDimensione(static_cast<double>(l.SizeFiles))},
      {"SizeSubDir", FormattaDimensione(static_cast<double>(l.SizeSubDir))},
      {"TestRicalcolaSize", Valore(l.TestRicalcolaSize)},
  };
}

std::string TestoArchivio(const std::string& nomeFile, const formats::ArchivioHeader& h,
                          const std::vector<formats::ArchivioLivello>& livelli) {
  std::string t;
  AggiungiRighe(t, RigheArchivioHeader(nomeFile, h));
  AggiungiRiga(t, "");
  for (const auto& l : livelli) {
    AggiungiRighe(t, RigheLivello(l));
    AggiungiRiga(t, "");
  }
  return t;
}

EsitoProspettoArchivio ProspettoArchivio(const collection::ContenutoSnapshot& contenuto,
                                         const std::string& cartellaDati, support::Messaggi& messaggi) {
  const std::string percorso = collection::TrovaArchivio(contenuto, cartellaDati);
  if (percorso.empty()) {
    messaggi.Critico("Non e' stato salvato il file archivio.qlv");
    return {};
  }
  // The reader stops where the file does, so a negative or huge count, or a cut file, gives only the
  // levels the bytes hold. A file that exists but cannot be opened is told as a missing one.
  formats::ArchivioHeader h;
  std::vector<formats::ArchivioLivello> livelli;
  if (!support::FileExists(percorso) || !formats::LeggiArchivio(percorso, &h, &livelli)) {
    messaggi.Critico("Non trovo file: " + percorso);
    return {true, std::nullopt};
  }
  return {true, TestoArchivio(support::EstraiNomeFile(percorso), h, livelli)};
}

}  // namespace analysis
