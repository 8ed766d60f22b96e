// The cost of recording the environment, for bench/ambiente.sh. "run N": N check runs on the machine of
// WINEPREFIX (its installations found as at start-up), each followed by the collection alone over the same
// folders; a line per run with the seconds of both. "collect TRLE ORDL N": the collection alone over two
// folders, a line per run with its seconds.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "collection/ambiente_controllo.h"
#include "collection/controllo.h"
#include "collection/scoperta.h"
#include "formats/archivio.h"
#include "formats/preferenze.h"
#include "support/valori.h"

namespace {

struct MessaggiMuti : support::Messaggi {
  void Semplice(const std::string&) override {}
  void Critico(const std::string& testo) override { std::fprintf(stderr, "%s\n", testo.c_str()); }
};

struct DialogoMuto : support::DialogoCartella {
  void ImpostaTitolo(const std::string&) override {}
  void ImpostaValori(const std::string&) override {}
  void MostraModale() override {}
  bool ExitValue() const override { return false; }
  std::string PathDir() const override { return {}; }
};

template <typename F>
double Secondi(F&& f) {
  const auto inizio = std::chrono::steady_clock::now();
  f();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - inizio).count();
}

// The bytes of the member, as the check run makes them; their size keeps the work from being dropped.
std::size_t Raccogli(const collection::CartelleControllo& cartelle) {
  return collection::CorpoAmbiente(collection::RaccogliAmbiente(cartelle, collection::OraLocale), {}, {})
      .size();
}

}  // namespace

int main(int argc, char** argv) {
  const std::string modo = argc > 1 ? argv[1] : "";
  if (modo == "collect" && argc == 5) {
    const collection::CartelleControllo cartelle{argv[2], argv[3], {}};
    for (int i = std::atoi(argv[4]); i > 0; --i) {
      std::size_t n = 0;
      const double t = Secondi([&] { n = Raccogli(cartelle); });
      std::printf("%.6f %zu\n", t, n);
    }
    return 0;
  }
  if (modo != "run" || argc != 3) {
    std::fputs("usage: checkordl_bench_ambiente run N | collect TRLE ORDL N\n", stderr);
    return 2;
  }
  for (int i = std::atoi(argv[2]); i > 0; --i) {
    support::DidascaliaMuta dirOrdl, nomeTrle, info;
    support::BarraMuta barra;
    support::CicloMuto eventi;
    MessaggiMuti msg;
    DialogoMuto dialogo;
    collection::Principale p{dirOrdl, nomeTrle, info, barra, msg, dialogo, eventi, [] {}, {}};
    formats::PrefRecord pref;
    collection::CercaInstallazioni(p, pref);
    const double controllo = Secondi([&] { collection::Pul_Start_Click(p); });
    if (p.SnapshotScritto.empty()) return 1;
    // The level folder as the check run finds it: the archive the settings name.
    formats::ArchivioHeader ah;
    const bool archivio = formats::LeggiArchivioHeader(support::TogliSpazi(pref.PathArchivio.Testo()), &ah);
    const collection::CartelleControllo cartelle{
        nomeTrle.Testo(), dirOrdl.Testo(), archivio ? support::TogliSpazi(ah.SecondaryDir.Testo()) : ""};
    std::size_t n = 0;
    const double ambiente = Secondi([&] { n = Raccogli(cartelle); });
    std::printf("%.6f %.6f %zu\n", controllo, ambiente, n);
  }
  return 0;
}
