#include "analysis/testi.h"

#include <algorithm>

#include "analysis/testo.h"
#include "collection/membri.h"
#include "formats/script.h"
#include "support/files.h"

namespace analysis {

std::optional<std::string> MostraOrdelioTxt(const std::string& cartellaDati, support::Messaggi& messaggi) {
  const std::string percorso = collection::FileDati(cartellaDati, collection::Membro::ordeio);
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

LivelliScript LeggiScript(const std::string& percorso) {
  std::int32_t numero = 0;
  std::vector<std::string> livelli;
  LivelliScript l;
  l.esiste = formats::LeggiLivelliScript(percorso, numero, livelli);
  livelli.resize(static_cast<std::size_t>(std::max(numero, 0)));
  l.righe = std::move(livelli);
  return l;
}

std::optional<std::string> MostraScriptDat(const std::string& cartellaDati, support::Messaggi& messaggi) {
  const std::string percorso = collection::FileDati(cartellaDati, collection::Membro::script);
  if (!support::FileExists(percorso)) {
    messaggi.Critico("Non e' stato salvato il file Script.dat");
    return std::nullopt;
  }
  const LivelliScript l = LeggiScript(percorso);
  if (!l.esiste) messaggi.Semplice("Non esiste script.dat : " + percorso);
  return TestoLivelliScript(l.righe, static_cast<std::int32_t>(l.righe.size()));
}

}  // namespace analysis
