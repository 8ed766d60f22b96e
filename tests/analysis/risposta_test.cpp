// The answer for the user: three snapshots in the three forms against tests/data/risposta/<case>.<form>
// (CHECKORDL_RIGENERA=1 rewrites them), and the answers the rules give.
#include "analysis/risposta.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "analysis/regole.h"
#include "macchina_prova.h"

namespace {

using namespace analysis;

RiepilogoSnapshot Problemi() {
  RiepilogoSnapshot r;
  r.Data = "2026-11-20 14:03:05 (UTC+01:00)";
  r.Esiti = {
      {"editor.no-tomb4",
       Gravita::fail,
       "The editor folder holds no tomb4.exe",
       {{"editor_folder", "C:\\Users\\Jos\xE9\\my_`levels`\\Trle"}},
       "Reinstall.",
       "Reinstall the level editor: tomb4.exe is not in C:\\Users\\Jos\xE9\\my_`levels`\\Trle."},
      {"install.long-path",
       Gravita::warn,
       "The archive folder's path is 250 characters long",
       {{"path", "C:\\" + std::string(250, 'L')}, {"length", std::int64_t{250}}},
       "Move it.",
       "Move the archive to a shorter path, such as C:\\TRLE [*]."},
      // About the supporter's own computer: not for the user.
      {"backup.no-sample-lists", Gravita::warn, "No sample lists", {}, "Make them."},
      {"flag.none", Gravita::pass, "The check set no error flag", {{"FlagErrori", "0x0"}}, ""},
  };
  return r;
}

TEST(Risposta, FormeControAttese) {
  RiepilogoSnapshot sano;
  sano.Esiti = {Problemi().Esiti.back(), Problemi().Esiti[2]};
  RiepilogoSnapshot illeggibile;
  illeggibile.Errore = kSnapshotIlleggibile;
  illeggibile.Esiti = {EsitoIlleggibile(illeggibile.Errore)};
  const struct {
    const char* nome;
    RiepilogoSnapshot r;
  } casi[] = {{"problemi", Problemi()}, {"sano", sano}, {"illeggibile", illeggibile}};
  const struct {
    FormaRisposta forma;
    const char* estensione;
  } forme[] = {
      {FormaRisposta::testo, ".txt"}, {FormaRisposta::markdown, ".md"}, {FormaRisposta::bbcode, ".bb"}};
  const std::string cartella = std::string(CHECKORDL_DATI_PROVA) + "/risposta/";
  for (const auto& c : casi)
    for (const auto& f : forme) {
      const std::string file = cartella + c.nome + f.estensione;
      SCOPED_TRACE(file);
      const std::string testo = TestoRisposta(c.r, "Z:\\home\\u\\inbox\\08-user.BIN", f.forma);
      if (std::getenv("CHECKORDL_RIGENERA")) MacchinaProva::ScriviHost(file, testo);
      EXPECT_EQ(testo, MacchinaProva::LeggiHost(file));
    }
}

// An outcome's own answer, with what its condition matched filled in; without one, its action. Every
// failure and warning of the shipped rules speaks to the user.
TEST(Risposta, Regole) {
  const FileRegole f = AnalizzaRegole(R"({"format": 1, "rules": [
      {"id": "a", "outcomes": [{"severity": "warn", "when": {"file": "/ddraw.dll", "in": "editor"},
        "title": "t", "action": "Have the user rename {file}.", "answer": "Rename {file}."}]},
      {"id": "b", "outcomes": [{"severity": "fail", "title": "t", "action": "Reinstall."}]},
      {"id": "c", "outcomes": [{"severity": "pass", "title": "t", "action": "Nothing."}]}]})",
                                      "r.json");
  ASSERT_TRUE(f.errori.empty());
  Fatti fatti;
  auto lista = std::make_shared<ElencoLetto>();
  lista->elenco = {1, "C:\\Trle", {"\\ddraw.dll"}, {800}};
  fatti.trle.stato = StatoMembro::letto;
  fatti.trle.letto = lista;
  const auto rr = ValutaRegole(f.regole, fatti);
  ASSERT_EQ(rr.size(), 3u);
  EXPECT_EQ(rr[0].finding.Risposta, "Rename \\ddraw.dll.");
  EXPECT_EQ(rr[1].finding.Risposta, "Reinstall.");
  EXPECT_EQ(rr[2].finding.Risposta, "");
  // A placeholder no condition fills is refused in the answer as in the action.
  EXPECT_FALSE(AnalizzaRegole(R"({"format": 1, "rules": [{"id": "d", "outcomes": [
      {"severity": "warn", "title": "t", "answer": "Rename {file}."}]}]})",
                              "d.json")
                   .errori.empty());
  for (const auto& voce :
       std::filesystem::directory_iterator(std::string(CHECKORDL_DATI_PROVA) + "/../../regole")) {
    const FileRegole spedite = AnalizzaRegole(MacchinaProva::LeggiHost(voce.path().string()), "s.json");
    ASSERT_TRUE(spedite.errori.empty()) << voce.path();
    for (const Regola& r : spedite.regole)
      for (const EsitoRegola& e : r.esiti)
        EXPECT_TRUE(e.livello == Gravita::pass || !e.risposta.empty()) << r.id;
  }
}

}  // namespace
