// Where the rules come from: the shipped folder, then the supporter's own folders, each file whole or not at
// all; and the findings they give, each marked with the file it came from.
#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "analysis/id_esiti.h"
#include "analysis/regole.h"
#include "host/macchina.h"
#include "host/nomi.h"
#include "support/files.h"

namespace analysis {
namespace {

constexpr std::string_view kEstensione = ".json";

bool FileDiRegole(const std::string& nome) {
  return nome.size() > kEstensione.size() &&
         host::UgualiSenzaCaso(std::string_view(nome).substr(nome.size() - kEstensione.size()), kEstensione);
}

// The folder's rules files in name order. A link among them is left out: the files read are the folder's
// own, never what a link names elsewhere.
std::vector<std::string> FileDellaCartella(const std::string& cartella) {
  std::vector<std::string> file;
  if (!support::DirExists(cartella)) return file;
  std::int32_t numero = 0;
  for (const std::string& percorso : support::ElencaFile(cartella, "*", numero)) {
    int err = 0;
    if (FileDiRegole(support::EstraiNomeFile(percorso)) &&
        host::VoceSotto(cartella, percorso, &err) == host::Voce::file)
      file.push_back(percorso);
  }
  std::sort(file.begin(), file.end(), [](const std::string& a, const std::string& b) {
    const std::string ma = host::Maiuscolo(a), mb = host::Maiuscolo(b);
    return ma != mb ? ma < mb : a < b;
  });
  return file;
}

std::string TestoLuogo(const ErroreRegole& e) {
  if (e.riga <= 0) return e.testo;
  return std::to_string(e.riga) + ":" + std::to_string(e.colonna) + ": " + e.testo;
}

// What the findings call a rules file: its folder's last component and its name.
std::string NomeFileRegole(const std::string& file) {
  const std::string cartella = support::EstraiNomeFile(support::EstraiCartella(file));
  const std::string nome = support::EstraiNomeFile(file);
  return cartella.empty() || cartella == file ? nome : cartella + "\\" + nome;
}

Esito Illeggibile(const FileRegole& f) {
  const std::string nome = NomeFileRegole(f.file);
  std::vector<Evidenza> evidenze = {{"file", f.file}};
  if (!f.errori.empty()) evidenze.push_back({"error", TestoLuogo(f.errori.front())});
  evidenze.push_back({"errors", static_cast<std::int64_t>(f.errori.size())});
  return {std::string(VoceDi(IdEsito::rulesUnreadable).id), Gravita::warn,
          "The rules file " + nome + " could not be read; its rules were left out", std::move(evidenze),
          "Run checkordl-cli rules check on it, mend what it names, or remove the file."};
}

}  // namespace

RegoleInVigore CaricaRegole(const std::vector<std::string>& cartelle) {
  RegoleInVigore r;
  std::unordered_map<std::string, std::size_t> posto;
  for (const std::string& cartella : cartelle)
    for (const std::string& percorso : FileDellaCartella(cartella)) {
      r.file.push_back(percorso);
      FileRegole f = LeggiRegole(percorso);
      if (!f.errori.empty()) {
        r.scartati.push_back(std::move(f));
        continue;
      }
      for (Regola& regola : f.regole) {
        const auto [it, nuovo] = posto.emplace(regola.id, r.regole.size());
        if (nuovo)
          r.regole.push_back(std::move(regola));
        else
          r.regole[it->second] = std::move(regola);
      }
    }
  return r;
}

std::vector<std::string> CartelleRegole() {
  std::vector<std::string> cartelle;
  const std::string eseguibile = host::CartellaEseguibile();
  const std::string accanto = eseguibile + "\\regole";
  const std::string condivisa = support::EstraiCartella(eseguibile) + "\\share\\checkordl\\regole";
  cartelle.push_back(!support::DirExists(accanto) && support::DirExists(condivisa) ? condivisa : accanto);
  const std::string programma = host::CartellaProgramma();
  cartelle.push_back(programma + "\\regole_locali");
  const std::string utente = host::CartellaUtente();
  if (!utente.empty() && !host::UgualiSenzaCaso(utente, programma))
    cartelle.push_back(utente + "\\regole_locali");
  return cartelle;
}

const RegoleInVigore& RegoleDelProgramma() {
  static const RegoleInVigore regole = CaricaRegole(CartelleRegole());
  return regole;
}

std::vector<Esito> EsitiRegole(const RegoleInVigore& regole, const Fatti& fatti) {
  std::vector<Esito> esiti;
  for (RisultatoRegola& r : ValutaRegole(regole.regole, fatti)) {
    if (!r.esito) continue;
    r.finding.Regola = NomeFileRegole(r.regola->file);
    esiti.push_back(std::move(r.finding));
  }
  for (const FileRegole& f : regole.scartati) esiti.push_back(Illeggibile(f));
  return esiti;
}

}  // namespace analysis
