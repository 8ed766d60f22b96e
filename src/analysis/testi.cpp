#include "analysis/testi.h"

#include "analysis/testo.h"
#include "formats/script.h"
#include "support/files.h"

namespace analysis {

std::optional<std::string> MostraOrdelioTxt(const std::string& cartellaDati, support::Messaggi& messaggi) {
  const std::string percorso = cartellaDati + "\\ordeio.txt";
  if (!support::FileExists(percorso)) {
    messaggi.Critico("Non e' stato salvato il file Ordeio.txt");
    return std::nullopt;
  }
  // Shown as the file holds it: bare line feeds stay bare.
  return support::LeggiFile(percorso);
}

std::string TestoLivelliScript(const std::vector<std::string>& livelli, std::int32_t numero) {
  std::string testo;
  AggiungiRiga(testo, "Livelli tr4 usati da file script.dat:");
  AggiungiRiga(testo, "");
  for (std::int32_t i = 0; i < numero; ++i) {
    const auto j = static_cast<std::size_t>(i);
    AggiungiRiga(testo, j < livelli.size() ? livelli[j] : std::string());
  }
  return testo;
}

std::optional<std::string> MostraScriptDat(const std::string& cartellaDati, support::Messaggi& messaggi) {
  const std::string percorso = cartellaDati + "\\script.dat";
  if (!support::FileExists(percorso)) {
    messaggi.Critico("Non e' stato salvato il file Script.dat");
    return std::nullopt;
  }
  std::int32_t numero = 0;
  std::vector<std::string> livelli;
  if (!formats::LeggiLivelliScript(percorso, numero, livelli))
    messaggi.Semplice("Non esiste script.dat : " + percorso);
  return TestoLivelliScript(livelli, numero);
}

}  // namespace analysis
