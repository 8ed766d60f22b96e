// The rules files: what the reader takes and refuses (each fault at its line and column), and what the rules
// say of a snapshot's facts.
#include "analysis/regole.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "analysis/regole_condizione.h"
#include "macchina_prova.h"

namespace {

using namespace analysis;

const std::string kDati = std::string(CHECKORDL_DATI_PROVA) + "/regole/";

std::string Errori(const FileRegole& f) {
  std::string t;
  for (const ErroreRegole& e : f.errori) t += TestoErrore(e) + "\n";
  return t;
}

// The cases of errori.txt, each checked against the errors it lists; CHECKORDL_RIGENERA rewrites them.
TEST(Regole, ErroriAlLoroPosto) {
  std::istringstream in(MacchinaProva::LeggiHost(kDati + "errori.txt"));
  std::string riga, nuovo, testo, nome, attesi;
  bool dopo = false;
  auto chiudi = [&] {
    if (nome.empty()) return;
    const FileRegole f = AnalizzaRegole(testo, "r.json");
    EXPECT_EQ(Errori(f), attesi) << nome;
    EXPECT_TRUE(f.regole.empty()) << nome;
    nuovo += Errori(f);
  };
  while (std::getline(in, riga)) {
    if (riga.rfind("=== ", 0) == 0) {
      chiudi();
      nome = riga, testo.clear(), attesi.clear(), dopo = false;
    } else if (riga == "---") {
      dopo = true;
    } else if (dopo) {
      attesi += riga + "\n";
      continue;
    } else if (!nome.empty()) {
      testo += riga + "\n";
    }
    nuovo += riga + "\n";
  }
  chiudi();
  if (std::getenv("CHECKORDL_RIGENERA")) MacchinaProva::ScriviHost(kDati + "errori.txt", nuovo);
}

// The limits: each a file made here, refused with one error at the place it goes past.
TEST(Regole, Limiti) {
  auto regole = [&](std::size_t n) {
    std::string t = R"({"format": 1, "rules": [)";
    for (std::size_t i = 0; i < n; ++i)
      t += (i ? R"(,{"id": "r)" : R"({"id": "r)") + std::to_string(i) +
           R"(", "outcomes": [{"severity": "pass", "title": "t"}]})";
    return t + "]}";
  };
  std::string esiti = R"({"format": 1, "rules": [{"id": "e", "outcomes": [)";
  for (int i = 0; i < 17; ++i) esiti += std::string(i ? "," : "") + R"({"severity": "pass", "title": "t"})";
  std::string chiavi = "{";
  for (int i = 0; i < 65; ++i) chiavi += (i ? ",\"k" : "\"k") + std::to_string(i) + "\": 1";
  std::string condizioni =
      R"({"format": 1, "rules": [{"id": "c", "outcomes": [{"severity": "pass", "title": "t", "when": {"all": [)";
  for (int i = 0; i < 300; ++i) condizioni += std::string(i ? "," : "") + R"({"member": "trle.el"})";
  const struct {
    std::string testo, errore;
  } casi[] = {
      {std::string(40, '[') + std::string(40, ']'), "r.json:1:33: nested deeper than 32 levels"},
      {"{\"format\": 1,\n \"rules\": [1e400]}", "r.json:2:12: a number too large"},
      {R"({"format": 1, "rules": [{"id": "b", "outcomes": [{"severity": "pass", "title": "t",
          "when": {"field": "header.FlagErrori", "value": 9223372036854775808}}]}]})",
       "r.json:2:59: a number beyond 2^53"},
      {R"({"format": -1e308, "rules": []})", "r.json:1:12: a number beyond 2^53"},
      {chiavi + "}", "r.json:1:568: more than 64 keys in one object"},
      {R"({"format": 1, "rules": [{"id": "s", "outcomes": [{"severity": "pass", "title": ")" +
           std::string(4097, 'x') + "\"}]}]}",
       "r.json:1:80: a text longer than 4096 bytes"},
      {esiti + "]}]}", "r.json:1:49: expected an array of 1 to 16 outcomes"},
      {regole(10001), "r.json:1:658915: more than 10000 rules in one file"},
      {condizioni + "]}}]}]}", "r.json:1:5712: more than 256 conditions in one rule"},
      {std::string((8 << 20) + 1, ' '), "r.json:1:1: the file is larger than 8 MiB"},
  };
  for (const auto& c : casi) {
    const FileRegole f = AnalizzaRegole(c.testo, "r.json");
    ASSERT_EQ(f.errori.size(), 1u) << Errori(f);
    EXPECT_EQ(TestoErrore(f.errori[0]), c.errore);
  }
  // 200 faults: the first 100 and one "too many errors".
  std::string tanti = R"({"format": 1, "rules": [)";
  for (int i = 0; i < 200; ++i) tanti += std::string(i ? "," : "") + R"({"id": "X"})";
  const FileRegole f = AnalizzaRegole(tanti + "]}", "r.json");
  ASSERT_EQ(f.errori.size(), 101u);
  EXPECT_EQ(f.errori.back().testo, "too many errors");
  EXPECT_TRUE(AnalizzaRegole(regole(10000), "r.json").errori.empty());
}

