#include "analysis/riepilogo.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

#include "analysis/ambiente_dati.h"
#include "analysis/analisi_backup.h"
#include "analysis/elenchi.h"
#include "analysis/riepilogo_ambiente.h"
#include "analysis/riepilogo_installazione.h"
#include "analysis/testi.h"
#include "analysis/testo.h"
#include "collection/membri.h"
#include "formats/archivio.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "host/machine.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {
namespace {

// Below this a drive is too full for the editor to build its levels.
constexpr double kSpazioMinimo = 200.0 * 1024 * 1024;

// What went wrong reading a list, as the reason of a finding: the messages its reader would have shown, ""
// when it read cleanly (the entries read so far are kept either way).
std::string Problema(const ElencoLetto& letto) {
  std::string problema;
  for (const auto& m : letto.messaggi) problema += (problema.empty() ? "" : "; ") + m.second;
  return problema;
}

// A Windows folder path as compared: upper case, no closing backslash.
std::string CartellaConfrontabile(std::string p) {
  while (!p.empty() && p.back() == '\\') p.pop_back();
  return host::Maiuscolo(p);
}

struct Flag {
  std::int32_t bit;
  const char* id;
  Gravita livello;
  const char* titolo;
  const char* azione;
};
// In the order of the header report's table.
constexpr Flag kFlag[] = {
    {formats::kMancaArchivioQlv, "flag.no-archive", Gravita::fail,
     "The check found no level archive where ordelio.prf points",
     "Point Ordelio's settings at the level archive, or restore archivio.qlv from a backup."},
    {formats::kMancaCartellaOrdl, "flag.no-ordelio-folder", Gravita::fail,
     "The check found no Ordelio folder",
     "Reinstall Ordelio, or choose its folder with \"Change\" before the check."},
    {formats::kMancaCartellaArchivio, "flag.no-archive-folder", Gravita::fail,
     "The check found no archive folder",
     "Make the archive folder named in Ordelio's archive, or restore it."},
    {formats::kMancaCartellaBackup, "flag.no-backup-folder", Gravita::fail,
     "The check found no backup folder", "Let Ordelio make its backup_trle folder, then check again."},
    {formats::kMancaCartellaTrle, "flag.no-editor-folder", Gravita::fail,
     "The check found no level editor folder",
     "Reinstall the level editor, or choose its folder with \"Change\" before the check."},
    {formats::kMancaOrdelioPrf, "flag.no-preferences", Gravita::fail,
     "The check found no ordelio.prf in the Ordelio folder",
     "Start Ordelio once so that it writes its settings, then check again."},
    {formats::kMancaOrdl2009Exe, "flag.no-ordl2009", Gravita::fail,
     "The check found no ordl2009.exe in the Ordelio folder", "Reinstall Ordelio."},
    {formats::kMancaOrdeioTxt, "flag.no-ordeio-txt", Gravita::warn,
     "The check found no ordeio.txt in the editor folder",
     "Install a level with Ordelio so that it writes ordeio.txt, then check again."},
    {formats::kMancaScriptDat, "flag.no-script", Gravita::fail,
     "The check found no script.dat in the editor folder",
     "Build the script in the level editor so that script.dat is written."},
};
constexpr std::int32_t kBitNoti = formats::BitFlagNoti();
static_assert(std::size(kFlag) == formats::kTestiFlagErrori.size(), "a finding for every flag of the table");

class Verifica {
 public:
  Verifica(const std::string& dati, const collection::ContenutoSnapshot& contenuto, std::string programma,
           char separatore, const LettoreElenchi& lettore)
      : cartellaDati_(dati),
        contenuto_(contenuto),
        programma_(std::move(programma)),
        separatore_(separatore),
        lettore_(lettore) {}

