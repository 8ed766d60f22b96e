// The rule writer's tools: a rules file checked by the program's own reader, tried on snapshots, and the list
// of the rules in force with the files they come from.
#include <algorithm>
#include <cstdio>
#include <string>

#include "analysis/regole.h"
#include "collection/blocco.h"
#include "collection/snapshot.h"
#include "host/macchina.h"
#include "support/files.h"
#include "verbi.h"

namespace cli {
namespace {

const char* NomeGravita(analysis::Gravita g) {
  static constexpr const char* kNomi[] = {"fail", "warn", "pass"};
  return kNomi[static_cast<int>(g)];
}

// A file named on the command line, read as the program reads its rules; its errors name it as it was given.
analysis::FileRegole LeggiArgomento(const std::string& argomento) {
  analysis::FileRegole f = analysis::LeggiRegole(ArgomentoPercorso(argomento));
  f.file = argomento;
  for (auto& e : f.errori) e.file = argomento;
  return f;
}

// Every error on standard error, one line each, as a compiler gives them.
void ScriviErrori(const analysis::FileRegole& f) {
  std::fflush(stdout);
  for (const auto& e : f.errori) std::fprintf(stderr, "%s\n", analysis::TestoErrore(e).c_str());
}

std::string Allineato(std::string testo, std::size_t larghezza) {
  testo.resize(std::max(testo.size() + 2, larghezza + 2), ' ');
  return testo;
}

int Check(const Argomenti& file) {
  std::vector<analysis::FileRegole> letti;
  if (file.empty())
    for (const auto& f : analysis::CaricaRegole(analysis::CartelleRegole()).file)
      letti.push_back(analysis::LeggiRegole(f));
  else
    for (const auto& f : file) letti.push_back(LeggiArgomento(f));
  std::size_t regole = 0, errati = 0;
  for (const auto& f : letti) {
    regole += f.regole.size();
    if (!f.errori.empty()) ++errati;
    ScriviErrori(f);
  }
  if (errati) {
    std::fflush(stdout);
    std::fputs((std::to_string(errati) + " of " + std::to_string(letti.size()) + " rules files have errors\n")
                   .c_str(),
               stderr);
    return 1;
  }
  ScriviByte(std::to_string(regole) + " rules in " + std::to_string(letti.size()) + " files: OK\n");
  return 0;
}

int Test(const Argomenti& args, MessaggiConsole& msg) {
  if (args.size() < 2) return Uso("rules test needs a rules file and a snapshot");
  const analysis::FileRegole f = LeggiArgomento(args[0]);
  if (!f.errori.empty()) {
    ScriviErrori(f);
    return 1;
  }
  if (!collection::PreparaCartellaProgramma(host::CartellaProgramma(), msg)) return 1;
  std::size_t larghezza = 0;
  for (const auto& r : f.regole) larghezza = std::max(larghezza, r.id.size());
  bool illeggibile = false;
  for (auto s = args.begin() + 1; s != args.end(); ++s) {
    ScriviByte("== " + *s + "\n");
    const CartellaPropria cartella("rules");
    const std::string snapshot = ArgomentoPercorso(*s);
    collection::ContenutoSnapshot contenuto;
    if (cartella.Percorso().empty() || !support::FileExists(snapshot) ||
        !collection::EstraiSnapshot(snapshot, cartella.Percorso(), contenuto)) {
      illeggibile = true;
      msg.Critico("The snapshot cannot be read: " + snapshot);
      continue;
    }
    const analysis::Fatti fatti = analysis::LeggiFatti(cartella.Percorso(), contenuto);
    for (const auto& r : analysis::ValutaRegole(f.regole, fatti)) {
      std::string riga = Allineato(r.regola->id, larghezza);
      riga += r.esito ? std::string(NomeGravita(r.finding.Livello)) + "  " + r.finding.Titolo : "none";
      ScriviTesto(riga + "\n");
    }
  }
  return illeggibile ? 1 : 0;
}

int List() {
  const analysis::RegoleInVigore r = analysis::CaricaRegole(analysis::CartelleRegole());
  std::size_t larghezza = 0;
  for (const auto& regola : r.regole) larghezza = std::max(larghezza, regola.id.size());
  for (const auto& regola : r.regole) ScriviTesto(Allineato(regola.id, larghezza) + regola.file + "\n");
  for (const auto& f : r.scartati) {
    ScriviTesto("left out: " + (f.errori.empty() ? f.file : analysis::TestoErrore(f.errori.front())) + "\n");
  }
  return 0;
}

}  // namespace

int VerboRules(const Argomenti& args, MessaggiConsole& msg) {
  if (args.empty()) return Uso("rules needs check, test, list or fields");
  const Argomenti resto(args.begin() + 1, args.end());
  if (args[0] == "check") return Check(resto);
  if (args[0] == "test") return Test(resto, msg);
  if (args[0] == "list") return resto.empty() ? List() : Uso("rules list takes no arguments");
  if (args[0] == "fields") {
    if (!resto.empty()) return Uso("rules fields takes no arguments");
    ScriviByte(analysis::TestoCampiRegole());
    return 0;
  }
  return Uso("unknown rules command: " + args[0]);
}

}  // namespace cli