TEST(Regole, FileValido) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.C("r.json"), MacchinaProva::LeggiHost(kDati + "valutazione.json"));
  const FileRegole f = LeggiRegole("C:\\r.json");
  ASSERT_TRUE(f.errori.empty()) << Errori(f);
  ASSERT_EQ(f.regole.size(), 21u);
  const Regola& r = f.regole.back();
  EXPECT_EQ(r.id, "text.escapes");
  EXPECT_EQ(r.riga, 56);
  ASSERT_EQ(r.esiti.size(), 1u);
  // Evidence in the file's order, not the names'.
  ASSERT_EQ(r.esiti[0].evidenze.size(), 2u);
  EXPECT_EQ(r.esiti[0].evidenze[0].first, "z");
  EXPECT_EQ(r.file, "C:\\r.json");
  // Texts arrive in UTF-8 and are kept in Windows-1252, as every text of the program.
  const FileRegole u = AnalizzaRegole(
      "{\"format\": 1, \"rules\": [{\"id\": \"u\", \"outcomes\": [{\"severity\": \"pass\", \"title\": "
      "\"caff\\u00e8 \xE2\x82\xAC\"}]}]}",
      "u.json");
  ASSERT_EQ(u.regole.size(), 1u) << Errori(u);
  EXPECT_EQ(u.regole[0].esiti[0].titolo, "caff\xE8 \x80");
  EXPECT_EQ(TestoErrore(LeggiRegole("C:\\nessuno.json").errori.at(0)),
            "C:\\nessuno.json: the file cannot be read");
}

formats::ElencoFile Elenco(std::vector<std::string> nomi, std::vector<std::int32_t> dimensioni) {
  return {static_cast<std::int32_t>(nomi.size()), "C:\\Giochi\\Trle", std::move(nomi), std::move(dimensioni)};
}

Fatti Vecchi() {
  Fatti f;
  f.header.stato = StatoMembro::letto;
  f.infoHeader.FlagErrori = 0x102;
  f.infoHeader.VersioneOrdelio.Assegna("2.10.3");
  f.infoHeader.StartFolderTrle.Assegna("C:\\Giochi\\Trle");
  f.archivio.stato = StatoMembro::danneggiato;
  f.script.stato = StatoMembro::letto;
  f.script.livelli = {"DATA\\L001.tr4", "DATA\\L002.tr4"};
  return f;
}

Fatti Pieni() {
  Fatti f = Vecchi();
  auto lista = std::make_shared<ElencoLetto>();
  lista->elenco = Elenco({"\\tomb4.exe", "\\ddraw.dll", "\\data\\a.tr4", "\\data\\sub\\DDRAW.DLL", "\\b.tr4"},
                         {12345, 800, 10, 20, 11});
  f.trle.stato = StatoMembro::letto;
  f.trle.letto = lista;
  f.ambiente.stato = StatoAmbiente::letto;
  host::SistemaWindows& w = f.ambiente.ambiente.windows;
  w.maggiore = 10, w.build = 19045;
  formats::EseguibileAmbiente ea;
  ea.eseguibile.percorso = "C:\\Giochi\\Trle\\tomb4.exe";
  ea.eseguibile.macchina = host::MacchinaPe::x86;
  ea.eseguibile.importazioni = {{"ddraw.dll", host::Origine::sistema, "", -1},
                                {"d3dx9_43.dll", host::Origine::nonTrovata, "", -1}};
  ea.eseguibile.livelli = {{"HKCU", "~ RUNASADMIN WINXPSP3"}};
  ea.eseguibile.zona = 3;
  f.ambiente.ambiente.eseguibili = {ea};
  return f;
}