  std::vector<Esito> Esegui() {
    Membri();
    if (haHeader_) Flag();
    if (haTrle_) {
      if (trleIntero_) {
        if (haScript_) livelli_ = LivelliNominati();
        nomiTrle_ = NomiTrle();
        if (haScript_) LivelliScript();
        LivelliVuoti();
        Tomb4();
      }
      if (haPref_) CartellaEditor();
    }
    if (!archivio_.empty() && haDirarc_ && dirarcIntero_) CartelleArchivio();
    Installazione();
    if (haHeader_) {
      Spazio();
      VersioneOrdelio();
    }
    if (haOrdl_ && ordlIntero_) Backup();
    for (Esito& e : VerificaAmbiente(ambiente_, Elenchi())) esiti_.push_back(std::move(e));
    std::stable_sort(esiti_.begin(), esiti_.end(),
                     [](const Esito& a, const Esito& b) { return a.Livello < b.Livello; });
    return std::move(esiti_);
  }

 private:
  void Aggiungi(const char* id, Gravita g, std::string titolo, std::vector<Evidenza> evidenze = {},
                std::string azione = {}) {
    esiti_.push_back({id, g, std::move(titolo), std::move(evidenze), std::move(azione)});
  }

  // A list member, read once; false when the snapshot lacks it. `intero` tells whether it read cleanly:
  // the checks on a list's entries leave out a list that did not, rather than report what is merely unread.
  bool Elenco(collection::Membro m, std::shared_ptr<const ElencoLetto>& letto, bool& intero) {
    const char* nome = collection::VoceDi(m).nomeDati;
    const std::string percorso = File(m);
    if (!support::FileExists(percorso)) return false;
    letto = lettore_ ? lettore_(nome) : std::make_shared<const ElencoLetto>(LeggiElencoUnaVolta(percorso));
    const std::string problema = Problema(*letto);
    const formats::ElencoFile& e = letto->elenco;
    intero = problema.empty();
    if (!intero)
      Aggiungi(
          "list.unreadable", Gravita::warn, std::string(nome) + " could not be read whole",
          {{"list", nome}, {"reason", problema}, {"entries_read", static_cast<std::int64_t>(VociUsabili(e))}},
          "Ask the user for a new snapshot: the checks on this list's files were left out.");
    return true;
  }

  void Membri() {
    using collection::Membro;
    ambiente_ = LeggiAmbienteDati(cartellaDati_);
    const std::string header = File(Membro::intestazione), pref = File(Membro::preferenze);
    haHeader_ = support::FileExists(header) && formats::LeggiInfoHeader(header, &header_);
    haPref_ = support::FileExists(pref) && formats::LeggiPreferenze(pref, &prf_);
    archivio_ = collection::TrovaArchivio(contenuto_, cartellaDati_);
    if (!archivio_.empty() && !support::FileExists(archivio_)) archivio_.clear();
    haOrdl_ = Elenco(Membro::elencoOrdl, ordl_, ordlIntero_);
    haTrle_ = Elenco(Membro::elencoTrle, trle_, trleIntero_);
    haDirarc_ = Elenco(Membro::elencoArchivio, dirarc_, dirarcIntero_);
    haScript_ = support::FileExists(File(Membro::script));
    std::array<bool, collection::kMembri.size()> presente{};
    const auto segna = [&](Membro m, bool c) { presente[static_cast<std::size_t>(m)] = c; };
    segna(Membro::intestazione, haHeader_);
    segna(Membro::preferenze, haPref_);
    segna(Membro::archivio, !archivio_.empty());
    segna(Membro::elencoOrdl, haOrdl_);
    segna(Membro::elencoTrle, haTrle_);
    segna(Membro::elencoArchivio, haDirarc_);
    segna(Membro::ordeio, support::FileExists(File(Membro::ordeio)));
    segna(Membro::script, haScript_);
    std::int64_t presenti = 0;
    for (const collection::VoceMembro& m : collection::kMembri) {
      if (!m.documentato) continue;
      if (presente[static_cast<std::size_t>(m.membro)]) {
        ++presenti;
        continue;
      }
      if (const formats::MembroNonLetto* n = MembroNonLettoDi(ambiente_, m.membro)) {
        esiti_.push_back(MembroIlleggibile(*n, m.membro));
        continue;
      }
      // Without the header the snapshot did not come whole from a check run.
      Aggiungi(
          "member.missing", m.membro == Membro::intestazione ? Gravita::fail : Gravita::warn,
          std::string("The snapshot holds no ") + m.nomeDati,
          {{"member", m.nomeDati}, {"needed_by", m.serve}},
          "Ask the user for a new snapshot; if it still lacks the file, the file is missing on the machine.");
    }
    if (presenti == static_cast<std::int64_t>(collection::kMembriDocumentati))
      Aggiungi("member.all-present", Gravita::pass,
               "The snapshot holds all " + std::to_string(collection::kMembriDocumentati) +
                   " files the reports read",
               {{"members", presenti}});
  }

