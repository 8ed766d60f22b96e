#include "analysis/prospetto_archivio.h"

#include <algorithm>
#include <cstddef>

#include "analysis/testo.h"
#include "collection/membri.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {
namespace {

template <std::size_t N>
std::string Pulita(const formats::StringaFissa<N>& s) {
  return support::PulisciStringa(s.Testo());
}

}  // namespace

std::string TestoArchivio(const std::string& nomeFile, const formats::ArchivioHeader& h,
                          const std::vector<formats::ArchivioLivello>& livelli) {
  using support::FormattaDimensione;
  const auto decimale = [](std::int64_t v) { return std::to_string(v); };
  const auto booleano = [](bool v) { return std::string(TestoBooleano(v)); };

  std::string t;
  AggiungiRiga(t, "Header archivio livelli: " + nomeFile);
  AggiungiRiga(t, "MainDir: " + Pulita(h.MainDir));
  AggiungiRiga(t, "NVersione: " + decimale(h.NVersione));
  AggiungiRiga(t, "SecondaryDir: " + Pulita(h.SecondaryDir));
  AggiungiRiga(t, "SizeMainDir: " + FormattaDimensione(h.SizeMainDir));
  AggiungiRiga(t, "SizeSecondayDir: " + FormattaDimensione(h.SizeSecondayDir));
  AggiungiRiga(t, "TestAudioInMp3: " + booleano(h.TestAudioInMp3));
  AggiungiRiga(t, "TestCompresso: " + booleano(h.TestCompresso));
  AggiungiRiga(t, "TestSetupCd: " + booleano(h.TestSetupCd));
  AggiungiRiga(t, "TotCD: " + decimale(h.TotCD));
  AggiungiRiga(t, "TotLivelli: " + decimale(h.TotLivelli));
  AggiungiRiga(t, "");

  for (const auto& l : livelli) {
    AggiungiRiga(t, "Nome: " + Pulita(l.Nome));
    AggiungiRiga(t, "Autore_Email: " + Pulita(l.Autore_Email));
    AggiungiRiga(t, "Autore_Nome: " + Pulita(l.Autore_Nome));
    AggiungiRiga(t, "Autore_Note: " + Pulita(l.Autore_Note));
    AggiungiRiga(t, "Autore_Sito: " + Pulita(l.Autore_Sito));
    AggiungiRiga(t, "Codice: " + decimale(l.Codice));
    AggiungiRiga(t, "NomeSoluzione: " + Pulita(l.NomeSoluzione));
    AggiungiRiga(t, "MaxSavegames: " + decimale(l.MaxSavegames));
    AggiungiRiga(t, "Flags: 0x" + Esadecimale(l.Flags, 16));
    AggiungiRiga(t, "Note: " + Pulita(l.Note));
    AggiungiRiga(t, "NumeroCd: " + decimale(l.NumeroCd));
    AggiungiRiga(t, "SizeFiles: " + FormattaDimensione(static_cast<double>(l.SizeFiles)));
    AggiungiRiga(t, "SizeSubDir: " + FormattaDimensione(static_cast<double>(l.SizeSubDir)));
    AggiungiRiga(t, "TestRicalcolaSize: " + booleano(l.TestRicalcolaSize));
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
