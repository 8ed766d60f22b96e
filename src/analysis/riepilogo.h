// Findings first: what an opened snapshot says about the user's machine, as a short list of checks that
// failed, look doubtful or passed, each with its evidence and one sentence on what to do. Every check reads
// the same files in the working folder as the reports, with the same readers.
//
// Identifiers are stable, so that a folder of snapshots can be sorted by them. A check that fires gives its
// failure identifier, once per thing it found (one line per missing level, say); a check that does not fire
// gives one pass line. A check whose files the snapshot lacks gives nothing: the missing member says it.
//
//   flag.no-archive flag.no-ordelio-folder flag.no-archive-folder flag.no-backup-folder
//   flag.no-editor-folder flag.no-preferences flag.no-ordl2009 flag.no-script    fail, a bit of FlagErrori
//   flag.no-ordeio-txt  warn         flag.unknown-bits  warn         flag.none                pass
//   member.missing      fail/warn    member.all-present         pass list.unreadable          warn
//   member.unreadable   warn  (for member.missing when the check run could not read the member)
//   script.level-missing fail        script.levels-present      pass
//   editor.empty-level  fail         editor.no-empty-level      pass
//   editor.no-tomb4     fail         editor.tomb4-present       pass
//   prefs.other-editor-folder fail   prefs.same-editor-folder   pass
//   archive.few-folders warn         archive.folders-match      pass
//   disk.low-space      warn         disk.space-ok              pass
//   ordelio.no-version  warn         ordelio.version            pass
//   backup.differs      warn         backup.matches             pass  (only with the sample lists at hand)
//   backup.no-sample-lists warn  (the sample lists are not beside the program)
//   install.program-files install.non-ascii-path install.onedrive install.long-path install.unshowable-name
//   install.long-name   warn         install.paths-ok           pass  (from the lists' folders and names)
//   install.virtualstore warn  (the members and listed files that came from the VirtualStore)
//   dll.not-found       fail         dll.all-found              pass  (one line per executable and DLL)
//   exe.compat-layers   warn  web.marked warn  exe.settings-ok  pass  (layers on the level tools; marked files)
//   cfa.guarded-folder  warn         cfa.audit                  pass  (Controlled Folder Access over a folder)
//   environment.not-recorded pass  (no environment member: an older program)  environment.unreadable warn
//   snapshot.unreadable fail  (the snapshot opened apart could not be read; the only finding then)
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "analysis/elenchi.h"
#include "collection/snapshot.h"

namespace analysis {

enum class Gravita { fail, warn, pass };

// One fact a finding rests on: a name, a size, a value. Text in Windows-1252.
struct Evidenza {
  std::string Nome;
  std::variant<std::string, std::int64_t> Valore;
};

struct Esito {
  std::string Id;
  Gravita Livello = Gravita::pass;
  std::string Titolo;
  std::vector<Evidenza> Evidenze;
  // What the user should do; empty for a pass.
  std::string Azione;
  // The file of the rule that gave it; "" for a built-in check.
  std::string Regola = {};
};

struct RegoleInVigore;

// The checks on the files that a snapshot left in `cartellaDati` (its table in `contenuto`). The backup
// totals come in only when `cartellaProgramma` holds both sample lists. Failures first, then warnings,
// then passes, each in check order.
// `lettore`, when given, hands over the snapshot's lists (by file name) already read for someone else.
// The rules' findings join the checks'; `regole` null means the rules in force for the program.
std::vector<Esito> CalcolaRiepilogo(const std::string& cartellaDati,
                                    const collection::ContenutoSnapshot& contenuto,
                                    const std::string& cartellaProgramma, char separatoreDecimale,
                                    const LettoreElenchi& lettore = {}, const RegoleInVigore* regole = nullptr);

// One snapshot opened into a folder of its own and checked.
struct RiepilogoSnapshot {
  collection::ContenutoSnapshot Contenuto;
  // Why the snapshot could not be read; empty when it could. A snapshot that could not be read has the one
  // finding snapshot.unreadable.
  std::string Errore;
  std::vector<Esito> Esiti;
  // When the check run made it, as its environment member records it (DataControllo); "" when the snapshot
  // has no readable such member.
  std::string Data;
};

// Why a snapshot cannot be read.
inline constexpr const char* kSnapshotMancante = "the file does not exist";
inline constexpr const char* kSnapshotIlleggibile =
    "not a snapshot, or cut off: its table or a member runs past the end of the file";

// Unpacks `snapshot` into `cartella` (an existing, empty folder) and checks what it left there.
RiepilogoSnapshot ApriEVerifica(const std::string& snapshot, const std::string& cartella,
                                const std::string& cartellaProgramma, char separatoreDecimale);

// The report area's text: a count line, then one line per finding in columns for the fixed-pitch font, with
// the evidence and the action under each failure or warning.
std::string TestoRiepilogo(const std::vector<Esito>& esiti);
// The same for a snapshot opened apart.
std::string TestoRiepilogo(const RiepilogoSnapshot& r);

// One line of JSON (UTF-8, no line end): the snapshot's path as given, its members, and every field of every
// finding (or the reason it could not be read).
std::string JsonRiepilogo(const std::string& snapshot, const RiepilogoSnapshot& r);

}  // namespace analysis
