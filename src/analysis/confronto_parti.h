// What the parts of the comparison share, and the parts themselves: for the comparison's own files only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/confronto.h"
#include "collection/membri.h"
#include "support/interfacce.h"

namespace analysis::parti {

using Differenze = std::vector<Differenza>;
inline constexpr std::size_t kNessuno = static_cast<std::size_t>(-1);

Differenza Nuova(TipoDifferenza tipo, std::string oggetto, std::string vecchio, std::string nuovo,
                 std::string riga);

// A field as its report shows it: a difference when the two texts differ.
void Campo(Differenze& d, const std::string& oggetto, const std::string& a, const std::string& b);

// A member that only one snapshot holds is the whole difference of its part. True when both hold it.
bool Presenti(Differenze& d, const std::string& nome, bool vecchio, bool nuovo);

// Whether the snapshot holds the file `nome` (as unpacked).
bool Ha(const SnapshotAperto& s, const std::string& nome);
// Presenti for a member of the table, looked for in both snapshots.
bool Presenti(Differenze& d, collection::Membro m, const SnapshotAperto& v, const SnapshotAperto& n);

// Pairs the entries of two lists by key, the k-th occurrence of a key on one side with the k-th on the
// other, in one pass over each: `coppia[i]` is the new index given to old entry i. Entries already paired
// (a `coppia` other than kNessuno, a `preso` new entry) are left out, so a second key can pair the rest.
void Accoppia(const std::vector<std::string>& vecchie, const std::vector<std::string>& nuove,
              std::vector<std::size_t>& coppia, std::vector<char>& preso);

// Names as the platform compares them.
std::vector<std::string> Maiuscoli(const std::vector<std::string>& nomi, std::size_t quanti = SIZE_MAX);

// The parts: the records,
Differenze ParteHeader(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi& messaggi);
Differenze PartePreferenze(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi& messaggi);
Differenze ParteArchivio(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi& messaggi);
// and the lists: files, lines of ordeio.txt, levels of script.dat.
Differenze ParteElenco(const std::string& file, const SnapshotAperto& v, const SnapshotAperto& n,
                       support::Messaggi& messaggi);
Differenze ParteOrdeio(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi& messaggi);
Differenze ParteScript(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi& messaggi);
// and the machine around the installations, where both snapshots record it (AmbientiConfrontabili),
Differenze ParteAmbiente(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi& messaggi);
bool AmbientiConfrontabili(const SnapshotAperto& v, const SnapshotAperto& n);
// with the two check runs' dates, and why the environments were not compared when one side has one;
void DateEAmbiente(const SnapshotAperto& v, const SnapshotAperto& n, Confronto& c);
// and the findings that appeared, went away or changed.
Differenze ParteRiepilogo(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi& messaggi);

}  // namespace analysis::parti
