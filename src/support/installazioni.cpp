#include "support/installazioni.h"

#include "host/accesso_registro.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace support {
namespace {

constexpr std::size_t kStanzaCartella = 260;

// Every non-overlapping occurrence, left to right.
std::string Sostituisci(const std::string& s, const std::string& cosa, const std::string& con) {
  std::string out;
  std::size_t i = 0;
  for (std::size_t k = s.find(cosa); k != std::string::npos; k = s.find(cosa, i)) {
    out.append(s, i, k - i).append(con);
    i = k + cosa.size();
  }
  return out.append(s, i);
}

}  // namespace

std::string LeggiPrimoValoreRegistro(const std::string& chiave) {
  std::string nome, dati;
  if (host::LeggiValoreRegistroIndice(chiave, 0, &nome, &dati) != host::kRegOk) return {};
  return dati.substr(0, dati.find('\0'));
}

std::string GetCartellaSpeciale(std::int32_t csidl) {
  long esito = 0;
  const std::string cartella = host::CartellaSpeciale(csidl, &esito);
  if (esito != 0) return {};
  // The platform writes the path and its NUL into a room of blanks; the room is then trimmed, and the NUL
  // that the trimming uncovers is dropped.
  std::string stanza(kStanzaCartella, ' ');
  const std::string scritto = (cartella + '\0').substr(0, kStanzaCartella);
  stanza.replace(0, scritto.size(), scritto);
  stanza = TogliSpazi(stanza);
  if (!stanza.empty() && stanza.back() == '\0') stanza.pop_back();
  return stanza;
}

std::string TrovaEseguibile(const std::string& nome) {
  const std::string file = EstraiNomeFile(nome);
  const std::string valore = LeggiPrimoValoreRegistro(kAppPaths + file);
  if (!valore.empty()) {
    const bool percorsoFile = host::Maiuscolo(valore).find(".EXE") != std::string::npos;
    const std::string candidato = percorsoFile ? valore : valore + "\\" + file;
    return FileExists(candidato) ? candidato : std::string();
  }
  std::string candidato = NormalizzaPercorso(GetCartellaSpeciale(host::kCsidlProgramFiles) + "\\" + nome);
  if (candidato.find("\"%1\"") != std::string::npos)
    candidato = TogliSpazi(Sostituisci(candidato, "\"%1\"", ""));
  return FileExists(candidato) ? candidato : std::string();
}

}  // namespace support
