#include "analysis/confronto.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "analysis/elenchi.h"
#include "analysis/prospetto_archivio.h"
#include "analysis/prospetto_preferenze.h"
#include "analysis/testo.h"
#include "formats/archivio.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "formats/script.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {
namespace {

using Differenze = std::vector<Differenza>;
constexpr std::size_t kNessuno = static_cast<std::size_t>(-1);

// The readers, one function each, so that each can be pointed elsewhere without touching the parts.
collection::ElencoFile LeggiElenco(const std::string& percorso, support::Messaggi& messaggi) {
  collection::ElencoFile e;
  support::BarraMuta barra;
  CaricaElencoFile(percorso, e, barra, messaggi);
  const std::size_t n = VociUsabili(e);
  e.NomiFile.resize(n);
  e.DimensioniFile.resize(n);
  return e;
}

std::vector<std::string> LeggiScript(const std::string& percorso, support::Messaggi& messaggi) {
  std::int32_t numero = 0;
  std::vector<std::string> livelli = formats::LeggiLivelliScript(percorso, numero, messaggi);
  // The report prints `numero` lines, empty ones where the list runs short.
  livelli.resize(static_cast<std::size_t>(std::max(numero, 0)));
  return livelli;
}

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

Differenza Nuova(TipoDifferenza tipo, std::string oggetto, std::string vecchio, std::string nuovo,
                 std::string riga) {
  return {tipo, std::move(oggetto), std::move(vecchio), std::move(nuovo), std::move(riga)};
}

// A field as its report shows it.
void Campo(Differenze& d, const std::string& oggetto, const std::string& a, const std::string& b) {
  if (a != b)
    d.push_back(
        Nuova(TipoDifferenza::Cambiato, oggetto, a, b, "* " + oggetto + ": \"" + a + "\" -> \"" + b + "\""));
}

// A member that only one snapshot holds is the whole difference of its part. True when both hold it.
bool Presenti(Differenze& d, const std::string& nome, bool vecchio, bool nuovo) {
  if (vecchio && !nuovo)
    d.push_back(
        Nuova(TipoDifferenza::Tolto, nome, nome, "", "- " + nome + " (salvato solo nel vecchio snapshot)"));
  if (nuovo && !vecchio)
    d.push_back(
        Nuova(TipoDifferenza::Aggiunto, nome, "", nome, "+ " + nome + " (salvato solo nel nuovo snapshot)"));
  return vecchio && nuovo;
}

bool Membro(const SnapshotAperto& s, const std::string& nome) {
  return support::FileExists(s.cartella + "\\" + nome);
}

// Pairs the entries of two lists by key, the k-th occurrence of a key on one side with the k-th on the
// other, in one pass over each: `coppia[i]` is the new index given to old entry i. Entries already paired
// (a `coppia` other than kNessuno, a `preso` new entry) are left out, so a second key can pair the rest.
void Accoppia(const std::vector<std::string>& vecchie, const std::vector<std::string>& nuove,
              std::vector<std::size_t>& coppia, std::vector<char>& preso) {
  struct Catena {
    std::size_t primo, ultimo;
  };
  std::unordered_map<std::string_view, Catena> catene;
  catene.reserve(nuove.size());
  std::vector<std::size_t> seguente(nuove.size(), kNessuno);
  for (std::size_t j = 0; j < nuove.size(); ++j) {
    if (preso[j]) continue;
    const auto [it, primo] = catene.try_emplace(nuove[j], Catena{j, j});
    if (!primo) seguente[std::exchange(it->second.ultimo, j)] = j;
  }
  for (std::size_t i = 0; i < vecchie.size(); ++i) {
    if (coppia[i] != kNessuno) continue;
    const auto it = catene.find(vecchie[i]);
    if (it == catene.end() || it->second.primo == kNessuno) continue;
    const std::size_t j = it->second.primo;
    it->second.primo = seguente[j];
    coppia[i] = j;
    preso[j] = 1;
  }
}

std::vector<std::string> Maiuscoli(const std::vector<std::string>& nomi) {
  std::vector<std::string> m;
  m.reserve(nomi.size());
  for (const auto& n : nomi) m.push_back(host::Maiuscolo(n));
  return m;
}

// The "label: value" lines of a report, in order; lines without a label (the empty ones) are left out.
std::vector<std::pair<std::string, std::string>> Righe(const std::string& testo) {
  std::vector<std::pair<std::string, std::string>> righe;
  std::size_t da = 0;
  for (std::size_t a; (a = testo.find(kFineRiga, da)) != std::string::npos; da = a + kFineRiga.size()) {
    const std::string_view riga(testo.data() + da, a - da);
    const std::size_t due = riga.find(": ");
    if (due != std::string_view::npos)
      righe.emplace_back(std::string(riga.substr(0, due)), std::string(riga.substr(due + 2)));
  }
  return righe;
}

// Two texts of one report, line by line: their labels stand in the same order on both sides.
void CampiProspetto(Differenze& d, const std::string& prefisso, const std::string& a, const std::string& b) {
  const auto ra = Righe(a), rb = Righe(b);
  for (std::size_t i = 0; i < std::min(ra.size(), rb.size()); ++i)
    Campo(d, prefisso + ra[i].first, ra[i].second, rb[i].second);
}

template <std::size_t N>
std::string Pulita(const formats::StringaFissa<N>& s) {
  return support::PulisciStringa(s.Testo());
}

Differenze ParteHeader(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  Differenze d;
  if (!Presenti(d, "infofile.bin", Membro(v, "infofile.bin"), Membro(n, "infofile.bin"))) return d;
  const formats::InfoHeader a = LeggiHeader(v.cartella + "\\infofile.bin");
  const formats::InfoHeader b = LeggiHeader(n.cartella + "\\infofile.bin");
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
  if (!Presenti(d, "ordelio.prf", Membro(v, "ordelio.prf"), Membro(n, "ordelio.prf"))) return d;
  const formats::PrefRecord a = LeggiPreferenze(v.cartella + "\\ordelio.prf");
  const formats::PrefRecord b = LeggiPreferenze(n.cartella + "\\ordelio.prf");
  CampiProspetto(d, "", TestoPreferenze(a), TestoPreferenze(b));
  // The fields no report shows are Ordelio's as much as the others.
  Campo(d, "NonMostrato1", std::to_string(a.NonMostrato1), std::to_string(b.NonMostrato1));
  Campo(d, "NonMostrato2", std::to_string(a.NonMostrato2), std::to_string(b.NonMostrato2));
  for (std::size_t i = 0; i < a.TabellaNonMostrata.size(); ++i)
    Campo(d, "TabellaNonMostrata(" + std::to_string(i) + ")", std::to_string(a.TabellaNonMostrata[i]),
          std::to_string(b.TabellaNonMostrata[i]));
  return d;
}

std::string NomeLivello(const formats::ArchivioLivello& l) {
  return "Livello " + std::to_string(l.Codice) + " \"" + Pulita(l.Nome) + "\"";
}

// A level's block of the archive report, without the header's block before it.
std::string TestoLivello(const formats::ArchivioLivello& l) {
  const std::size_t testa = TestoArchivio("", {}, {}).size();
  return TestoArchivio("", {}, {l}).substr(testa);
}

Differenze ParteArchivio(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  Differenze d;
  const std::string pa = TrovaArchivio(v.contenuto, v.cartella), pb = TrovaArchivio(n.contenuto, n.cartella);
  const bool sa = !pa.empty() && support::FileExists(pa), sb = !pb.empty() && support::FileExists(pb);
  if (!Presenti(d, support::EstraiNomeFile(sa ? pa : pb), sa, sb)) return d;
  formats::ArchivioHeader ha, hb;
  std::vector<formats::ArchivioLivello> la, lb;
  LeggiArchivio(pa, ha, la);
  LeggiArchivio(pb, hb, lb);
  CampiProspetto(d, "", TestoArchivio(support::EstraiNomeFile(pa), ha, {}),
                 TestoArchivio(support::EstraiNomeFile(pb), hb, {}));

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
      CampiProspetto(d, nome + ", ", TestoLivello(la[i]), TestoLivello(lb[coppia[i]]));
  }
  for (std::size_t j = 0; j < lb.size(); ++j)
    if (!preso[j]) {
      const std::string nome = NomeLivello(lb[j]);
      d.push_back(Nuova(TipoDifferenza::Aggiunto, nome, "", nome, "+ " + nome));
    }
  return d;
}

