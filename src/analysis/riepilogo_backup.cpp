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
    // The sample lists and the good copy are the supporter's own, on this computer: no answer to the user.
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
  // Sizes compared with only part of the good copy would pass for differences, or hide them: without the
  // whole copy there are no totals, only what the supporter must set up.
  if (t.SenzaCopia > 0) {
    const std::string cartella = liste.Campione.CartellaBase;
    c.Aggiungi(IdEsito::backupNoGoodCopy, Gravita::warn,
               (support::DirExists(cartella) ? "The known good backup_trle here lacks files: "
                                             : "No known good backup_trle on this computer: ") +
                   cartella,
               {{"good_copy_folder", cartella}, {"sample_files", t.Campione}, {"not_found", t.SenzaCopia}},
               "Copy a known good backup_trle folder to " + cartella +
                   ", or run \"checkordl-cli sample FOLDER\" on one that is on this computer.");
    return;
  }
  const std::string conti = std::to_string(t.Mancanti) + " missing, " + std::to_string(t.Maggiori) +
                            " larger, " + std::to_string(t.Minori) + " smaller";
  if (t.Mancanti + t.Maggiori + t.Minori > 0)
    c.Aggiungi(IdEsito::backupDiffers, Gravita::warn,
               "backup_trle: " + conti + " of " + std::to_string(t.Campione),
               {{"missing", t.Mancanti},
                {"larger", t.Maggiori},
                {"smaller", t.Minori},
                {"cd_originals", t.OriginaliCd}},
               "Restore these files from a known good backup_trle; the backup analysis names them.",
               "Restore your backup_trle folder from a known good copy: " + conti + " of " +
                   std::to_string(t.Campione) + " files.");
  else
    c.Aggiungi(IdEsito::backupMatches, Gravita::pass,
               "backup_trle matches the sample (" + std::to_string(t.Corretti) + " files)",
               {{"sample_files", t.Campione},
                {"correct", t.Corretti},
                {"missing", t.Mancanti},
                {"larger", t.Maggiori},
                {"smaller", t.Minori},
                {"cd_originals", t.OriginaliCd}});
}

}  // namespace analysis
