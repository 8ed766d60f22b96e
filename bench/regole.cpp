// The rules' share of the findings, for bench/regole.sh. "SNAPSHOT FOLDER RULES N": the snapshot unpacked
// into FOLDER once, the rules read; then N times the built-in findings alone (no rules) and the rules alone
// over the same snapshot's facts, a line each: seconds of the findings, seconds of the rules, findings given
// by the rules.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "analysis/ambiente_dati.h"
#include "analysis/regole.h"
#include "analysis/riepilogo.h"
#include "collection/membri.h"
#include "collection/snapshot.h"
#include "formats/info_header.h"
#include "formats/script.h"
#include "support/files.h"

namespace {

template <typename F>
double Secondi(F&& f) {
  const auto inizio = std::chrono::steady_clock::now();
  f();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - inizio).count();
}

analysis::ListaFatti Lista(const std::string& cartella, collection::Membro m) {
  analysis::ListaFatti l;
  const std::string file = collection::FileDati(cartella, m);
  if (!support::FileExists(file)) return l;
  l.letto = std::make_shared<analysis::ElencoLetto>(analysis::LeggiElencoUnaVolta(file));
  l.stato = analysis::StatoMembro::letto;
  return l;
}

// The facts the rules judge, as the findings read them: the header, the three lists, the script and the
// environment.
analysis::Fatti Fatti(const std::string& cartella) {
  using collection::Membro;
  analysis::Fatti f;
  f.cartellaDati = cartella;
  if (formats::LeggiInfoHeader(collection::FileDati(cartella, Membro::intestazione), &f.infoHeader))
    f.header.stato = analysis::StatoMembro::letto;
  f.trle = Lista(cartella, Membro::elencoTrle);
  f.ordl = Lista(cartella, Membro::elencoOrdl);
  f.dirarc = Lista(cartella, Membro::elencoArchivio);
  std::int32_t numero = 0;
  if (formats::LeggiLivelliScript(collection::FileDati(cartella, Membro::script), numero, f.script.livelli))
    f.script.stato = analysis::StatoMembro::letto;
  f.ambiente = analysis::LeggiAmbienteDati(cartella);
  return f;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) {
    std::fputs("usage: checkordl_bench_regole SNAPSHOT FOLDER RULES N\n", stderr);
    return 2;
  }
  const std::string cartella = argv[2];
  collection::ContenutoSnapshot contenuto;
  if (!collection::EstraiSnapshot(argv[1], cartella, contenuto)) {
    std::fputs("the snapshot cannot be unpacked\n", stderr);
    return 1;
  }
  const analysis::FileRegole regole = analysis::LeggiRegole(argv[3]);
  for (const analysis::ErroreRegole& e : regole.errori) std::fprintf(stderr, "%s\n", analysis::TestoErrore(e).c_str());
  if (!regole.errori.empty()) return 1;
  const analysis::Fatti fatti = Fatti(cartella);
  const analysis::RegoleInVigore nessuna;
  for (int i = std::atoi(argv[4]); i > 0; --i) {
    std::size_t esiti = 0, dalleRegole = 0;
    const double tf = Secondi([&] {
      esiti = analysis::CalcolaRiepilogo(cartella, contenuto, cartella, '.', {}, &nessuna).size();
    });
    const double tr = Secondi([&] {
      for (const analysis::RisultatoRegola& r : analysis::ValutaRegole(regole.regole, fatti))
        dalleRegole += r.esito ? 1 : 0;
    });
    std::printf("%.6f %.6f %zu %zu\n", tf, tr, dalleRegole, esiti);
  }
  return 0;
}
