// The checks on the level editor's folder: the levels its script names, empty level files, tomb4.exe.
#include <unordered_set>

#include "analysis/riepilogo_aree.h"
#include "host/nomi.h"

namespace analysis {

void NomiScript(const Fatti& f, std::vector<std::string>& nomi) {
  nomi.insert(nomi.end(), f.script.livelli.begin(), f.script.livelli.end());
}

void VerificaLivelliScript(const Contesto& c) {
  const ScriptFatti& s = c.fatti.script;
  if (s.stato == StatoMembro::danneggiato)
    c.Aggiungi(IdEsito::scriptUnreadable, Gravita::fail, "script.dat cannot be read as the level script",
               {{"reason", s.problema}, {"size", s.dimensione}},
               "Build the script again in the level editor so that script.dat is written whole. The check of "
               "its levels was left out.",
               "Build the script again in the level editor so that script.dat is written whole, then run the "
               "check again.");
  if (s.stato != StatoMembro::letto || c.fatti.trle.stato != StatoMembro::letto) return;
  std::unordered_set<std::string> detti;
  std::int64_t mancanti = 0;
  for (const auto& l : s.livelli) {
    const std::string chiave = ChiaveNome(l);
    // A level the script names twice is told once.
    if (c.nomiTrle.contains(chiave) || !detti.insert(chiave).second) continue;
    ++mancanti;
    c.Aggiungi(IdEsito::scriptLevelMissing, Gravita::fail,
               "A level that script.dat names is not in the editor folder",
               {{"level", l}, {"editor_folder", c.fatti.trle.letto->elenco.CartellaBase}},
               "Copy the level file into the editor folder or take it out of the script: the game stops when "
               "it reaches that level.",
               "Copy " + l + " into " + c.fatti.trle.letto->elenco.CartellaBase +
                   ", or take it out of the script: the game stops when it reaches that level.");
  }
  if (mancanti == 0)
    c.Aggiungi(
        IdEsito::scriptLevelsPresent, Gravita::pass,
        "All " + std::to_string(s.livelli.size()) + " levels that script.dat names are in the editor folder",
        {{"levels", static_cast<std::int64_t>(s.livelli.size())}});
}

void VerificaLivelliVuoti(const Contesto& c) {
  if (c.fatti.trle.stato != StatoMembro::letto) return;
  const formats::ElencoFile& e = c.fatti.trle.letto->elenco;
  std::int64_t livelli = 0, vuoti = 0;
  for (std::size_t i = 0; i < VociUsabili(e); ++i) {
    const std::string& nome = e.NomiFile[i];
    // The extension as EstraiEstensione takes it, compared without a copy of each of many names.
    const std::size_t punto = nome.rfind('.');
    if (punto == std::string::npos || !host::UgualiSenzaCaso(std::string_view(nome).substr(punto), ".TR4"))
      continue;
    ++livelli;
    if (e.DimensioniFile[i] != 0) continue;
    ++vuoti;
    c.Aggiungi(
        IdEsito::editorEmptyLevel, Gravita::fail, "A level file in the editor folder is empty",
        {{"file", nome}, {"size", std::int64_t{0}}},
        "Build the level again in the level editor, or copy it back from a backup.",
        "Build " + nome + " again in the level editor, or copy it back from a backup: the file is empty.");
  }
  if (vuoti == 0)
    c.Aggiungi(IdEsito::editorNoEmptyLevel, Gravita::pass,
               "None of the " + std::to_string(livelli) + " level files in the editor folder is empty",
               {{"levels", livelli}});
}

namespace {
constexpr const char* kTomb4 = "\\tomb4.exe";
}  // namespace

void NomiTomb4(const Fatti&, std::vector<std::string>& nomi) {
  nomi.emplace_back(kTomb4);
}

void VerificaTomb4(const Contesto& c) {
  if (c.fatti.trle.stato != StatoMembro::letto) return;
  const std::string& cartella = c.fatti.trle.letto->elenco.CartellaBase;
  if (c.NelTrle(kTomb4))
    c.Aggiungi(IdEsito::editorTomb4Present, Gravita::pass, "The editor folder holds tomb4.exe",
               {{"editor_folder", cartella}});
  else
    c.Aggiungi(IdEsito::editorNoTomb4, Gravita::fail, "The editor folder holds no tomb4.exe",
               {{"editor_folder", cartella}},
               "Reinstall the level editor: without tomb4.exe no level can be played.",
               "Reinstall the level editor: tomb4.exe is not in " + cartella +
                   ", and without it no level can be "
                   "played.");
}

}  // namespace analysis
