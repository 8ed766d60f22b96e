// The check of Ordelio's backup_trle folder against the sample lists beside the program.
#include "analysis/analisi_backup.h"
#include "analysis/riepilogo_aree.h"
#include "support/files.h"

namespace analysis {

void VerificaBackup(const Contesto& c) {
  if (c.fatti.ordl.stato != StatoMembro::letto) return;
  const std::string campione = c.cartellaProgramma + "\\backup_trle.le",
                    cd = c.cartellaProgramma + "\\trle_cd.le";
  if (!support::FileExists(campione) || !support::FileExists(cd)) {
    std::string mancanti;
    for (const auto* f : {&campione, &cd})
      if (!support::FileExists(*f)) mancanti += (mancanti.empty() ? "" : ", ") + support::EstraiNomeFile(*f);
    c.Aggiungi(
        IdEsito::backupNoSampleLists, Gravita::warn,
        "The backup analysis needs sample lists that are not beside the program: " + mancanti,
        {{"missing", mancanti}, {"program_folder", c.cartellaProgramma}},
        "Make backup_trle.le from a known good backup_trle folder with \"checkordl-cli sample FOLDER\"; "
        "trle_cd.le is the same kind of list of the level editor's original CD: run sample on the CD's "
        "folder and name the list trle_cd.le.");
    return;
  }
  ListeBackup liste;
  liste.Campione = LeggiElencoUnaVolta(campione).elenco;
  liste.Cd = LeggiElencoUnaVolta(cd).elenco;
  liste.Utente = c.fatti.ordl.letto->elenco;
  std::vector<std::string> fileTrovati;
  support::BarraMuta barra;
  TotaliBackup t;
  TestoAnalisiBackup(liste, campione, MisuraCopieCampione(), fileTrovati, barra, c.separatore, &t);
  const std::vector<Evidenza> evidenze = {{"sample_files", t.Campione}, {"correct", t.Corretti},
                                          {"missing", t.Mancanti},      {"larger", t.Maggiori},
                                          {"smaller", t.Minori},        {"cd_originals", t.OriginaliCd}};
  if (t.Mancanti + t.Maggiori + t.Minori > 0)
    c.Aggiungi(IdEsito::backupDiffers, Gravita::warn,
               "backup_trle differs from the sample: " + std::to_string(t.Mancanti) + " missing, " +
                   std::to_string(t.Maggiori) + " larger, " + std::to_string(t.Minori) + " smaller",
               evidenze,
               "Run the backup analysis for the files, and have the user restore them from the sample.");
  else
    c.Aggiungi(IdEsito::backupMatches, Gravita::pass,
               "backup_trle matches the sample (" + std::to_string(t.Corretti) + " files)", evidenze);
}

}  // namespace analysis
