// The files a snapshot carries, one row each: the name the check run packs it under, the name the reports ask
// the working folder for, what needs it, and which reader takes its bytes. The check run, the reports, the
// findings, the comparison and the anonymized copy all find a member here.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "collection/snapshot.h"

namespace collection {

enum class Membro {
  intestazione,
  preferenze,
  archivio,
  elencoOrdl,
  elencoTrle,
  elencoArchivio,
  ordeio,
  script,
  ambiente
};

// How a member's bytes are read.
enum class Lettore { infoHeader, preferenze, archivio, elenco, testo, script, ambiente };

// Where the check run finds a member: a working file it makes in the program folder (and deletes at its
// end), a file of one of the installations, or bytes it makes in memory and packs without a file.
enum class Luogo { lavoro, installazione, memoria };

struct VoceMembro {
  Membro membro;
  // As the check run writes or finds it: the program folder's working files, Ordelio's settings, the
  // archive as the settings name it (any name; the reports take the first ".qlv" of the table), the editor's
  // two files.
  const char* nomeControllo;
  // As the reports ask the working folder for it (the archive: by its own name).
  const char* nomeDati;
  // What needs it: the finding of a missing member says so.
  const char* serve;
  Lettore lettore;
  // Its place in the snapshot, as the check run packs it.
  int posizione;
  // One of the eight files of the original format, which every snapshot made by a check run may hold; the
  // members behind them are this program's additions, which older snapshots lack.
  bool documentato;
  Luogo luogo;
};

// In the order of the report menu; the check run packs them in the order of `posizione`.
inline constexpr auto kMembri = std::to_array<VoceMembro>({
    {Membro::intestazione, "Infofile.bin", "infofile.bin", "the header report, the flags and the disk space",
     Lettore::infoHeader, 0, true, Luogo::lavoro},
    {Membro::preferenze, "ordelio.prf", "ordelio.prf", "the preferences report and the editor folder check",
     Lettore::preferenze, 1, true, Luogo::installazione},
    {Membro::archivio, "archivio.qlv", "archivio.qlv", "the archive report and the archive folder check",
     Lettore::archivio, 2, true, Luogo::installazione},
    {Membro::elencoOrdl, "ORDL.el", "ordl.el", "the Ordelio listing and the backup analysis", Lettore::elenco,
     5, true, Luogo::lavoro},
    {Membro::elencoTrle, "TRLE.el", "trle.el", "the editor listing and the level checks", Lettore::elenco, 4,
     true, Luogo::lavoro},
    {Membro::elencoArchivio, "DirArc.el", "dirarc.el", "the archive listing and the archive folder check",
     Lettore::elenco, 3, true, Luogo::lavoro},
    {Membro::ordeio, "ordeio.txt", "ordeio.txt", "the ordeio.txt report", Lettore::testo, 6, true,
     Luogo::installazione},
    {Membro::script, "script.dat", "script.dat", "the script report and the level check", Lettore::script, 7,
     true, Luogo::installazione},
    {Membro::ambiente, "ambiente.json", "ambiente.json", "the environment report and the start-up checks",
     Lettore::ambiente, 8, false, Luogo::memoria},
});

constexpr const VoceMembro& VoceDi(Membro m) {
  return kMembri[static_cast<std::size_t>(m)];
}

constexpr bool MembriInOrdine() {
  for (std::size_t i = 0; i < kMembri.size(); ++i)
    if (static_cast<std::size_t>(kMembri[i].membro) != i) return false;
  return true;
}
static_assert(MembriInOrdine());

// How many of the members are the original format's.
constexpr std::size_t NumeroDocumentati() {
  std::size_t n = 0;
  for (const VoceMembro& v : kMembri) n += v.documentato ? 1 : 0;
  return n;
}
inline constexpr std::size_t kMembriDocumentati = NumeroDocumentati();
static_assert(kMembriDocumentati == 8);

// The members in the order the check run packs them (by `posizione`).
constexpr std::array<Membro, kMembri.size()> OrdineDiPacco() {
  std::array<Membro, kMembri.size()> ordine{};
  for (const VoceMembro& v : kMembri) ordine[static_cast<std::size_t>(v.posizione)] = v.membro;
  return ordine;
}
inline constexpr std::array<Membro, kMembri.size()> kOrdineDiPacco = OrdineDiPacco();

// Each place taken once, and the documented members ahead of the program's own: a reader of the original
// format finds its eight where it always did.
constexpr bool PosizioniValide() {
  std::array<bool, kMembri.size()> presa{};
  for (const VoceMembro& v : kMembri) {
    if (v.posizione < 0 || static_cast<std::size_t>(v.posizione) >= kMembri.size()) return false;
    if (presa[static_cast<std::size_t>(v.posizione)]) return false;
    presa[static_cast<std::size_t>(v.posizione)] = true;
    if (v.documentato != (static_cast<std::size_t>(v.posizione) < kMembriDocumentati)) return false;
  }
  return true;
}
static_assert(PosizioniValide());

// `cartella` + "\" + the member's name in the working folder.
inline std::string FileDati(const std::string& cartella, Membro m) {
  return cartella + "\\" + VoceDi(m).nomeDati;
}

// Which member a name of the snapshot's table is, by its last component as the reports find it (without
// regard to case; any ".qlv" is an archive); nothing for a file no report reads.
std::optional<Membro> MembroDiNome(const std::string& nomeTabella);

// The archive of an unpacked snapshot: the first ".qlv" of its table, in `cartellaDati`; "" when it has none.
std::string TrovaArchivio(const ContenutoSnapshot& contenuto, const std::string& cartellaDati);

}  // namespace collection
