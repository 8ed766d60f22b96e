// A copy of a snapshot without the user's account names (anonimo.h): the same format, the same members,
// every report, finding and comparison reading it as the original's with the names replaced. Where a member's
// structure fixes lengths (records, the level script) the text keeps its place; where it stores them (the
// snapshot's table, the lists), they follow the text; a text file is text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "analysis/anonimo.h"
#include "collection/snapshot.h"

namespace analysis {

struct OpzioniAnonimo {
  // The level authors' names, e-mail addresses and sites in the archive too.
  bool autori = false;
};

struct MembroAnonimo {
  // The member's name in the copy.
  std::string nome;
  std::int64_t sostituzioni = 0;
};

struct CopiaAnonima {
  collection::SnapshotInMemoria copia;
  // Replacements in the snapshot's own table of names, then in each member, in table order.
  std::int64_t tabella = 0;
  std::vector<MembroAnonimo> membri;
  std::vector<VoceChiave> chiave;
  // Why the copy could not be made whole; "" when it could.
  std::string errore{};
};

CopiaAnonima Anonimizza(const collection::SnapshotInMemoria& originale, const OpzioniAnonimo& opzioni);

struct RichiestaCopia {
  std::string snapshot, copia;
  OpzioniAnonimo opzioni{};
  // Where the stand-ins go with the names they replace, one "stand-in TAB name" line each; "" for nowhere.
  std::string fileChiave{};
  // The table the snapshot had when it was opened, when it was: a snapshot that differs now is refused.
  const collection::ContenutoSnapshot* aperto = nullptr;
};

// Reads the snapshot and writes its copy, then the key, each whole or not at all. "" on success, otherwise
// the message that says why nothing (or, when only the key failed, no key) was written.
std::string SalvaCopiaAnonima(const RichiestaCopia& r, CopiaAnonima& esito);

std::int64_t TotaleSostituzioni(const CopiaAnonima& c);

// What the copy still shows that may name the person: a file or folder name of a listing, or a word of
// ordeio.txt, that holds an account name the copy replaced (without regard to case). Such names are the
// user's own choice, not a profile path, so the copy keeps them; whoever posts it decides.
struct Residuo {
  std::string testo;
  // "a file name in TRLE.el", "a folder name in TRLE.el" or "a word of ordeio.txt".
  std::string dove;
};
// Each text once, where it was first met, in the table's order; at most `massimo`, `oltre` counting the rest.
struct Residui {
  std::vector<Residuo> voci;
  std::int64_t oltre = 0;
};
inline constexpr std::size_t kResiduiMostrati = 20;
Residui CercaResidui(const CopiaAnonima& c, std::size_t massimo = kResiduiMostrati);
// The lines that tell the supporter of them (CR LF), or that nothing was found; "" when no account name was
// replaced.
std::string TestoResidui(const CopiaAnonima& c, const Residui& r);

// What the window asks and says: the dialog's title, the name it proposes (beside the snapshot:
// INFO_ORDL.BIN gives INFO_ORDL-anonymous.BIN) and the message once the copy is written.
inline constexpr const char* kTitoloCopiaAnonima = "Save an anonymized copy of the snapshot";
inline constexpr const char* kDomandaAutori =
    "Also replace the level authors' names, e-mail addresses and sites?";
inline constexpr const char* kDomandaChiave =
    "Also save the key (which stand-in replaced which name), to keep for yourself?";
inline constexpr const char* kTitoloChiave = "Save the key of the anonymized copy";
// Beside the copy: C:\x\INFO_ORDL-anonymous.BIN gives C:\x\INFO_ORDL-anonymous-key.txt.
std::string NomeChiave(const std::string& copia);
std::string NomeCopiaAnonima(const std::string& snapshot);
std::string TestoCopiaAnonima(const CopiaAnonima& c, const std::string& copia);

}  // namespace analysis
