// The parts of the comparison that compare records: the header, the preferences and the level archive, each
// field as its report shows it, from the same rows.
#include <array>
#include <optional>

#include "analysis/confronto_parti.h"
#include "analysis/prospetto_archivio.h"
#include "analysis/prospetto_preferenze.h"
#include "analysis/righe_record.h"
#include "collection/membri.h"
#include "formats/archivio.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis::parti {
namespace {

// Both snapshots' copies of the record member `m`, as `leggi` reads them (a copy that cannot be read is an
// empty record); none when a snapshot lacks the member, which `d` then says.
template <class Record>
std::optional<std::array<Record, 2>> Letti(Differenze& d, collection::Membro m,
                                           bool (*leggi)(const std::string&, Record*),
                                           const SnapshotAperto& v, const SnapshotAperto& n) {
  if (!Presenti(d, m, v, n)) return std::nullopt;
  std::array<Record, 2> r;
  if (!leggi(collection::FileDati(v.cartella, m), &r[0])) r[0] = {};
  if (!leggi(collection::FileDati(n.cartella, m), &r[1])) r[1] = {};
  return r;
}

void LeggiArchivio(const std::string& percorso, formats::ArchivioHeader& h,
                   std::vector<formats::ArchivioLivello>& livelli) {
  if (!formats::LeggiArchivio(percorso, &h, &livelli)) {
    h = {};
    livelli.clear();
  }
}

// Two records of one kind, row by row: their rows carry the same labels in the same order.
void CampiRighe(Differenze& d, const std::string& prefisso, const RigheRecord& a, const RigheRecord& b) {
  for (std::size_t k = 0; k < a.size() && k < b.size(); ++k)
    Campo(d, prefisso + a[k].etichetta, a[k].valore, b[k].valore);
}

std::string NomeLivello(const formats::ArchivioLivello& l) {
  return "Level " + std::to_string(l.Codice) + " \"" + Valore(l.Nome) + "\"";
}

}  // namespace

Differenze ParteHeader(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  Differenze d;
  const auto letti = Letti(d, collection::Membro::intestazione, formats::LeggiInfoHeader, v, n);
  if (!letti) return d;
  const auto& [a, b] = *letti;
  for (const auto& f : formats::kTestiFlagErrori) {
    const bool prima = a.FlagErrori & f.bit, dopo = b.FlagErrori & f.bit;
    const std::string testo(f.testo);
    if (prima && !dopo)
      d.push_back(Nuova(TipoDifferenza::Tolto, "Flag errori", testo, "", "- Flag errori [" + testo + "]"));
    if (dopo && !prima)
      d.push_back(Nuova(TipoDifferenza::Aggiunto, "Flag errori", "", testo, "+ Flag errori [" + testo + "]"));
  }
  Campo(d, "Start Folder Trle", Valore(a.StartFolderTrle), Valore(b.StartFolderTrle));
  Campo(d, "Start Folder ORDL", Valore(a.StartFolderOrdl), Valore(b.StartFolderOrdl));
  Campo(d, "Versione Ordelio", Valore(a.VersioneOrdelio), Valore(b.VersioneOrdelio));
  Campo(d, "Windows Xp", Valore(a.WindowsXp), Valore(b.WindowsXp));
  Campo(d, "Spazio Disco C", support::FormattaDimensione(a.SpazioDiscoC),
        support::FormattaDimensione(b.SpazioDiscoC));
  Campo(d, "Maggiore spazio su disco", Valore(a.DiscoMaggiore), Valore(b.DiscoMaggiore));
  Campo(d, "Spazio Disco maggiore", support::FormattaDimensione(a.SpazioDiscoMaggiore),
        support::FormattaDimensione(b.SpazioDiscoMaggiore));
  return d;
}

Differenze PartePreferenze(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  Differenze d;
  const auto letti = Letti(d, collection::Membro::preferenze, formats::LeggiPreferenze, v, n);
  if (!letti) return d;
  const auto& [a, b] = *letti;
  CampiRighe(d, "", RighePreferenze(a), RighePreferenze(b));
  // The fields no report shows are Ordelio's as much as the others.
  Campo(d, "NonMostrato1", std::to_string(a.NonMostrato1), std::to_string(b.NonMostrato1));
  Campo(d, "NonMostrato2", std::to_string(a.NonMostrato2), std::to_string(b.NonMostrato2));
  for (std::size_t i = 0; i < a.TabellaNonMostrata.size(); ++i)
    Campo(d, "TabellaNonMostrata(" + std::to_string(i) + ")", std::to_string(a.TabellaNonMostrata[i]),
          std::to_string(b.TabellaNonMostrata[i]));
  return d;
}

Differenze ParteArchivio(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  Differenze d;
  const std::string pa = collection::TrovaArchivio(v.contenuto, v.cartella),
                    pb = collection::TrovaArchivio(n.contenuto, n.cartella);
  const bool sa = !pa.empty() && support::FileExists(pa), sb = !pb.empty() && support::FileExists(pb);
  if (!Presenti(d, support::EstraiNomeFile(sa ? pa : pb), sa, sb)) return d;
  formats::ArchivioHeader ha, hb;
  std::vector<formats::ArchivioLivello> la, lb;
  LeggiArchivio(pa, ha, la);
  LeggiArchivio(pb, hb, lb);
  CampiRighe(d, "", RigheArchivioHeader(support::EstraiNomeFile(pa), ha),
             RigheArchivioHeader(support::EstraiNomeFile(pb), hb));

  // Levels meet by their code first, then the rest by their name.
  std::vector<std::string> ca, cb, na, nb;
  for (const auto& l : la) ca.push_back(std::to_string(l.Codice)), na.push_back(Valore(l.Nome));
  for (const auto& l : lb) cb.push_back(std::to_string(l.Codice)), nb.push_back(Valore(l.Nome));
  std::vector<std::size_t> coppia(la.size(), kNessuno);
  std::vector<char> preso(lb.size(), 0);
  Accoppia(ca, cb, coppia, preso);
  Accoppia(na, nb, coppia, preso);
  for (std::size_t i = 0; i < la.size(); ++i) {
    const std::string nome = NomeLivello(la[i]);
    if (coppia[i] == kNessuno)
      d.push_back(Nuova(TipoDifferenza::Tolto, nome, nome, "", "- " + nome));
    else
      CampiRighe(d, nome + ", ", RigheLivello(la[i]), RigheLivello(lb[coppia[i]]));
  }
  for (std::size_t j = 0; j < lb.size(); ++j)
    if (!preso[j]) {
      const std::string nome = NomeLivello(lb[j]);
      d.push_back(Nuova(TipoDifferenza::Aggiunto, nome, "", nome, "+ " + nome));
    }
  return d;
}

}  // namespace analysis::parti
