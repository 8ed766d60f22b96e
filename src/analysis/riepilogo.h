// Findings first: what an opened snapshot says about the user's machine, as a short list of checks that
// failed, look doubtful or passed, each with its evidence and one sentence on what to do. Every check reads
// the same files in the working folder as the reports, with the same readers (the level script's table is
// read whole, where its report reads what it can).
//
// Identifiers are stable, so that a folder of snapshots can be sorted by them; every one is a row of
// kEsitiNoti (id_esiti.h), with the severities it may carry, and the README lists the same rows. A check that
// fires gives its failure identifier, once per thing it found (one line per missing level, say); a check that
// does not fire gives one pass line. A check whose files the snapshot lacks gives nothing: the missing member
// says it. A member that is there but that its reader refuses gives its own finding (script.unreadable,
// archive.cut, ...), and no check passes over it. The checks, one table of them by area, are in
// riepilogo.cpp; they judge the facts of the snapshot (fatti.h), as the rules do.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "analysis/elenchi.h"
#include "analysis/forma_analisi.h"
#include "collection/snapshot.h"

namespace analysis {

enum class Gravita { fail, warn, pass };

// The severities as the findings' text, their JSON and the rules write them, in the order of `Gravita`.
inline constexpr std::array<std::string_view, 3> kNomiGravita = {"fail", "warn", "pass"};

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
  // What the user should do, as the supporter reads it; empty for a pass.
  std::string Azione;
  // The same written to the user, for the answer the supporter pastes; empty for a pass.
  std::string Risposta = {};
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
                                    const LettoreElenchi& lettore = {},
                                    const RegoleInVigore* regole = nullptr);

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

// The one finding of a snapshot that could not be read, and why.
Esito EsitoIlleggibile(const std::string& motivo);

// Unpacks `snapshot` into `cartella` (an existing, empty folder) and checks what it left there.
RiepilogoSnapshot ApriEVerifica(const std::string& snapshot, const std::string& cartella,
                                const std::string& cartellaProgramma, char separatoreDecimale);

// The report area's text: a count line, then one line per finding in columns for the fixed-pitch font, with
// the evidence and the action under each failure or warning. Lines longer than `colonne` are wrapped for the
// report area; with 0 none is, so that a path stays whole on a terminal or in a post.
std::string TestoRiepilogo(const std::vector<Esito>& esiti, std::size_t colonne = ColonneAreaProspetto());
// The same for a snapshot opened apart.
std::string TestoRiepilogo(const RiepilogoSnapshot& r, std::size_t colonne = ColonneAreaProspetto());

// One line of JSON (UTF-8, no line end): the snapshot's path as given, its members, and every field of every
// finding (or the reason it could not be read).
std::string JsonRiepilogo(const std::string& snapshot, const RiepilogoSnapshot& r);

}  // namespace analysis
