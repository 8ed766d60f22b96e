// The parts of the comparison that compare records: the header, the preferences and the level archive, each
// field as its report shows it.
#include <algorithm>

#include "analysis/confronto_parti.h"
#include "analysis/prospetto_archivio.h"
#include "analysis/prospetto_preferenze.h"
#include "analysis/testo.h"
#include "collection/membri.h"
#include "formats/archivio.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis::parti {
namespace {

// The readers, one function each, so that each can be pointed elsewhere without touching the parts.
formats::InfoHeader LeggiHeader(const std::string& percorso) {
  formats::InfoHeader h;
  if (!formats::LeggiInfoHeader(percorso, &h)) h = {};
  return h;
}

formats::PrefRecord LeggiPreferenze(const std::string& percorso) {
  formats::PrefRecord p;
  if (!formats::LeggiPreferenze(percorso, &p)) p = {};
  return p;
}

void LeggiArchivio(const std::string& percorso, formats::ArchivioHeader& h,
                   std::vector<formats::ArchivioLivello>& livelli) {
  if (!formats::LeggiArchivio(percorso, &h, &livelli)) {
    h = {};
    livelli.clear();
  }
}

// The labels of a report, in order: the text before ": " on each line of `modello`, a report of an empty
// record.
std::vector<std::string> Etichette(const std::string& modello) {
  std::vector<std::string> etichette;
  std::size_t da = 0;
  for (std::size_t a; (a = modello.find(kFineRiga, da)) != std::string::npos; da = a + kFineRiga.size()) {
    const std::size_t due = modello.find(": ", da);
    if (due < a) etichette.push_back(modello.substr(da, due - da));
  }
  return etichette;
}

// A field's value runs from its label to the next label at a line start, so a value that holds line ends
// (a level's notes, say) stays one value and the fields after it keep their labels.
std::vector<std::string> Valori(const std::string& testo, const std::vector<std::string>& etichette) {
  std::vector<std::string> valori;
  std::size_t da = 0;
  for (std::size_t k = 0; k < etichette.size(); ++k) {
    const std::size_t inizio = std::min(testo.find(etichette[k] + ": ", da), testo.size());
    da = std::min(inizio + etichette[k].size() + 2, testo.size());
    const std::size_t fine = k + 1 < etichette.size()
                                 ? testo.find(std::string(kFineRiga) + etichette[k + 1] + ": ", da)
                                 : testo.find(kFineRiga, da);
    valori.push_back(testo.substr(da, std::min(fine, testo.size()) - da));
  }
  return valori;
}

// Two texts of one report, field by field; `modello` is that report of an empty record.
void CampiProspetto(Differenze& d, const std::string& prefisso, const std::string& a, const std::string& b,
                    const std::string& modello) {
  const std::vector<std::string> etichette = Etichette(modello);
  const std::vector<std::string> va = Valori(a, etichette), vb = Valori(b, etichette);
  for (std::size_t k = 0; k < etichette.size(); ++k) Campo(d, prefisso + etichette[k], va[k], vb[k]);
}

template <std::size_t N>
std::string Pulita(const formats::StringaFissa<N>& s) {
  return support::PulisciStringa(s.Testo());
}

std::string NomeLivello(const formats::ArchivioLivello& l) {
  return "Level " + std::to_string(l.Codice) + " \"" + Pulita(l.Nome) + "\"";
}

// A level's block of the archive report, without the header's block before it.
std::string TestoLivello(const formats::ArchivioLivello& l) {
  const std::size_t testa = TestoArchivio("", {}, {}).size();
  return TestoArchivio("", {}, {l}).substr(testa);
}

}  // namespace

Differenze ParteHeader(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  Differenze d;
  using collection::Membro;
  if (!Presenti(d, Membro::intestazione, v, n)) return d;
  const formats::InfoHeader a = LeggiHeader(collection::FileDati(v.cartella, Membro::intestazione));
  const formats::InfoHeader b = LeggiHeader(collection::FileDati(n.cartella, Membro::intestazione));
  for (const auto& f : formats::kTestiFlagErrori) {
    const bool prima = a.FlagErrori & f.bit, dopo = b.FlagErrori & f.bit;
    const std::string testo(f.testo);
    if (prima && !dopo)
      d.push_back(Nuova(TipoDifferenza::Tolto, "Flag errori", testo, "", "- Flag errori [" + testo + "]"));
    if (dopo && !prima)
      d.push_back(Nuova(TipoDifferenza::Aggiunto, "Flag errori", "", testo, "+ Flag errori [" + testo + "]"));
  }
  Campo(d, "Start Folder Trle", Pulita(a.StartFolderTrle), Pulita(b.StartFolderTrle));
  Campo(d, "Start Folder ORDL", Pulita(a.StartFolderOrdl), Pulita(b.StartFolderOrdl));
  Campo(d, "Versione Ordelio", Pulita(a.VersioneOrdelio), Pulita(b.VersioneOrdelio));
  Campo(d, "Windows Xp", std::string(TestoBooleano(a.WindowsXp)), std::string(TestoBooleano(b.WindowsXp)));
  Campo(d, "Spazio Disco C", support::FormattaDimensione(a.SpazioDiscoC),
        support::FormattaDimensione(b.SpazioDiscoC));
  Campo(d, "Maggiore spazio su disco", Pulita(a.DiscoMaggiore), Pulita(b.DiscoMaggiore));
  Campo(d, "Spazio Disco maggiore", support::FormattaDimensione(a.SpazioDiscoMaggiore),
        support::FormattaDimensione(b.SpazioDiscoMaggiore));
  return d;
}

Differenze PartePreferenze(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  Differenze d;
  using collection::Membro;
  if (!Presenti(d, Membro::preferenze, v, n)) return d;
  const formats::PrefRecord a = LeggiPreferenze(collection::FileDati(v.cartella, Membro::preferenze));
  const formats::PrefRecord b = LeggiPreferenze(collection::FileDati(n.cartella, Membro::preferenze));
  CampiProspetto(d, "", TestoPreferenze(a), TestoPreferenze(b), TestoPreferenze({}));
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
  CampiProspetto(d, "", TestoArchivio(support::EstraiNomeFile(pa), ha, {}),
                 TestoArchivio(support::EstraiNomeFile(pb), hb, {}), TestoArchivio("", {}, {}));

  // Levels meet by their code first, then the rest by their name.
  std::vector<std::string> ca, cb, na, nb;
  for (const auto& l : la) ca.push_back(std::to_string(l.Codice)), na.push_back(Pulita(l.Nome));
  for (const auto& l : lb) cb.push_back(std::to_string(l.Codice)), nb.push_back(Pulita(l.Nome));
  std::vector<std::size_t> coppia(la.size(), kNessuno);
  std::vector<char> preso(lb.size(), 0);
  Accoppia(ca, cb, coppia, preso);
  Accoppia(na, nb, coppia, preso);
  for (std::size_t i = 0; i < la.size(); ++i) {
    const std::string nome = NomeLivello(la[i]);
    if (coppia[i] == kNessuno)
      d.push_back(Nuova(TipoDifferenza::Tolto, nome, nome, "", "- " + nome));
    else
      CampiProspetto(d, nome + ", ", TestoLivello(la[i]), TestoLivello(lb[coppia[i]]), TestoLivello({}));
  }
  for (std::size_t j = 0; j < lb.size(); ++j)
    if (!preso[j]) {
      const std::string nome = NomeLivello(lb[j]);
      d.push_back(Nuova(TipoDifferenza::Aggiunto, nome, "", nome, "+ " + nome));
    }
  return d;
}

}  // namespace analysis::parti