std::string Risultati(const std::vector<RisultatoRegola>& rr) {
  static const char* kLivelli[] = {"fail", "warn", "pass"};
  std::string t;
  for (const RisultatoRegola& r : rr) {
    t += r.regola->id + ": ";
    if (!r.esito) {
      t += "none\n";
      continue;
    }
    const Esito& e = r.finding;
    t += "#" + std::to_string(*r.esito) + " " + kLivelli[static_cast<int>(e.Livello)] + " " + e.Titolo;
    for (const Evidenza& v : e.Evidenze)
      t += " | " + v.Nome + "=" +
           (std::holds_alternative<std::string>(v.Valore)
                ? std::get<std::string>(v.Valore)
                : "int " + std::to_string(std::get<std::int64_t>(v.Valore)));
    t += (e.Azione.empty() ? "" : " -> " + e.Azione) + "\n";
  }
  return t;
}

// Every kind of condition true, false and unknown, over a full snapshot and an old one.
TEST(Regole, Valutazione) {
  const FileRegole f = AnalizzaRegole(MacchinaProva::LeggiHost(kDati + "valutazione.json"), "v.json");
  ASSERT_TRUE(f.errori.empty()) << Errori(f);
  const std::string testo = "full snapshot\n" + Risultati(ValutaRegole(f.regole, Pieni())) +
                            "\nold snapshot\n" + Risultati(ValutaRegole(f.regole, Vecchi()));
  if (std::getenv("CHECKORDL_RIGENERA")) MacchinaProva::ScriviHost(kDati + "valutazione.txt", testo);
  EXPECT_EQ(testo, MacchinaProva::LeggiHost(kDati + "valutazione.txt"));
}

TEST(Regole, Modelli) {
  const struct {
    const char* modello;
    const char* nome;
    bool atteso;
  } casi[] = {
      {"*.dll",
       "\xC8"
       "DDRAW.DLL",
       true},
      {"\xE8*", "\xC8X", true},
      {"a?c", "ABC", true},
      {"a?c", "AC", false},
      {"*a*b*c", "XAYBZC", true},
      {"*a*b*c", "XAYBZCD", false},
      {"a*", "A", true},
      {"*x*", "ABC", false},
      {"/data/*.tr4", "\\DATA\\SUB\\L.TR4", true},
  };
  for (const auto& c : casi) EXPECT_EQ(Corrisponde(FaiModello(c.modello), c.nome), c.atteso) << c.modello;
  // A pattern that backtracks at every star takes one pass a star, not one a combination.
  const auto inizio = std::chrono::steady_clock::now();
  EXPECT_FALSE(Corrisponde(FaiModello("*a*a*a*a*a*a*a*a*a*b"), std::string(100000, 'A')));
  EXPECT_LT(std::chrono::steady_clock::now() - inizio, std::chrono::seconds(1));
}

TEST(Regole, OrdineDelleVersioni) {
  const struct {
    const char *a, *b;
    int atteso;
  } casi[] = {{"1.10", "1.9", 1},
              {"1.2", "1.2.0", 0},
              {"2.0.1", "2.0", 1},
              {"1, 2, 3", "1.2.3", 0},
              {"1.2b", "1.2a", 1},
              {"010.1", "10.01", 0},
              {"99999999999999999999.1", "99999999999999999999.2", -1}};
  for (const auto& c : casi) EXPECT_EQ(ConfrontaVersioni(c.a, c.b), c.atteso) << c.a << " " << c.b;
}

}  // namespace
