// The checks on the snapshot's members themselves, and on the error flags of its header.
#include <iterator>

#include "analysis/riepilogo_ambiente.h"
#include "analysis/riepilogo_aree.h"
#include "analysis/testo.h"
#include "collection/membri.h"
#include "formats/info_header.h"
#include "host/nomi.h"

namespace analysis {
namespace {

struct Flag {
  std::int32_t bit;
  IdEsito id;
  Gravita livello;
  const char* titolo;
  const char* azione;
  const char* risposta;
};
// In the order of the header report's table.
constexpr Flag kFlag[] = {
    {formats::kMancaArchivioQlv, IdEsito::flagNoArchive, Gravita::fail,
     "The check found no level archive where ordelio.prf points",
     "Point Ordelio's settings at the level archive, or restore archivio.qlv from a backup.",
     "In Ordelio's settings, choose the folder of your level archive, or restore archivio.qlv from a "
     "backup."},
    {formats::kMancaCartellaOrdl, IdEsito::flagNoOrdelioFolder, Gravita::fail,
     "The check found no Ordelio folder",
     "Reinstall Ordelio, or choose its folder with \"Change\" before the check.",
     "Reinstall Ordelio, or choose its folder with \"Change\" before you run the check again."},
    {formats::kMancaCartellaArchivio, IdEsito::flagNoArchiveFolder, Gravita::fail,
     "The check found no archive folder",
     "Make the archive folder named in Ordelio's archive, or restore it.",
     "Make the archive folder that Ordelio's archive names again, or restore it from a backup."},
    {formats::kMancaCartellaBackup, IdEsito::flagNoBackupFolder, Gravita::fail,
     "The check found no backup folder", "Let Ordelio make its backup_trle folder, then check again.",
     "Let Ordelio make its backup_trle folder, then run the check again."},
    {formats::kMancaCartellaTrle, IdEsito::flagNoEditorFolder, Gravita::fail,
     "The check found no level editor folder",
     "Reinstall the level editor, or choose its folder with \"Change\" before the check.",
     "Reinstall the level editor, or choose its folder with \"Change\" before you run the check again."},
    {formats::kMancaOrdelioPrf, IdEsito::flagNoPreferences, Gravita::fail,
     "The check found no ordelio.prf in the Ordelio folder",
     "Start Ordelio once so that it writes its settings, then check again.",
     "Start Ordelio once so that it writes its settings, then run the check again."},
    {formats::kMancaOrdl2009Exe, IdEsito::flagNoOrdl2009, Gravita::fail,
     "The check found no ordl2009.exe in the Ordelio folder", "Reinstall Ordelio.",
     "Reinstall Ordelio: ordl2009.exe is not in its folder."},
    {formats::kMancaOrdeioTxt, IdEsito::flagNoOrdeioTxt, Gravita::warn,
     "The check found no ordeio.txt in the editor folder",
     "Install a level with Ordelio so that it writes ordeio.txt, then check again.",
     "Install a level with Ordelio so that it writes ordeio.txt, then run the check again."},
    {formats::kMancaScriptDat, IdEsito::flagNoScript, Gravita::fail,
     "The check found no script.dat in the editor folder",
     "Build the script in the level editor so that script.dat is written.",
     "Build the script in the level editor so that script.dat is written."},
};
constexpr std::int32_t kBitNoti = formats::BitFlagNoti();
static_assert(std::size(kFlag) == formats::kTestiFlagErrori.size(), "a finding for every flag of the table");

// Where a listing of the same snapshot shows the file of a missing member, as its full path; "" when no
// listing shows it (a list read in part counts for what it holds). The archive may carry any name: any ".qlv"
// stands for it.
std::string InUnElenco(const Fatti& f, const collection::VoceMembro& m) {
  if (m.luogo != collection::Luogo::installazione) return {};
  const bool archivio = m.membro == collection::Membro::archivio;
  const std::string cerca =
      host::Maiuscolo(archivio ? std::string(".qlv") : std::string(1, '\\').append(m.nomeControllo));
  for (const ListaFatti* l : {&f.ordl, &f.trle, &f.dirarc}) {
    if (!l->letto) continue;
    const formats::ElencoFile& e = l->letto->elenco;
    for (std::size_t i = 0; i < VociUsabili(e); ++i) {
      const std::string& nome = e.NomiFile[i];
      if (nome.size() >= cerca.size() && host::Maiuscolo(nome.substr(nome.size() - cerca.size())) == cerca)
        return e.CartellaBase + nome;
    }
  }
  return {};
}

}  // namespace

// A member the snapshot holds counts as present even when its reader refused it: it is there, and the
// finding of its own area says what is wrong with it.
void VerificaMembri(const Contesto& c) {
  const Fatti& f = c.fatti;
  for (const collection::VoceMembro& m : collection::kMembri) {
    const ListaFatti* l = f.ListaDi(m.membro);
    if (!l || l->stato != StatoMembro::danneggiato) continue;
    c.Aggiungi(
        IdEsito::listUnreadable, Gravita::warn, std::string(m.nomeDati) + " could not be read whole",
        {{"list", m.nomeDati},
         {"reason", l->problema},
         {"entries_read", static_cast<std::int64_t>(VociUsabili(l->letto->elenco))}},
        "Ask the user for a new snapshot: the checks on this list's files were left out.",
        "Please run the check again and send the new snapshot: a list of files in this one is cut off.");
  }
  std::int64_t presenti = 0;
  for (const collection::VoceMembro& m : collection::kMembri) {
    if (!m.documentato) continue;
    if (f.Stato(m.membro) != StatoMembro::assente) {
      ++presenti;
      continue;
    }
    if (const formats::MembroNonLetto* n = MembroNonLettoDi(f.ambiente, m.membro)) {
      c.esiti.push_back(MembroIlleggibile(*n, m.membro));
      continue;
    }
    // A file the machine has, by a listing of the same run, that the run could not take: held open, most
    // likely, by the program that owns it.
    if (const std::string elencato = InUnElenco(f, m); !elencato.empty()) {
      c.Aggiungi(
          IdEsito::memberMissing, Gravita::warn,
          std::string("The snapshot lacks ") + m.nomeDati + ", which a listing shows",
          {{"member", m.nomeDati}, {"listed", elencato}, {"needed_by", m.serve}},
          "The check could not take the file: ask the user to close Ordelio and the level editor, "
          "then check again.",
          "Close Ordelio and the level editor, then run the check again and send the new snapshot: the "
          "check could not take " +
              elencato + ".");
      continue;
    }
    // Without the header the snapshot did not come whole from a check run.
    c.Aggiungi(
        IdEsito::memberMissing, m.membro == collection::Membro::intestazione ? Gravita::fail : Gravita::warn,
        std::string("The snapshot holds no ") + m.nomeDati, {{"member", m.nomeDati}, {"needed_by", m.serve}},
        "Ask the user for a new snapshot; if it still lacks the file, the file is missing on the machine.",
        std::string("Please run the check again and send the new snapshot: this one lacks ") + m.nomeDati +
            ".");
  }
  if (presenti == static_cast<std::int64_t>(collection::kMembriDocumentati))
    c.Aggiungi(IdEsito::memberAllPresent, Gravita::pass,
               "The snapshot holds all " + std::to_string(collection::kMembriDocumentati) +
                   " files the reports read",
               {{"members", presenti}});
}

void VerificaFlag(const Contesto& c) {
  const Record& r = c.fatti.header;
  if (r.stato == StatoMembro::danneggiato)
    c.Aggiungi(IdEsito::headerUnreadable, Gravita::fail,
               "The snapshot's infofile.bin is not the check's record",
               {{"reason", r.problema}, {"size", r.dimensione}},
               "Ask the user for a new snapshot: the checks on the error flags, the free space and Ordelio's "
               "version were left out.",
               "Please run the check again and send the new snapshot: its infofile.bin is damaged.");
  if (r.stato != StatoMembro::letto) return;
  const std::int32_t flag = c.fatti.infoHeader.FlagErrori;
  const std::string esa = "0x" + Esadecimale(flag, 32);
  for (const auto& riga : kFlag)
    if (flag & riga.bit)
      c.Aggiungi(riga.id, riga.livello, riga.titolo, {{"FlagErrori", esa}}, riga.azione, riga.risposta);
  if (flag & ~kBitNoti)
    c.Aggiungi(IdEsito::flagUnknownBits, Gravita::warn, "Error flags are set that this program does not know",
               {{"FlagErrori", esa}, {"unknown_bits", "0x" + Esadecimale(flag & ~kBitNoti, 32)}},
               "Ask the user which program made the snapshot, and make it again with this one.",
               "Please make the snapshot again with the latest CheckORDL and send it.");
  if (flag == 0)
    c.Aggiungi(IdEsito::flagNone, Gravita::pass, "The check set no error flag", {{"FlagErrori", esa}});
}

}  // namespace analysis