  std::string File(collection::Membro m) const { return collection::FileDati(cartellaDati_, m); }

  // The level files script.dat names, the empty entries of a script with fewer names than its count aside.
  std::vector<std::string> LivelliNominati() const {
    std::vector<std::string> livelli = LeggiScript(File(collection::Membro::script)).righe;
    std::erase_if(livelli, [](const std::string& l) { return l.empty(); });
    return livelli;
  }

  void Flag() {
    const std::int32_t f = header_.FlagErrori;
    const std::string esa = "0x" + Esadecimale(f, 32);
    for (const auto& r : kFlag)
      if (f & r.bit) Aggiungi(r.id, r.livello, r.titolo, {{"FlagErrori", esa}}, r.azione);
    if (f & ~kBitNoti)
      Aggiungi("flag.unknown-bits", Gravita::warn, "Error flags are set that this program does not know",
               {{"FlagErrori", esa}, {"unknown_bits", "0x" + Esadecimale(f & ~kBitNoti, 32)}},
               "Ask the user which program made the snapshot, and make it again with this one.");
    if (f == 0) Aggiungi("flag.none", Gravita::pass, "The check set no error flag", {{"FlagErrori", esa}});
  }

  static std::string ChiaveLivello(const std::string& l) {
    return host::Maiuscolo(l.front() == '\\' ? l : "\\" + l);
  }

  // Of the editor list's names, in upper case, those the checks look for (the script's levels, tomb4.exe),
  // found in one pass: a set of the whole list would cost more than every check together.
  std::unordered_set<std::string> NomiTrle() const {
    std::unordered_set<std::string> cercati = {"\\TOMB4.EXE"}, trovati;
    for (const auto& l : livelli_) cercati.insert(ChiaveLivello(l));
    std::unordered_set<std::size_t> lunghezze;
    for (const auto& c : cercati) lunghezze.insert(c.size());
    const std::size_t n = VociUsabili(trle_->elenco);
    for (std::size_t i = 0; i < n; ++i) {
      const std::string& nome = trle_->elenco.NomiFile[i];
      if (!lunghezze.contains(nome.size())) continue;
      if (std::string m = host::Maiuscolo(nome); cercati.contains(m)) trovati.insert(std::move(m));
    }
    return trovati;
  }

  void LivelliScript() {
    const std::vector<std::string>& livelli = livelli_;
    std::unordered_set<std::string> detti;
    std::int64_t mancanti = 0;
    for (const auto& l : livelli) {
      const std::string chiave = ChiaveLivello(l);
      // A level the script names twice is told once.
      if (nomiTrle_.contains(chiave) || !detti.insert(chiave).second) continue;
      ++mancanti;
      Aggiungi(
          "script.level-missing", Gravita::fail, "A level that script.dat names is not in the editor folder",
          {{"level", l}, {"editor_folder", trle_->elenco.CartellaBase}},
          "Copy the level file into the editor folder or take it out of the script: the game stops when it "
          "reaches that level.");
    }
    if (mancanti == 0)
      Aggiungi(
          "script.levels-present", Gravita::pass,
          "All " + std::to_string(livelli.size()) + " levels that script.dat names are in the editor folder",
          {{"levels", static_cast<std::int64_t>(livelli.size())}});
  }

