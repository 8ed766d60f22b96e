// The parts of the comparison that compare lists: the three folder lists, the lines of ordeio.txt and the
// levels of script.dat. Each is linear in the lists' lengths, or nearly (the order of the script's levels).
#include <algorithm>
#include <cstdint>

#include "analysis/confronto_parti.h"
#include "analysis/elenchi.h"
#include "analysis/testi.h"
#include "host/nomi.h"
#include "support/files.h"

namespace analysis::parti {
namespace {

// A list of the snapshot, read once for every part that looks at it; its reading's messages are shown here.
struct Lista {
  std::shared_ptr<const ElencoLetto> letto;
  std::size_t voci;
  const formats::ElencoFile& operator*() const { return letto->elenco; }
};

Lista LeggiElenco(const SnapshotAperto& s, const std::string& file, support::Messaggi& messaggi) {
  Lista l{ElencoDi(s, file), 0};
  for (const auto& [critico, testo] : l.letto->messaggi)
    critico ? messaggi.Critico(testo) : messaggi.Semplice(testo);
  l.voci = VociUsabili(l.letto->elenco);
  return l;
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

}  // namespace

Differenze ParteElenco(const std::string& file, const SnapshotAperto& v, const SnapshotAperto& n,
                       support::Messaggi& messaggi) {
  Differenze d;
  if (!Presenti(d, file, Ha(v, file), Ha(n, file))) return d;
  const Lista la = LeggiElenco(v, file, messaggi), lb = LeggiElenco(n, file, messaggi);
  const formats::ElencoFile &a = *la, &b = *lb;
  // Names are relative to the base folder, so a list of a moved folder still meets its files.
  if (!host::UgualiSenzaCaso(a.CartellaBase, b.CartellaBase))
    Campo(d, "Base folder", a.CartellaBase, b.CartellaBase);

  // Only the entries that both columns reach.
  std::vector<std::size_t> coppia(la.voci, kNessuno);
  std::vector<char> preso(lb.voci, 0);
  Accoppia(Maiuscoli(a.NomiFile, la.voci), Maiuscoli(b.NomiFile, lb.voci), coppia, preso);
  const auto byte = [](std::int32_t z) { return std::to_string(z) + " bytes"; };
  Differenze aggiunti, cambiati;
  for (std::size_t i = 0; i < la.voci; ++i) {
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
  for (std::size_t j = 0; j < lb.voci; ++j)
    if (!preso[j]) {
      const std::int32_t zb = b.DimensioniFile[j];
      aggiunti.push_back(Nuova(TipoDifferenza::Aggiunto, b.NomiFile[j], "", std::to_string(zb),
                               "+ " + b.NomiFile[j] + " (" + byte(zb) + ")"));
    }
  d.insert(d.end(), aggiunti.begin(), aggiunti.end());
  d.insert(d.end(), cambiati.begin(), cambiati.end());
  return d;
}

Differenze ParteOrdeio(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  Differenze d;
  if (!Presenti(d, collection::Membro::ordeio, v, n)) return d;
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
                      "* ordeio.txt: the same lines, in another order or with other line ends"));
  return d;
}

Differenze ParteScript(const SnapshotAperto& v, const SnapshotAperto& n, support::Messaggi&) {
  Differenze d;
  if (!Presenti(d, collection::Membro::script, v, n)) return d;
  const auto livelli = [](const SnapshotAperto& s) {
    return LeggiScript(collection::FileDati(s.cartella, collection::Membro::script)).righe;
  };
  const std::vector<std::string> a = livelli(v), b = livelli(n);
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
      const std::string prima = std::to_string(comuni[k] + 1), dopo = std::to_string(posizioni[k] + 1);
      d.push_back(Nuova(TipoDifferenza::Spostato, a[comuni[k]], prima, dopo,
                        "* " + a[comuni[k]] + ": position " + prima + " -> " + dopo));
    }
  return d;
}

}  // namespace analysis::parti
