// Rules read from the input, then judged over two small fixed snapshots (one with every member and its
// environment, one old and bare): an outcome that held is one of the rule's, and its finding carries the
// rule's id and severity.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "analysis/regole.h"

namespace {

analysis::Fatti Pieni() {
  using analysis::StatoMembro;
  analysis::Fatti f;
  f.header.stato = f.preferenze.stato = f.archivio.stato = f.script.stato = StatoMembro::letto;
  f.infoHeader.VersioneOrdelio.Assegna("2.10.3");
  f.infoHeader.FlagErrori = 0x102;
  f.script.livelli = {"DATA\\L001.tr4", "L002.tr4"};
  auto lista = std::make_shared<analysis::ElencoLetto>();
  lista->elenco = {4, "C:\\Trle", {"\\tomb4.exe", "\\ddraw.dll", "\\data\\a.tr4", "b"}, {12345, 800, 10, 0}};
  f.trle.stato = f.ordl.stato = StatoMembro::letto;
  f.trle.letto = f.ordl.letto = lista;
  f.dirarc.stato = StatoMembro::danneggiato;
  f.ambiente.stato = analysis::StatoAmbiente::letto;
  formats::EseguibileAmbiente ea;
  ea.eseguibile.percorso = "C:\\Trle\\tomb4.exe";
  ea.eseguibile.importazioni = {{"d3dx9_43.dll", host::Origine::nonTrovata, "", -1}};
  ea.eseguibile.livelli = {{"HKCU", "~ RUNASADMIN WINXPSP3"}};
  ea.eseguibile.zona = 3;
  f.ambiente.ambiente.eseguibili = {ea};
  return f;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  static const analysis::Fatti pieni = Pieni(), vecchi;
  const analysis::FileRegole f =
      analysis::AnalizzaRegole(std::string_view(reinterpret_cast<const char*>(dati), n), "f.json");
  for (const analysis::Fatti* fatti : {&pieni, &vecchi}) {
    const auto risultati = analysis::ValutaRegole(f.regole, *fatti);
    if (risultati.size() != f.regole.size()) std::abort();
    for (std::size_t i = 0; i < risultati.size(); ++i) {
      const analysis::RisultatoRegola& r = risultati[i];
      if (r.regola != &f.regole[i]) std::abort();
      if (!r.esito) continue;
      if (*r.esito >= r.regola->esiti.size() || r.finding.Id != r.regola->id ||
          r.finding.Livello != r.regola->esiti[*r.esito].livello)
        std::abort();
    }
  }
  return 0;
}