  void LivelliVuoti() {
    std::int64_t livelli = 0, vuoti = 0;
    for (std::size_t i = 0; i < VociUsabili(trle_->elenco); ++i) {
      const std::string& nome = trle_->elenco.NomiFile[i];
      // The extension as EstraiEstensione takes it, compared without a copy of each of many names.
      const std::size_t punto = nome.rfind('.');
      if (punto == std::string::npos || !host::UgualiSenzaCaso(std::string_view(nome).substr(punto), ".TR4"))
        continue;
      ++livelli;
      if (trle_->elenco.DimensioniFile[i] != 0) continue;
      ++vuoti;
      Aggiungi("editor.empty-level", Gravita::fail, "A level file in the editor folder is empty",
               {{"file", nome}, {"size", std::int64_t{0}}},
               "Build the level again in the level editor, or copy it back from a backup.");
    }
    if (vuoti == 0)
      Aggiungi("editor.no-empty-level", Gravita::pass,
               "None of the " + std::to_string(livelli) + " level files in the editor folder is empty",
               {{"levels", livelli}});
  }

  void Tomb4() {
    if (nomiTrle_.contains("\\TOMB4.EXE"))
      Aggiungi("editor.tomb4-present", Gravita::pass, "The editor folder holds tomb4.exe",
               {{"editor_folder", trle_->elenco.CartellaBase}});
    else
      Aggiungi("editor.no-tomb4", Gravita::fail, "The editor folder holds no tomb4.exe",
               {{"editor_folder", trle_->elenco.CartellaBase}},
               "Reinstall the level editor: without tomb4.exe no level can be played.");
  }

  void CartellaEditor() {
    const std::string pathTrle = support::PulisciStringa(prf_.PathTRLE.Testo());
    const std::vector<Evidenza> evidenze = {{"PathTRLE", pathTrle}, {"editor_folder", trle_->elenco.CartellaBase}};
    if (CartellaConfrontabile(pathTrle) == CartellaConfrontabile(trle_->elenco.CartellaBase))
      Aggiungi("prefs.same-editor-folder", Gravita::pass,
               "Ordelio points at the editor folder that was checked", evidenze);
    else
      Aggiungi(
          "prefs.other-editor-folder", Gravita::fail,
          "Ordelio points at another editor folder than the one that was checked", evidenze,
          "Set the editor folder in Ordelio's settings to the level editor the user plays, or check that "
          "folder instead.");
  }

  void CartelleArchivio() {
    formats::ArchivioHeader h;
    if (!formats::LeggiArchivioHeader(archivio_, &h)) return;
    // A level folder shows in the list only through the files below it.
    std::unordered_set<std::string> cartelle;
    for (std::size_t i = 0; i < VociUsabili(dirarc_->elenco); ++i) {
      const std::string& nome = dirarc_->elenco.NomiFile[i];
      const std::size_t inizio = nome.starts_with('\\') ? 1 : 0;
      const std::size_t fine = nome.find('\\', inizio);
      if (fine != std::string::npos) cartelle.insert(host::Maiuscolo(nome.substr(inizio, fine - inizio)));
    }
    const auto numero = static_cast<std::int64_t>(cartelle.size());
    const std::vector<Evidenza> evidenze = {{"TotLivelli", std::int64_t{h.TotLivelli}},
                                      {"folders", numero},
                                      {"archive_folder", dirarc_->elenco.CartellaBase}};
    if (numero < h.TotLivelli)
      Aggiungi("archive.few-folders", Gravita::warn,
               "The archive lists " + std::to_string(h.TotLivelli) + " levels but its folder holds " +
                   std::to_string(numero) + " level folders",
               evidenze, "Restore the missing level folders from a backup, or let Ordelio rebuild its archive.");
    else
      Aggiungi(
          "archive.folders-match", Gravita::pass,
          "The archive folder holds a folder for each of the " + std::to_string(h.TotLivelli) + " levels",
          evidenze);
  }

