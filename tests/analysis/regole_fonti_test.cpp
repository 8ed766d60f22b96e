// Where the rules come from: folders in order, a later rule of one id in the earlier's place, a broken file
// left out whole and named by one warning, links not followed; and how a rule's finding shows.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "analysis/regole.h"
#include "macchina_prova.h"

namespace {

std::string Regola(const std::string& id, const std::string& titolo) {
  return R"({"id": ")" + id + R"(", "outcomes": [{"severity": "warn", "title": ")" + titolo +
         R"(", "evidence": {"n": "1"}, "action": "Do it."}]})";
}
std::string File(const std::vector<std::string>& regole) {
  std::string r;
  for (const auto& x : regole) r += (r.empty() ? "" : ",") + x;
  return "// planted\n{\"format\": 1, \"rules\": [" + r + "]}\n";
}

std::vector<std::string> Id(const analysis::RegoleInVigore& r) {
  std::vector<std::string> id;
  for (const auto& x : r.regole) id.push_back(x.id + " " + x.file);
  return id;
}

TEST(RegoleFonti, CartelleInOrdineELaPiuTardaVince) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("regole/b.json"), File({Regola("x.one", "One"), Regola("x.two", "Two")}));
  MacchinaProva::ScriviHost(m.C("regole/A.JSON"), File({Regola("x.zero", "Zero")}));
  MacchinaProva::ScriviHost(m.C("regole/note.txt"), "not rules");
  MacchinaProva::ScriviHost(m.C("locali/mine.json"), File({Regola("x.two", "Mine")}));
  MacchinaProva::ScriviHost(m.C("locali/rotto.json"), "{\"format\": 1,\n \"rules\": [], \"extra\": 1}");
  bool collegamento = false;
  if (!m.Prefisso().empty()) {
    MacchinaProva::ScriviHost(m.C("fuori/altre.json"), File({Regola("x.outside", "Outside")}));
    std::error_code ec;
    std::filesystem::create_symlink(m.C("fuori/altre.json"), m.C("locali/link.json"), ec);
    collegamento = !ec;
  }
  const analysis::RegoleInVigore r = analysis::CaricaRegole({"C:\\regole", "C:\\nessuna", "C:\\locali"});
  EXPECT_EQ(Id(r), (std::vector<std::string>{"x.zero C:\\regole\\A.JSON", "x.one C:\\regole\\b.json",
                                             "x.two C:\\locali\\mine.json"}));
  EXPECT_EQ(r.regole[2].esiti[0].titolo, "Mine");
  EXPECT_EQ(r.file, (std::vector<std::string>{"C:\\regole\\A.JSON", "C:\\regole\\b.json",
                                              "C:\\locali\\mine.json", "C:\\locali\\rotto.json"}))
      << (collegamento ? "a link was read" : "");
  ASSERT_EQ(r.scartati.size(), 1u);
  EXPECT_EQ(r.scartati[0].file, "C:\\locali\\rotto.json");

  // The findings: the rule's, marked with its file's folder and name; the broken file's one warning.
  const analysis::Fatti fatti;
  const std::vector<analysis::Esito> esiti = analysis::EsitiRegole(r, fatti);
  ASSERT_EQ(esiti.size(), 4u);
  EXPECT_EQ(esiti[0].Regola, "regole\\A.JSON");
  EXPECT_EQ(esiti[2].Regola, "locali\\mine.json");
  EXPECT_EQ(esiti[2].Titolo, "Mine");
  const analysis::Esito& w = esiti[3];
  EXPECT_EQ(w.Id, "rules.unreadable");
  EXPECT_EQ(w.Livello, analysis::Gravita::warn);
  EXPECT_EQ(w.Regola, "");
  EXPECT_NE(w.Titolo.find("locali\\rotto.json"), std::string::npos) << w.Titolo;
  ASSERT_EQ(w.Evidenze.size(), 3u);
  EXPECT_EQ(std::get<std::string>(w.Evidenze[0].Valore), "C:\\locali\\rotto.json");
  EXPECT_EQ(std::get<std::string>(w.Evidenze[1].Valore).rfind("2:", 0), 0u) << w.Evidenze[1].Nome;
  EXPECT_EQ(std::get<std::int64_t>(w.Evidenze[2].Valore), 1);

  // The text says where each rule's finding came from, under every severity; the JSON too, and a built-in
  // finding's object stays as it was.
  std::vector<analysis::Esito> tutti = {{"flag.none", analysis::Gravita::pass, "No flag", {}, ""}, esiti[2]};
  tutti.push_back(tutti[1]);
  tutti[2].Livello = analysis::Gravita::pass;
  const std::string testo = analysis::TestoRiepilogo(tutti);
  std::string riga = "\n";
  riga.append(33, ' ').append("rule: locali\\mine.json");
  std::size_t volte = 0;
  for (auto i = testo.find(riga); i != std::string::npos; i = testo.find(riga, i + 1)) ++volte;
  EXPECT_EQ(volte, 2u) << testo;
  analysis::RiepilogoSnapshot rs;
  rs.Esiti = tutti;
  const std::string json = analysis::JsonRiepilogo("s.bin", rs);
  EXPECT_NE(json.find(R"("action":"Do it.","answer":"Do it.","rule":"locali\\mine.json"})"),
            std::string::npos)
      << json;
  EXPECT_NE(json.find(R"("action":""},)"), std::string::npos) << json;
}

}  // namespace