Differenze ParteElenco(const ProspettoDirectory& quale, const SnapshotAperto& v, const SnapshotAperto& n,
                       support::Messaggi& messaggi) {
  Differenze d;
  if (!Presenti(d, quale.File, Membro(v, quale.File), Membro(n, quale.File))) return d;
  const collection::ElencoFile a = LeggiElenco(v.cartella + "\\" + quale.File, messaggi);
  const collection::ElencoFile b = LeggiElenco(n.cartella + "\\" + quale.File, messaggi);
  // Names are relative to the base folder, so a list of a moved folder still meets its files.
  if (!host::UgualiSenzaCaso(a.CartellaBase, b.CartellaBase))
    Campo(d, "Cartella base", a.CartellaBase, b.CartellaBase);

  std::vector<std::size_t> coppia(a.NomiFile.size(), kNessuno);
  std::vector<char> preso(b.NomiFile.size(), 0);
  Accoppia(Maiuscoli(a.NomiFile), Maiuscoli(b.NomiFile), coppia, preso);
  const auto byte = [](std::int32_t z) { return std::to_string(z) + " bytes"; };
  Differenze aggiunti, cambiati;
  for (std::size_t i = 0; i < a.NomiFile.size(); ++i) {
    const std::string& nome = a.NomiFile[i];
    const std::int32_t za = a.DimensioniFile[i];
    if (coppia[i] == kNessuno) {
      d.push_back(
          Nuova(TipoDifferenza::Tolto, nome, std::to_string(za), "", "- " + nome + " (" + byte(za) + ")"));
    } else if (const std::int32_t zb = b.DimensioniFile[coppia[i]]; zb != za) {
      cambiati.push_back(Nuova(TipoDifferenza::Cambiato, nome, std::to_string(za), std::to_string(zb),
                               "* " + nome + ": " + byte(za) + " -> " + byte(zb)));
    }
  }
  for (std::size_t j = 0; j < b.NomiFile.size(); ++j)
    if (!preso[j]) {
      const std::int32_t zb = b.DimensioniFile[j];
      aggiunti.push_back(Nuova(TipoDifferenza::Aggiunto, b.NomiFile[j], "", std::to_string(zb),
                               "+ " + b.NomiFile[j] + " (" + byte(zb) + ")"));
    }
  d.insert(d.end(), aggiunti.begin(), aggiunti.end());
  d.insert(d.end(), cambiati.begin(), cambiati.end());
  return d;
}