  std::vector<ElencoDiCartella> Elenchi() const {
    std::vector<ElencoDiCartella> elenchi;
    if (haTrle_) elenchi.push_back({"editor", &trle_->elenco});
    if (haOrdl_) elenchi.push_back({"Ordelio", &ordl_->elenco});
    if (haDirarc_) elenchi.push_back({"archive", &dirarc_->elenco});
    return elenchi;
  }

  void Installazione() {
    const std::vector<ElencoDiCartella> elenchi = Elenchi();
    if (elenchi.empty()) return;
    const bool letto = ambiente_.stato == StatoAmbiente::letto;
    for (Esito& e : VerificaInstallazione(elenchi, letto ? &ambiente_.ambiente : nullptr))
      esiti_.push_back(std::move(e));
  }

  // A disk figure as a count of bytes, or as its text where a damaged header holds no such count (a NaN,
  // a negative or an enormous value).
  static std::variant<std::string, std::int64_t> Byte(double v, const std::string& testo) {
    if (v >= 0 && v < 9e18) return static_cast<std::int64_t>(v);
    return testo;
  }

  void Spazio() {
    struct Disco {
      std::string lettera;
      double libero;
    };
    std::vector<Disco> dischi = {{"C", header_.SpazioDiscoC}};
    const char maggiore = host::Maiuscola(header_.DiscoMaggiore.byte[0]);
    if (maggiore >= 'A' && maggiore <= 'Z' && maggiore != 'C')
      dischi.push_back({std::string(1, maggiore), header_.SpazioDiscoMaggiore});
    std::string tutti;
    bool poco = false;
    for (const auto& d : dischi) {
      const std::string libero = support::FormattaDimensione(d.libero, separatore_);
      tutti += (tutti.empty() ? "" : ", ") + d.lettera + ": " + libero;
      if (d.libero >= kSpazioMinimo) continue;
      poco = true;
      Aggiungi("disk.low-space", Gravita::warn,
               "Drive " + d.lettera + ": has little free space (" + libero + ")",
               {{"drive", d.lettera}, {"free_bytes", Byte(d.libero, libero)}},
               "Free at least 200 Mb on drive " + d.lettera + ": before building or installing levels.");
    }
    if (!poco) Aggiungi("disk.space-ok", Gravita::pass, "Enough free space: " + tutti);
  }

  void VersioneOrdelio() {
    if (header_.FlagErrori & formats::kMancaOrdl2009Exe) return;
    const std::string versione = support::PulisciStringa(header_.VersioneOrdelio.Testo());
    if (versione.empty())
      Aggiungi(
          "ordelio.no-version", Gravita::warn, "ordl2009.exe was found but carries no version text",
          {{"VersioneOrdelio", versione}},
          "Reinstall Ordelio from its own setup: this ordl2009.exe may be damaged or not the right one.");
    else
      Aggiungi("ordelio.version", Gravita::pass, "Ordelio's version is " + versione,
               {{"VersioneOrdelio", versione}});
  }

