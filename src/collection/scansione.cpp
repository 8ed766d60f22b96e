#include "collection/scansione.h"

#include <algorithm>
#include <limits>

#include "host/collegamenti.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "support/files.h"
#include "support/valori.h"

namespace collection {
namespace {

// A file of 2 GiB or more has no 32-bit size; it is recorded as 0, as a size that could not be read.
std::int32_t Dimensione32(std::int64_t n) {
  return n < 0 || n > std::numeric_limits<std::int32_t>::max() ? 0 : static_cast<std::int32_t>(n);
}

void MostraInfo(support::Didascalia& info, const std::string& testo) {
  info.ImpostaTesto(testo);
  info.Ridisegna();
}

}  // namespace

bool AggiungiFileAllElenco(Scansione& scansione, const std::string& path, std::int64_t dimensione) {
  scansione.FileTrovati.push_back(path);
  scansione.DimensioniTrovate.resize(scansione.FileTrovati.size(), -1);
  scansione.DimensioniTrovate.back() = dimensione;
  ++scansione.NumeroFileTrovati;
  return true;
}

bool ScansioneCartella(Scansione& scansione, const std::string& cartella, support::CicloEventi& eventi) {
  // Folders still to walk, the next one last. A stack of our own rather than recursion, so the depth of a
  // tree cannot exhaust the call stack. Each folder is read whole before any sub-folder is entered.
  std::vector<host::CartellaDaLeggere> daFare = {host::ApriCartella(cartella)};
  std::vector<host::VoceCartella> voci;
  std::vector<host::CartellaDaLeggere> sottocartelle;
  while (!daFare.empty()) {
    const host::CartellaDaLeggere c = std::move(daFare.back());
    daFare.pop_back();
    eventi.UnTurno();
    const std::string base =
        !c.percorso.empty() && c.percorso.back() == '\\' ? c.percorso : c.percorso + '\\';
    // Hidden and system entries, folders among them, do not come back.
    host::LeggiCartella(c, host::kAttrDirectory, voci);
    sottocartelle.clear();
    for (const auto& v : voci) {
      if (!(v.attributi & host::kAttrDirectory))
        AggiungiFileAllElenco(scansione, base + v.nome, v.dimensione);
      else if (!v.collegamento)
        sottocartelle.push_back(host::Sottocartella(c, v.nome));
    }
    daFare.insert(daFare.end(), std::make_move_iterator(sottocartelle.rbegin()),
                  std::make_move_iterator(sottocartelle.rend()));
  }
  return true;
}

std::string NomeRelativo(const std::string& percorso, const std::string& base) {
  // Every path of a walk begins with its base, so the search is rarely needed.
  if (percorso.size() >= base.size() &&
      host::UgualiSenzaCaso(std::string_view(percorso).substr(0, base.size()), base))
    return percorso.substr(base.size());
  const std::size_t k = host::Maiuscolo(percorso).find(host::Maiuscolo(base));
  if (k == std::string::npos) return percorso;
  return percorso.substr(0, k) + percorso.substr(k + base.size());
}

bool CreaElencoFile(const std::string& NomeFile, const std::string& Cartella, const VistaScansione& vista) {
  // The list is a working file of the folder that holds it.
  const std::string base = support::EstraiCartella(NomeFile);
  support::CancellaFileSotto(base, NomeFile);
  if (Cartella.empty() || !support::DirExists(Cartella)) return false;

  Scansione scansione;
  MostraInfo(vista.Info, "Parsing folder \"" + Cartella + "\" in progress...");
  ScansioneCartella(scansione, Cartella, vista.Eventi);

  ElencoFile elenco;
  elenco.CartellaBase = Cartella;
  elenco.NumeroFile = scansione.NumeroFileTrovati;
  elenco.NomiFile.resize(static_cast<std::size_t>(elenco.NumeroFile));
  elenco.DimensioniFile.resize(static_cast<std::size_t>(elenco.NumeroFile));
  for (std::int32_t i = 0; i < elenco.NumeroFile; ++i) {
    support::AggiornaProgresso(vista.Barra, elenco.NumeroFile, i + 1);
    std::string& trovato = scansione.FileTrovati[static_cast<std::size_t>(i)];
    elenco.NomiFile[i] = NomeRelativo(trovato, Cartella);
    std::int64_t dimensione = scansione.DimensioniTrovate[static_cast<std::size_t>(i)];
    if (dimensione < 0) {
      int err = 0;
      dimensione = host::LunghezzaFile(trovato, &err);
      if (err) dimensione = 0;
    }
    elenco.DimensioniFile[i] = Dimensione32(dimensione);
    std::string().swap(trovato);  // the full path is no longer needed; keeps the peak at one copy
  }
  vista.Barra.SetValue(0);
  vista.Barra.Refresh();
  MostraInfo(vista.Info, "Saving file list in progress...");

  // Whole or not at all: a full disk leaves no list that its readers would take for an empty folder.
  const bool scritto = support::ScriviFileSotto(
      base, NomeFile, [&](host::File& out) { return ScriviElencoFile(out, elenco); });
  MostraInfo(vista.Info, "");
  return scritto;
}

}  // namespace collection
