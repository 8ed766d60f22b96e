// Known problems as data: rules that a supporter writes in a file and the program reads at start, with no
// build. A rule has an id and ordered outcomes; the first outcome whose condition holds is the rule's
// finding, and a rule where none holds gives nothing. The format is described in the README ("Rules").
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/fatti.h"
#include "analysis/riepilogo.h"

namespace analysis {

// The one version of the format this program reads; a file with a higher one is refused as a whole.
inline constexpr int kFormatoRegole = 1;

// Where a rule went wrong: the file as it was given, line and column from 1 (0 when the fault is the
// file's as a whole, such as one that cannot be opened).
struct ErroreRegole {
  std::string file;
  int riga = 0;
  int colonna = 0;
  std::string testo;
};
// "FILE:LINE:COLUMN: text", as a compiler says it (no line and column when they are 0).
std::string TestoErrore(const ErroreRegole& e);

// A condition, read and checked; what it holds is the evaluation's business.
struct Condizione;

struct EsitoRegola {
  Gravita livello = Gravita::pass;
  // Texts as written (Windows-1252), with their `{file}`, `{size}` and `{value}` still in them.
  std::string titolo;
  std::vector<std::pair<std::string, std::string>> evidenze;
  std::string azione;
  // The action written to the user, for the answer the supporter pastes; "" answers with `azione`.
  std::string risposta;
  // Null: the outcome always holds.
  std::shared_ptr<const Condizione> condizione;
};

struct Regola {
  std::string id;
  std::vector<EsitoRegola> esiti;
  // The file it was read from, as given, and the place of its id there.
  std::string file;
  int riga = 0;
};

// One file of rules: every rule it holds when it has no error; when it has any, its errors and no rules (a
// file that is half right is not half used).
struct FileRegole {
  std::string file;
  std::vector<Regola> regole;
  std::vector<ErroreRegole> errori;
};

// The text of a rules file, named `file` in its errors and its rules.
FileRegole AnalizzaRegole(std::string_view testo, const std::string& file);
// A rules file on the machine (a Windows path, as every path of the program).
FileRegole LeggiRegole(const std::string& file);

// The rules in force: those of every folder, in the order given, a later rule replacing an earlier one of the
// same id in its place; and the files that could not be used.
struct RegoleInVigore {
  std::vector<Regola> regole;
  std::vector<FileRegole> scartati;
  // Every file read, in order.
  std::vector<std::string> file;
};
// The `*.json` files of each folder, in name order; a folder that does not exist gives nothing.
RegoleInVigore CaricaRegole(const std::vector<std::string>& cartelle);

// Where the program looks for rules: the shipped `regole` folder beside the programs (or the package's
// shared folder), then `regole_locali` in the program folder, then `regole_locali` in the user's data folder
// when that is another.
std::vector<std::string> CartelleRegole();
// The rules in force for this run, read once.
const RegoleInVigore& RegoleDelProgramma();

// The fields a rule may compare, one line each: name, type, the member that holds it (for the README and the
// command line).
std::string TestoCampiRegole();

// What one rule says of one snapshot: the outcome that held (its index), or none.
struct RisultatoRegola {
  const Regola* regola = nullptr;
  std::optional<std::size_t> esito;
  // The finding, texts filled in, when an outcome held.
  Esito finding;
};
std::vector<RisultatoRegola> ValutaRegole(const std::vector<Regola>& regole, const Fatti& fatti);

// The findings of the rules that gave one, each marked with its rule's file; and one rules.unreadable warning
// for each file that could not be used.
std::vector<Esito> EsitiRegole(const RegoleInVigore& regole, const Fatti& fatti);

}  // namespace analysis