  void Backup() {
    const std::string campione = programma_ + "\\backup_trle.le", cd = programma_ + "\\trle_cd.le";
    if (!support::FileExists(campione) || !support::FileExists(cd)) {
      std::string mancanti;
      for (const auto* f : {&campione, &cd})
        if (!support::FileExists(*f)) mancanti += (mancanti.empty() ? "" : ", ") + support::EstraiNomeFile(*f);
      Aggiungi("backup.no-sample-lists", Gravita::warn,
               "The backup analysis needs sample lists that are not beside the program: " + mancanti,
               {{"missing", mancanti}, {"program_folder", programma_}},
               "Make backup_trle.le from a known good backup_trle folder with \"checkordl-cli sample FOLDER\"; "
               "trle_cd.le is the same kind of list of the level editor's original CD: run sample on the CD's "
               "folder and name the list trle_cd.le.");
      return;
    }
    ListeBackup liste;
    liste.Campione = LeggiElencoUnaVolta(campione).elenco;
    liste.Cd = LeggiElencoUnaVolta(cd).elenco;
    liste.Utente = ordl_->elenco;
    std::vector<std::string> fileTrovati;
    support::BarraMuta barra;
    TotaliBackup t;
    TestoAnalisiBackup(liste, campione, MisuraCopieCampione(), fileTrovati, barra, separatore_, &t);
    const std::vector<Evidenza> evidenze = {{"sample_files", t.Campione}, {"correct", t.Corretti},
                                      {"missing", t.Mancanti},      {"larger", t.Maggiori},
                                      {"smaller", t.Minori},        {"cd_originals", t.OriginaliCd}};
    if (t.Mancanti + t.Maggiori + t.Minori > 0)
      Aggiungi("backup.differs", Gravita::warn,
               "backup_trle differs from the sample: " + std::to_string(t.Mancanti) + " missing, " +
                   std::to_string(t.Maggiori) + " larger, " + std::to_string(t.Minori) + " smaller",
               evidenze,
               "Run the backup analysis for the files, and have the user restore them from the sample.");
    else
      Aggiungi("backup.matches", Gravita::pass,
               "backup_trle matches the sample (" + std::to_string(t.Corretti) + " files)", evidenze);
  }

  const std::string cartellaDati_;
  // With its closing backslash, for the members' paths.
  const collection::ContenutoSnapshot& contenuto_;
  const std::string programma_;
  const char separatore_;
  formats::InfoHeader header_;
  formats::PrefRecord prf_;
  bool haHeader_ = false, haPref_ = false, haScript_ = false, haOrdl_ = false, haTrle_ = false,
       haDirarc_ = false, ordlIntero_ = false, trleIntero_ = false, dirarcIntero_ = false;
  // The archive member's path, "" when the snapshot lacks it.
  std::string archivio_;
  std::shared_ptr<const ElencoLetto> ordl_, trle_, dirarc_;
  const LettoreElenchi& lettore_;
  // The names the checks look for that the editor list holds, in upper case.
  std::unordered_set<std::string> nomiTrle_;
  // The level files that script.dat names.
  std::vector<std::string> livelli_;
  AmbienteLetto ambiente_;
  std::vector<Esito> esiti_;
};

}  // namespace

std::vector<Esito> CalcolaRiepilogo(const std::string& cartellaDati,
                                    const collection::ContenutoSnapshot& contenuto,
                                    const std::string& cartellaProgramma, char separatoreDecimale,
                                    const LettoreElenchi& lettore, const RegoleInVigore* /*regole*/) {
  return Verifica(cartellaDati, contenuto, cartellaProgramma, separatoreDecimale, lettore).Esegui();
}

RiepilogoSnapshot ApriEVerifica(const std::string& snapshot, const std::string& cartella,
                                const std::string& cartellaProgramma, char separatoreDecimale) {
  RiepilogoSnapshot r;
  if (!support::FileExists(snapshot))
    r.Errore = kSnapshotMancante;
  else if (!collection::EstraiSnapshot(snapshot, cartella, r.Contenuto))
    r.Errore = kSnapshotIlleggibile;
  if (r.Errore.empty()) {
    r.Esiti = CalcolaRiepilogo(cartella, r.Contenuto, cartellaProgramma, separatoreDecimale);
    if (const AmbienteLetto a = LeggiAmbienteDati(cartella); a.stato == StatoAmbiente::letto)
      r.Data = DataControllo(a.ambiente);
  } else
    // A filter on the failures must not pass a snapshot it could not read as clean.
    r.Esiti = {{"snapshot.unreadable", Gravita::fail, "The snapshot cannot be read", {{"reason", r.Errore}},
                "Ask the user to send the snapshot again, attached as the file the check wrote."}};
  return r;
}

}  // namespace analysis
