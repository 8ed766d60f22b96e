// The supporter's side from the command line: a snapshot opened as "Leggi Dati" opens it, and its reports.
#include <iterator>
#include <optional>

#include "analysis/dialog_analisi.h"
#include "analysis/voci.h"
#include "formats/info_header.h"
#include "host/machine.h"
#include "verbi.h"

namespace cli {
namespace {

std::optional<analysis::Voce> VoceDaNome(const std::string& nome) {
  for (const auto& v : analysis::kVoci)
    if (nome == v.parola) return v.voce;
  return std::nullopt;
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
  support::AreaTestoInMemoria area(analysis::kTestoIniziale);
  support::DidascaliaMuta cerca;
  support::BarraMuta barra;
  analysis::SegniInMemoria segni;
  support::DialogoFileMuto dialogo;
  support::AppuntiMuti appunti;
  analysis::Dialog_Analisi d{area, cerca, barra, segni, msg, dialogo, appunti};
  analysis::ImpostaValori(d, snapshot);
  if (d.Blocco.Occupato()) return 1;
  // Dati is the program folder's, as the window leaves it; only the lists may be elsewhere.
  d.CartellaProgramma = elenchi;
  for (std::size_t i = 0; i < scelte.size(); ++i) {
    analysis::EseguiVoce(d, scelte[i]);
    if (ognuno) ScriviByte("== " + voci[i] + "\n" + area.Testo() + "\n");
  }
  if (!ognuno) ScriviByte(area.Testo());
  return msg.CriticoMostrato() || !d.SnapshotAperto ? 1 : 0;
}

std::vector<std::string> TutteLeVoci() {
  std::vector<std::string> tutte;
  for (const auto& v : analysis::kVoci) tutte.emplace_back(v.parola);
  return tutte;
}

int VerboReport(const Argomenti& args, MessaggiConsole& msg) {
  if (args.empty()) return Uso("report needs a snapshot");
  return Prospetti(ArgomentoPercorso(args[0]), Argomenti(std::next(args.begin()), args.end()), false,
                   host::CartellaProgramma(), msg);
}

}  // namespace cli
