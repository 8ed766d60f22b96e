// The comparison of two snapshots of one support case: what changed on the user's machine between two check
// runs, part by part (header, preferences, level archive, the three folder lists, ordeio.txt, script.dat, the
// machine around the installations where both snapshots record it, the findings). Each part compares what its
// report shows, so a difference here is one the reports would show too.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analysis/ambiente_dati.h"
#include "analysis/elenchi.h"
#include "analysis/forma_analisi.h"
#include "collection/snapshot.h"
#include "support/interfacce.h"

namespace analysis {

enum class TipoDifferenza { Aggiunto, Tolto, Cambiato, Spostato };

struct Differenza {
  TipoDifferenza tipo = TipoDifferenza::Cambiato;
  // What changed: a field, a file name, a level, a line.
  std::string oggetto;
  // The value in the old and in the new snapshot: "" on the side where the thing is missing.
  std::string vecchio;
  std::string nuovo;
  // The line of the text, without indent or line end: each part knows best how its values read.
  std::string riga;
};

struct ParteConfronto {
  // The part's key in the JSON and its title in the text.
  std::string chiave;
  std::string titolo;
  std::vector<Differenza> differenze;
};

struct Confronto {
  // The two snapshots' files, as they were named to the program.
  std::string vecchio, nuovo;
  std::vector<ParteConfronto> parti;
  // When each check run was made (DataControllo); "" where the snapshot does not say.
  std::string dataVecchio{}, dataNuovo{};
  // Both dates are known and the "old" snapshot was made after the "new" one.
  bool vecchioPiuRecente = false;
  // Why the environments were not compared although one side records one; "" when both were compared, or
  // when neither records one (the comparison then reads as it did before snapshots held it).
  std::string ambienteNonConfrontato{};
};

// One snapshot unpacked into a folder of its own, and its file. Its lists are read once, by whichever part
// asks first.
struct SnapshotAperto {
  std::string cartella;
  collection::ContenutoSnapshot contenuto;
  std::string nome;
  mutable std::map<std::string, std::shared_ptr<const ElencoLetto>> elenchi{};
  mutable std::shared_ptr<const AmbienteLetto> ambiente{};
};
// The list `file` of the snapshot, read the first time it is asked for.
std::shared_ptr<const ElencoLetto> ElencoDi(const SnapshotAperto& s, const std::string& file);
// Its environment member, read the first time it is asked for.
const AmbienteLetto& AmbienteDi(const SnapshotAperto& s);

// The folder below the program folder where the window unpacks the snapshot it compares its open one (in
// Dati) with; the headless tool uses folders of its own.
inline constexpr const char* kCartellaConfronto = "Confronto";

// Empties (or makes) `cartella` and unpacks `snapshot` there, never through a link from the folder that
// holds it on. False, with one critical message, when the folder cannot take it (it is a file, a link, or
// keeps old files) or the snapshot cannot be read.
bool ApriSnapshot(const std::string& snapshot, const std::string& cartella, SnapshotAperto& aperto,
                  support::Messaggi& messaggi);

// Every part, in the order of the report menu. A member that only one side holds is a difference of its
// part, except the environment, which only this program's snapshots hold: its part is there only when both
// sides record one. The readers' own messages (a damaged list, say) go to `messaggi`.
Confronto ConfrontaSnapshot(const SnapshotAperto& vecchio, const SnapshotAperto& nuovo,
                            support::Messaggi& messaggi);

std::size_t NumeroDifferenze(const Confronto& c);

// The report for the fixed-pitch font: the summary (the count of each part), then each part with its
// differences, or a line saying it has none. CR LF line ends. Wrapped at `colonne` as the report area wants;
// with 0 every line stays whole.
std::string TestoConfronto(const Confronto& c, std::size_t colonne = ColonneAreaProspetto());

// One JSON object: the total, then each part with its differences; texts in UTF-8.
std::string JsonConfronto(const Confronto& c);

}  // namespace analysis
