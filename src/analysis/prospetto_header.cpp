#include "analysis/prospetto_header.h"

#include "analysis/righe_record.h"
#include "analysis/testo.h"
#include "collection/membri.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {

std::string TestoHeader(const formats::InfoHeader& h, std::span<const formats::TestoFlag> tabellaFlag) {
  std::string flag = "Flag errori: ";
  for (const auto& riga : tabellaFlag)
    if (h.FlagErrori & riga.bit) {
      flag += '[';
      flag += riga.testo;
      flag += "] ";
    }

  // The letter is printed as the record holds it, not cleaned: a record without one shows its raw byte.
  const std::string disco = h.DiscoMaggiore.Testo();
  std::string t;
  AggiungiRiga(t, flag);
  AggiungiRiga(t, "Start Folder Trle: \"" + Valore(h.StartFolderTrle) + "\"");
  AggiungiRiga(t, "Start Folder ORDL: \"" + Valore(h.StartFolderOrdl) + "\"");
  AggiungiRiga(t, "Windows Xp : " + Valore(h.WindowsXp));
  AggiungiRiga(t, "Spazio Disco C: " + support::FormattaDimensione(h.SpazioDiscoC));
  AggiungiRiga(t, "Maggiore spazio su disco: " + disco + ":\\");
  AggiungiRiga(t, "Spazio Disco " + disco + ": " + support::FormattaDimensione(h.SpazioDiscoMaggiore));
  AggiungiRiga(t, "Versione Ordelio: \"" + Valore(h.VersioneOrdelio) + "\"");
  return t;
}

std::optional<std::string> ProspettoHeader(const std::string& cartellaDati,
                                           std::span<const formats::TestoFlag> tabellaFlag,
                                           formats::InfoHeader& header, support::Messaggi& messaggi) {
  const std::string percorso = collection::FileDati(cartellaDati, collection::Membro::intestazione);
  // A file that exists but cannot be opened is told the same way as a missing one: the user can do nothing
  // different about it, and the record and the text stay as they were in both cases.
  if (!support::FileExists(percorso) || !formats::LeggiInfoHeader(percorso, &header)) {
    messaggi.Critico("Non trovo file: " + percorso);
    return std::nullopt;
  }
  return TestoHeader(header, tabellaFlag);
}

}  // namespace analysis
