#include "analysis/elenchi.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "analysis/testo.h"
#include "collection/snapshot.h"
#include "host/machine.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {
namespace {

// The platform's descriptions of the failures the reader can meet.
constexpr const char* kFileNonTrovato = "File not found";
constexpr const char* kAccessoNegato = "Path/File access error";
constexpr const char* kIndiceFuoriIntervallo = "Subscript out of range";
constexpr const char* kMemoriaEsaurita = "Out of memory";

// The list read from memory, with the file's rules: past the end an integer reads as 0 and a name as "";
// a name's length outside its bounds gives "" and the read goes on behind the length field.
class Cursore {
 public:
  explicit Cursore(std::string_view byte) : byte_(byte) {}
  std::int32_t Intero() {
    if (byte_.size() - pos_ < 4) {
      pos_ = byte_.size();
      return 0;
    }
    std::uint32_t v = 0;
    for (int i = 3; i >= 0; --i)
      v = v << 8 | static_cast<unsigned char>(byte_[pos_ + static_cast<std::size_t>(i)]);
    pos_ += 4;
    return static_cast<std::int32_t>(v);
  }
  std::string Stringa() {
    const std::int32_t n = Intero();
    if (n < 1 || n > collection::kLunghezzaMassimaNome) return {};
    const std::size_t k = std::min(static_cast<std::size_t>(n), byte_.size() - pos_);
    std::string s(byte_.substr(pos_, k));
    pos_ += k;
    return s;
  }
  std::size_t Posizione() const { return pos_; }

 private:
  std::string_view byte_;
  std::size_t pos_ = 0;
};

// Pieces between backslashes; an empty text has none at all, so the first entry of a list (whose
// predecessor is "") always counts as having nothing to compare with.
std::vector<std::string> Dividi(const std::string& s) {
  std::vector<std::string> parti;
  if (s.empty()) return parti;
  std::size_t da = 0;
  for (;;) {
    const std::size_t a = s.find('\\', da);
    parti.push_back(s.substr(da, a == std::string::npos ? std::string::npos : a - da));
    if (a == std::string::npos) return parti;
    da = a + 1;
  }
}

}  // namespace

bool CaricaElencoFile(const std::string& NomeFile, collection::ElencoFile& elenco,
                      support::BarraProgresso& barra, support::Messaggi& messaggi) {
  elenco = collection::ElencoFile{};
  auto fallisci = [&](const char* descrizione, std::int32_t raggiunti) {
    messaggi.Semplice(std::string("Errore in CaricaElencoFile(): ") + descrizione);
    // The caller goes on with what was read so far.
    elenco.NumeroFile = raggiunti;
    elenco.NomiFile.resize(static_cast<std::size_t>(raggiunti));
    elenco.DimensioniFile.resize(static_cast<std::size_t>(raggiunti));
    return true;
  };

  if (!support::FileExists(NomeFile)) return fallisci(kFileNonTrovato, 0);
  int err = 0;
  host::File in = host::File::ApriLettura(NomeFile, &err);
  if (err || !in.Aperto()) return fallisci(kAccessoNegato, 0);
  const std::int64_t totale = in.Lunghezza();
  if (totale < 0) return fallisci(kAccessoNegato, 0);
  // One read of the whole file: a list is read entry by entry in small pieces, and the file is what it holds.
  std::string byte(static_cast<std::size_t>(totale), '\0');
  byte.resize(in.Leggi(byte.data(), byte.size()));
  in.Chiudi();
  Cursore c(byte);
  auto avanza = [&] {
    support::AggiornaProgresso(barra, static_cast<double>(totale), static_cast<double>(c.Posizione()));
  };

  const std::int32_t numero = c.Intero();
  elenco.CartellaBase = c.Stringa();
  if (numero < 0) return fallisci(kIndiceFuoriIntervallo, 0);
  // Room is made only for what the file could hold, so a few bytes never ask for gigabytes.
  if (numero > totale) return fallisci(kMemoriaEsaurita, 0);
  elenco.NumeroFile = numero;
  const auto n = static_cast<std::size_t>(numero);
  elenco.NomiFile.resize(n);
  elenco.DimensioniFile.assign(n, 0);
  // Past the end of the file the names read as "" and the sizes as 0; that is no failure.
  for (std::size_t i = 0; i < n; ++i) {
    elenco.NomiFile[i] = c.Stringa();
    avanza();
  }
  for (std::size_t i = 0; i < n; ++i) {
    elenco.DimensioniFile[i] = c.Intero();
    avanza();
  }
  return true;
}

std::size_t VociUsabili(const collection::ElencoFile& elenco) {
  return std::min({static_cast<std::size_t>(std::max(elenco.NumeroFile, 0)), elenco.NomiFile.size(),
                   elenco.DimensioniFile.size()});
}

std::string TestoElencoFile(const collection::ElencoFile& elenco, const std::string& titolo,
                            support::BarraProgresso& barra, char separatoreDecimale) {
  std::string testo;
  AggiungiRiga(testo, titolo + " (Files = " + std::to_string(elenco.NumeroFile) + ") ");
  AggiungiRiga(testo, elenco.CartellaBase);
  const std::size_t n = VociUsabili(elenco);
  std::vector<std::string> precedenti;
  for (std::size_t i = 0; i < n; ++i) {
    support::AggiornaProgresso(barra, static_cast<double>(n), static_cast<double>(i + 1));
    const std::string& nome = elenco.NomiFile[i];
    std::vector<std::string> parti = Dividi(nome);
    std::string voce;
    if (precedenti.size() < 2) {
      voce = nome;
    } else {
      // Only the leading run of equal folders is blanked: a folder that comes back after a different one is
      // printed again. Each blanked level keeps the width of its backslash and name in the line above.
      std::size_t k = 1;
      while (k < parti.size() && k < precedenti.size() && host::UgualiSenzaCaso(parti[k], precedenti[k])) {
        voce.append(1 + parti[k].size(), ' ');
        ++k;
      }
      for (; k < parti.size(); ++k) voce += "\\" + parti[k];
    }
    const std::int32_t dimensione = elenco.DimensioniFile[i];
    AggiungiRiga(testo, "\t" + voce + " (" + support::FormattaDimensione(dimensione, separatoreDecimale) +
                            ")" + " (" + std::to_string(dimensione) + " bytes) ");
    precedenti = std::move(parti);
  }
  return testo;
}

std::optional<std::string> MostraElencoFile(const std::string& NomeFile, const std::string& titolo,
                                            support::BarraProgresso& barra, support::Messaggi& messaggi) {
  collection::ElencoFile elenco;
  if (!CaricaElencoFile(NomeFile, elenco, barra, messaggi)) {
    messaggi.Critico("Errore caricando elenco files: " + NomeFile);
    return std::nullopt;
  }
  std::string testo = TestoElencoFile(elenco, titolo, barra, support::SeparatoreDecimale());
  barra.SetValue(0);
  barra.Refresh();
  return testo;
}

std::optional<std::string> MostraDirectory(const std::string& cartellaDati, const ProspettoDirectory& quale,
                                           support::BarraProgresso& barra, support::Messaggi& messaggi) {
  const std::string percorso = cartellaDati + "\\" + quale.File;
  if (!support::FileExists(percorso)) {
    messaggi.Critico("Non trovo file: " + percorso);
    return std::nullopt;
  }
  return MostraElencoFile(percorso, quale.Titolo, barra, messaggi);
}

}  // namespace analysis
