// The rules' share of the findings, for bench/regole.sh. "SNAPSHOT FOLDER RULES N": the snapshot unpacked
// into FOLDER once, the rules read; then N times the findings without rules and with them, a line each:
// seconds without, seconds with, findings given by the rules, findings without rules.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "analysis/regole.h"
#include "analysis/riepilogo.h"
#include "collection/snapshot.h"

namespace {

template <typename F>
double Secondi(F&& f) {
  const auto inizio = std::chrono::steady_clock::now();
  f();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - inizio).count();
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
  for (const analysis::ErroreRegole& e : regole.errori)
    std::fprintf(stderr, "%s\n", analysis::TestoErrore(e).c_str());
  if (!regole.errori.empty()) return 1;
  const analysis::RegoleInVigore nessuna;
  analysis::RegoleInVigore inVigore;
  inVigore.regole = regole.regole;
  for (int i = std::atoi(argv[4]); i > 0; --i) {
    std::size_t senza = 0, con = 0;
    const double ts = Secondi(
        [&] { senza = analysis::CalcolaRiepilogo(cartella, contenuto, cartella, '.', {}, &nessuna).size(); });
    const double tc = Secondi(
        [&] { con = analysis::CalcolaRiepilogo(cartella, contenuto, cartella, '.', {}, &inVigore).size(); });
    std::printf("%.6f %.6f %zu %zu\n", ts, tc, con - senza, senza);
  }
  return 0;
}
