// File lists as a snapshot may carry them: both readers, the directory report and the backup analysis.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

#include "analysis/analisi_backup.h"
#include "analysis/elenchi.h"
#include "formats/elenco.h"
#include "host/macchina.h"
#include "prefisso_fuzz.h"

namespace {

class MessaggiMuti : public support::Messaggi {
 public:
  void Semplice(const std::string&) override {}
  void Critico(const std::string&) override {}
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n) {
  {
    std::ofstream f(PrefissoFuzz() + "/drive_c/l.el", std::ios::binary | std::ios::trunc);
    f.write(reinterpret_cast<const char*>(dati), static_cast<std::streamsize>(n));
  }
  support::BarraMuta barra;
  MessaggiMuti messaggi;
  formats::ElencoFile largo;
  if (!analysis::CaricaElencoFile("C:\\l.el", largo, barra, messaggi)) std::abort();
  if (largo.NumeroFile < 0 || static_cast<std::size_t>(largo.NumeroFile) > n ||
      largo.NomiFile.size() != static_cast<std::size_t>(largo.NumeroFile) ||
      largo.DimensioniFile.size() != largo.NomiFile.size())
    std::abort();
  // Whatever the strict reader takes, the lenient one reads alike.
  formats::ElencoFile stretto;
  if (formats::CaricaElencoStretto("C:\\l.el", stretto) &&
      (stretto.NomiFile != largo.NomiFile || stretto.DimensioniFile != largo.DimensioniFile))
    std::abort();
  const std::string testo = analysis::TestoElencoFile(largo, "T", barra, '.');
  if (testo.size() < 2 + largo.CartellaBase.size()) std::abort();

  // The list as all three lists of the analysis, with good copies of every other size.
  analysis::ListeBackup liste{largo, largo, largo};
  std::vector<std::string> trovati;
  const auto misura = [](const std::string& p) -> std::int64_t {
    return static_cast<std::int64_t>(p.size() % 3) - 1;
  };
  analysis::TestoAnalisiBackup(liste, "C:\\backup_trle.le", misura, trovati, barra, '.');
  if (trovati.size() != static_cast<std::size_t>(largo.NumeroFile)) std::abort();
  return 0;
}
