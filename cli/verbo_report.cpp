// The supporter's side from the command line: a snapshot opened as "Leggi Dati" opens it, and its reports.
#include <algorithm>
#include <iterator>
#include <optional>

#include "analysis/dialog_analisi.h"
#include "analysis/testo_completo.h"
#include "analysis/voci.h"
#include "formats/info_header.h"
#include "host/macchina.h"
#include "verbi.h"

namespace cli {
namespace {

std::optional<analysis::Voce> VoceDaNome(const std::string& nome) {
  for (const auto& v : analysis::kVoci)
    if (nome == v.parola) return v.voce;
  return std::nullopt;
}

// The analysis window without a window: its messages go to standard error.
struct FinestraConsole {
  support::AreaTestoInMemoria area{analysis::kTestoIniziale};
  support::DidascaliaMuta cerca;
  support::BarraMuta barra;
  analysis::SegniInMemoria segni;
  support::DialogoFileMuto dialogo;
  support::AppuntiMuti appunti;
  analysis::Dialog_Analisi d;
  explicit FinestraConsole(MessaggiConsole& msg) : d{area, cerca, barra, segni, msg, dialogo, appunti} {}
};

// The whole snapshot as one text, in the terminal's encoding; nothing on standard output when it cannot be
// opened.
int TestoIntero(const std::string& snapshot, MessaggiConsole& msg) {
  FinestraConsole f(msg);
  analysis::ImpostaValori(f.d, snapshot);
  if (f.d.Blocco.Occupato()) return 1;
  if (!f.d.SnapshotAperto) {
    msg.Critico("The snapshot cannot be read: " + snapshot + ": " + f.d.ErroreSnapshot);
    return 1;
  }
  ScriviTesto(analysis::TestoCompleto(f.d));
  return msg.CriticoMostrato() ? 1 : 0;
}

}  // namespace

int Prospetti(const std::string& snapshot, const std::vector<std::string>& voci, bool ognuno,
              const std::string& elenchi, MessaggiConsole& msg) {
  std::vector<analysis::Voce> scelte;
  for (const auto& nome : voci) {
    const auto v = VoceDaNome(nome);
    if (!v) return Uso("unknown report item: " + nome);
    scelte.push_back(*v);
  }
  FinestraConsole f(msg);
  analysis::ImpostaValori(f.d, snapshot);
  if (f.d.Blocco.Occupato()) return 1;
  // Dati is the program folder's, as the window leaves it; only the lists may be elsewhere.
  f.d.CartellaProgramma = elenchi;
  for (std::size_t i = 0; i < scelte.size(); ++i) {
    analysis::EseguiVoce(f.d, scelte[i]);
    if (ognuno) ScriviByte("== " + voci[i] + "\n" + f.area.Testo() + "\n");
  }
  if (!ognuno) ScriviByte(f.area.Testo());
  return msg.CriticoMostrato() || !f.d.SnapshotAperto ? 1 : 0;
}

std::vector<std::string> TutteLeVoci() {
  std::vector<std::string> tutte;
  for (const auto& v : analysis::kVoci) tutte.emplace_back(v.parola);
  return tutte;
}

int VerboReport(const Argomenti& args, MessaggiConsole& msg) {
  if (args.empty()) return Uso("report needs a snapshot");
  if (std::find(args.begin(), args.end(), "--all") != args.end()) {
    if (args.size() != 2 || args[0] == "--all") return Uso("report --all takes a snapshot and no item");
    return TestoIntero(ArgomentoPercorso(args[0]), msg);
  }
  return Prospetti(ArgomentoPercorso(args[0]), Argomenti(std::next(args.begin()), args.end()), false,
                   host::CartellaProgramma(), msg);
}

}  // namespace cli