std::vector<std::string> RigheTesto(const std::string& testo) {
  std::vector<std::string> righe;
  std::size_t da = 0;
  while (da < testo.size()) {
    std::size_t a = testo.find('\n', da);
    if (a == std::string::npos) a = testo.size();
    std::string riga = testo.substr(da, a - da);
    if (!riga.empty() && riga.back() == '\r') riga.pop_back();
    righe.push_back(std::move(riga));
    da = a + 1;
  }
  return righe;
}

Differenze ParteOrdeio(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  Differenze d;
  if (!Presenti(d, "ordeio.txt", Membro(v, "ordeio.txt"), Membro(n, "ordeio.txt"))) return d;
  const std::string ta = support::LeggiFile(v.cartella + "\\ordeio.txt");
  const std::string tb = support::LeggiFile(n.cartella + "\\ordeio.txt");
  if (ta == tb) return d;
  const std::vector<std::string> ra = RigheTesto(ta), rb = RigheTesto(tb);
  std::vector<std::size_t> coppia(ra.size(), kNessuno);
  std::vector<char> preso(rb.size(), 0);
  Accoppia(ra, rb, coppia, preso);
  for (std::size_t i = 0; i < ra.size(); ++i)
    if (coppia[i] == kNessuno)
      d.push_back(Nuova(TipoDifferenza::Tolto, ra[i], ra[i], "", "- \"" + ra[i] + "\""));
  for (std::size_t j = 0; j < rb.size(); ++j)
    if (!preso[j]) d.push_back(Nuova(TipoDifferenza::Aggiunto, rb[j], "", rb[j], "+ \"" + rb[j] + "\""));
  if (d.empty())
    d.push_back(Nuova(TipoDifferenza::Cambiato, "ordeio.txt", "", "",
                      "* ordeio.txt: stesse righe, in altro ordine o con altri fine riga"));
  return d;
}

