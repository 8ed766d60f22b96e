#include "analysis/riepilogo.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "analysis/ambiente_dati.h"
#include "analysis/fatti.h"
#include "analysis/regole.h"
#include "analysis/riepilogo_aree.h"
#include "host/nomi.h"
#include "support/files.h"

namespace analysis {
namespace {

// A check: the area of the findings it gives (its file, riepilogo_<area>.cpp), the names it looks for in the
// editor list, and what it does.
struct Verifica {
  const char* area;
  NomiCercati nomi;
  void (*esegui)(const Contesto&);
};
// In the order their findings show within a severity.
constexpr auto kVerifiche = std::to_array<Verifica>({
    {"membri", nullptr, VerificaMembri},
    {"membri", nullptr, VerificaFlag},
    {"editor", NomiScript, VerificaLivelliScript},
    {"editor", nullptr, VerificaLivelliVuoti},
    {"editor", NomiTomb4, VerificaTomb4},
    {"ordelio", nullptr, VerificaCartellaEditor},
    {"ordelio", nullptr, VerificaArchivio},
    {"installazione", nullptr, VerificaInstallazione},
    {"ordelio", nullptr, VerificaSpazio},
    {"ordelio", nullptr, VerificaVersioneOrdelio},
    {"backup", nullptr, VerificaBackup},
    {"ambiente", nullptr, VerificaAmbiente},
});

// Of the names the checks look for, those the editor list holds, found in one pass over the list: a set of
// the whole list would cost more than every check together. Only a list read whole is looked in.
std::unordered_set<std::string> NomiTrle(const Fatti& f) {
  std::unordered_set<std::string> cercati, trovati;
  if (f.trle.stato != StatoMembro::letto) return trovati;
  std::vector<std::string> nomi;
  for (const Verifica& v : kVerifiche)
    if (v.nomi) v.nomi(f, nomi);
  std::unordered_set<std::size_t> lunghezze;
  for (const std::string& n : nomi) lunghezze.insert(cercati.insert(ChiaveNome(n)).first->size());
  const formats::ElencoFile& e = f.trle.letto->elenco;
  const std::size_t n = VociUsabili(e);
  for (std::size_t i = 0; i < n; ++i) {
    const std::string& nome = e.NomiFile[i];
    if (!lunghezze.contains(nome.size())) continue;
    if (std::string m = host::Maiuscolo(nome); cercati.contains(m)) trovati.insert(std::move(m));
  }
  return trovati;
}

}  // namespace

std::string ChiaveNome(const std::string& nome) {
  return host::Maiuscolo(nome.starts_with('\\') ? nome : "\\" + nome);
}

void Contesto::Aggiungi(IdEsito id, Gravita g, std::string titolo, std::vector<Evidenza> evidenze,
                        std::string azione, std::string risposta) const {
  esiti.push_back({std::string(VoceDi(id).id), g, std::move(titolo), std::move(evidenze), std::move(azione),
                   std::move(risposta)});
}

std::vector<Esito> CalcolaRiepilogo(const std::string& cartellaDati,
                                    const collection::ContenutoSnapshot& contenuto,
                                    const std::string& cartellaProgramma, char separatoreDecimale,
                                    const LettoreElenchi& lettore, const RegoleInVigore* regole) {
  const Fatti fatti = LeggiFatti(cartellaDati, contenuto, lettore);
  const std::unordered_set<std::string> nomiTrle = NomiTrle(fatti);
  std::vector<Esito> esiti;
  const Contesto c{fatti, nomiTrle, cartellaProgramma, separatoreDecimale, esiti};
  for (const Verifica& v : kVerifiche) v.esegui(c);
  for (Esito& e : EsitiRegole(regole ? *regole : RegoleDelProgramma(), fatti)) esiti.push_back(std::move(e));
  std::stable_sort(esiti.begin(), esiti.end(),
                   [](const Esito& a, const Esito& b) { return a.Livello < b.Livello; });
  return esiti;
}

RiepilogoSnapshot ApriEVerifica(const std::string& snapshot, const std::string& cartella,
                                const std::string& cartellaProgramma, char separatoreDecimale) {
  RiepilogoSnapshot r;
  if (!support::FileExists(snapshot))
    r.Errore = kSnapshotMancante;
  else if (!collection::EstraiSnapshot(snapshot, cartella, r.Contenuto))
    r.Errore = kSnapshotIlleggibile;
  if (r.Errore.empty()) {
    r.Esiti = CalcolaRiepilogo(cartella, r.Contenuto, cartellaProgramma, separatoreDecimale);
    if (const AmbienteLetto a = LeggiAmbienteDati(cartella); a.stato == StatoAmbiente::letto)
      r.Data = DataControllo(a.ambiente);
  } else
    r.Esiti = {EsitoIlleggibile(r.Errore)};
  return r;
}

// A filter on the failures must not pass a snapshot it could not read as clean.
Esito EsitoIlleggibile(const std::string& motivo) {
  return {std::string(VoceDi(IdEsito::snapshotUnreadable).id),
          Gravita::fail,
          "The snapshot cannot be read",
          {{"reason", motivo}},
          "Ask the user to send the snapshot again, attached as the file the check wrote.",
          "Please run the check again and send the snapshot file it writes, attached as it is."};
}

}  // namespace analysis
