#include "analysis/elenchi.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "analysis/testo.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {
namespace {

// The platform's descriptions of the failures the reader can meet.
const char* Descrizione(formats::GuastoElenco g) {
  switch (g) {
    case formats::GuastoElenco::kFileNonTrovato:
      return "File not found";
    case formats::GuastoElenco::kAccessoNegato:
      return "Path/File access error";
    case formats::GuastoElenco::kConteggioNegativo:
      return "Subscript out of range";
    case formats::GuastoElenco::kConteggioTroppoGrande:
      return "Out of memory";
    case formats::GuastoElenco::kNessuno:
      break;
  }
  return "";
}

// Pieces between backslashes, as views into `s`; an empty text has none at all, so the first entry of a list
// (whose predecessor is "") always counts as having nothing to compare with.
void Dividi(std::string_view s, std::vector<std::string_view>& parti) {
  parti.clear();
  if (s.empty()) return;
  std::size_t da = 0;
  for (;;) {
    const std::size_t a = s.find('\\', da);
    parti.push_back(s.substr(da, a == std::string_view::npos ? std::string_view::npos : a - da));
    if (a == std::string_view::npos) return;
    da = a + 1;
  }
}

}  // namespace

bool CaricaElencoFile(const std::string& NomeFile, formats::ElencoFile& elenco,
                      support::BarraProgresso& barra, support::Messaggi& messaggi) {
  const formats::GuastoElenco guasto = formats::CaricaElencoTollerante(NomeFile, elenco, &barra);
  if (guasto != formats::GuastoElenco::kNessuno)
    messaggi.Semplice(std::string("Errore in CaricaElencoFile(): ") + Descrizione(guasto));
  return true;
}

ElencoLetto LeggiElencoUnaVolta(const std::string& NomeFile) {
  class Tenuti : public support::Messaggi {
   public:
    explicit Tenuti(ElencoLetto& l) : l_(l) {}
    void Semplice(const std::string& t) override { l_.messaggi.emplace_back(false, t); }
    void Critico(const std::string& t) override { l_.messaggi.emplace_back(true, t); }

   private:
    ElencoLetto& l_;
  };
  ElencoLetto l;
  Tenuti messaggi(l);
  support::BarraMuta barra;
  CaricaElencoFile(NomeFile, l.elenco, barra, messaggi);
  return l;
}

std::size_t VociUsabili(const formats::ElencoFile& elenco) {
  return std::min({static_cast<std::size_t>(std::max(elenco.NumeroFile, 0)), elenco.NomiFile.size(),
                   elenco.DimensioniFile.size()});
}

std::string TestoElencoFile(const formats::ElencoFile& elenco, const std::string& titolo,
                            support::BarraProgresso& barra, char separatoreDecimale) {
  std::string testo;
  AggiungiRiga(testo, titolo + " (Files = " + std::to_string(elenco.NumeroFile) + ") ");
  AggiungiRiga(testo, elenco.CartellaBase);
  const std::size_t n = VociUsabili(elenco);
  // A listing can hold hundreds of thousands of lines: the text grows once, and each line reuses the same
  // buffers.
  std::size_t stima = testo.size();
  for (std::size_t i = 0; i < n; ++i) stima += elenco.NomiFile[i].size() + 48;
  testo.reserve(stima);
  std::vector<std::string_view> parti, precedenti;
  std::string voce, riga;
  for (std::size_t i = 0; i < n; ++i) {
    support::AggiornaProgresso(barra, static_cast<double>(n), static_cast<double>(i + 1));
    const std::string& nome = elenco.NomiFile[i];
    Dividi(nome, parti);
    if (precedenti.size() < 2) {
      voce = nome;
    } else {
      // Only the leading run of equal folders is blanked: a folder that comes back after a different one is
      // printed again. Each blanked level keeps the width of its backslash and name in the line above.
      voce.clear();
      std::size_t k = 1;
      while (k < parti.size() && k < precedenti.size() && host::UgualiSenzaCaso(parti[k], precedenti[k])) {
        voce.append(1 + parti[k].size(), ' ');
        ++k;
      }
      for (; k < parti.size(); ++k) {
        voce += '\\';
        voce += parti[k];
      }
    }
    const std::int32_t dimensione = elenco.DimensioniFile[i];
    riga.assign(1, '\t');
    riga += voce;
    riga += " (";
    riga += support::FormattaDimensione(dimensione, separatoreDecimale);
    riga += ") (";
    riga += std::to_string(dimensione);
    riga += " bytes) ";
    AggiungiRiga(testo, riga);
    std::swap(parti, precedenti);
  }
  return testo;
}

std::optional<std::string> MostraElencoFile(const std::string& NomeFile, const std::string& titolo,
                                            support::BarraProgresso& barra, support::Messaggi& messaggi) {
  formats::ElencoFile elenco;
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