// Which entries of `sequenza` (distinct values) lie off one longest increasing run of it: those are the
// ones that moved, the run being what kept its order. O(n log n).
std::vector<char> FuoriOrdine(const std::vector<std::size_t>& sequenza) {
  std::vector<std::size_t> code;  // code[k]: index of the smallest tail of a run of length k + 1
  std::vector<std::size_t> prima(sequenza.size(), kNessuno);
  for (std::size_t i = 0; i < sequenza.size(); ++i) {
    const auto pos = std::lower_bound(code.begin(), code.end(), sequenza[i],
                                      [&](std::size_t k, std::size_t v) { return sequenza[k] < v; });
    if (pos != code.begin()) prima[i] = *(pos - 1);
    if (pos == code.end())
      code.push_back(i);
    else
      *pos = i;
  }
  std::vector<char> fuori(sequenza.size(), 1);
  for (std::size_t k = code.empty() ? kNessuno : code.back(); k != kNessuno; k = prima[k]) fuori[k] = 0;
  return fuori;
}

Differenze ParteScript(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi& messaggi) {
  Differenze d;
  if (!Presenti(d, "script.dat", Membro(v, "script.dat"), Membro(n, "script.dat"))) return d;
  const std::vector<std::string> a = LeggiScript(v.cartella + "\\script.dat", messaggi);
  const std::vector<std::string> b = LeggiScript(n.cartella + "\\script.dat", messaggi);
  std::vector<std::size_t> coppia(a.size(), kNessuno);
  std::vector<char> preso(b.size(), 0);
  Accoppia(Maiuscoli(a), Maiuscoli(b), coppia, preso);
  std::vector<std::size_t> comuni, posizioni;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (coppia[i] == kNessuno)
      d.push_back(Nuova(TipoDifferenza::Tolto, a[i], a[i], "", "- " + a[i]));
    else
      comuni.push_back(i), posizioni.push_back(coppia[i]);
  }
  for (std::size_t j = 0; j < b.size(); ++j)
    if (!preso[j]) d.push_back(Nuova(TipoDifferenza::Aggiunto, b[j], "", b[j], "+ " + b[j]));
  const std::vector<char> fuori = FuoriOrdine(posizioni);
  for (std::size_t k = 0; k < comuni.size(); ++k)
    if (fuori[k]) {
      const std::string da = std::to_string(comuni[k] + 1), a2 = std::to_string(posizioni[k] + 1);
      d.push_back(Nuova(TipoDifferenza::Spostato, a[comuni[k]], da, a2,
                        "* " + a[comuni[k]] + ": posizione " + da + " -> " + a2));
    }
  return d;
}

struct Parte {
  const char* chiave;
  const char* titolo;
  std::function<Differenze(const SnapshotAperto&, const SnapshotAperto&, support::Messaggi&)> confronta;
};

template <const ProspettoDirectory& quale>
Differenze Elenco(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi& m) {
  return ParteElenco(quale, v, n, m);
}

// The parts in the order of the report menu; one more part is one more row.
const Parte kParti[] = {
    {"header", "HEADER", ParteHeader},
    {"pref", "PREFERENZE", PartePreferenze},
    {"archive", "ARCHIVIO LIVELLI", ParteArchivio},
    {"ordl", "DIRECTORY ORDELIO", Elenco<kDirectoryOrdl>},
    {"trle", "DIRECTORY LEVEL EDITOR", Elenco<kDirectoryTrle>},
    {"dirarc", "DIRECTORY ARCHIVIO LIVELLI", Elenco<kDirectoryArchivio>},
    {"ordeio", "ORDEIO.TXT", ParteOrdeio},
    {"script", "SCRIPT.DAT", ParteScript},
};

}  // namespace

bool ApriSnapshot(const std::string& snapshot, const std::string& cartella, SnapshotAperto& aperto) {
  if (support::DirExists(cartella))
    support::SvuotaCartella(cartella, "*");
  else
    support::CreaCartella(cartella);
  aperto = {cartella, {}};
  return collection::EstraiSnapshot(snapshot, cartella, aperto.contenuto);
}

Confronto ConfrontaSnapshot(const SnapshotAperto& vecchio, const SnapshotAperto& nuovo,
                            support::Messaggi& messaggi) {
  Confronto c;
  for (const auto& p : kParti) c.parti.push_back({p.chiave, p.titolo, p.confronta(vecchio, nuovo, messaggi)});
  return c;
}

std::size_t NumeroDifferenze(const Confronto& c) {
  std::size_t n = 0;
  for (const auto& p : c.parti) n += p.differenze.size();
  return n;
}

}  // namespace analysis
