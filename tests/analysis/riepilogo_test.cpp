// The findings of snapshots made to trip each check (and one that passes them all), as text and as JSON,
// against tests/data/riepilogo/<case>.txt and <case>.json.
// CHECKORDL_RIGENERA=1 rewrites those files from what the code gives now, for a change of wording
// made on purpose; read the diff before committing it.
#include "analysis/riepilogo.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "ambiente_prova.h"
#include "analysis/forma_analisi.h"
#include "analysis/id_esiti.h"
#include "esadecimale.h"
#include "formats/archivio.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "host/byte_le.h"
#include "macchina_prova.h"
#include "support/files.h"

namespace {

std::string Stringa(const std::string& s) {
  return Le32(static_cast<std::int32_t>(s.size())) + s;
}

std::string Elenco(const std::string& base, const std::vector<std::pair<std::string, std::int32_t>>& voci) {
  std::string b = Le32(static_cast<std::int32_t>(voci.size())) + Stringa(base);
  for (const auto& v : voci) b += Stringa(v.first);
  for (const auto& v : voci) b += Le32(v.second);
  return b;
}

// A level script as the editor's compiler writes it: the count at offset 10 and the names' length at 12, a
// table of offsets, the names.
std::string Script(const std::vector<std::string>& livelli) {
  std::string testa(56, '\0'), tabella, nomi;
  for (const auto& l : livelli) {
    host::AccodaLE(tabella, static_cast<std::uint16_t>(nomi.size()));
    nomi += l + '\0';
  }
  host::ScriviLE(testa, 10, static_cast<std::uint16_t>(livelli.size()));
  host::ScriviLE(testa, 12, static_cast<std::uint16_t>(nomi.size()));
  return testa + tabella + nomi;
}

struct Caso {
  formats::InfoHeader h;
  formats::PrefRecord p;
  formats::ArchivioHeader a;
  std::map<std::string, std::string> membri = {
      {"TRLE.el", Elenco("C:\\Giochi\\Trle", {{"\\tomb4.exe", 800000},
                                              {"\\graphics\\vuoto.bmp", 0},
                                              {"\\data\\title.tr4", 1000},
                                              {"\\data\\egypt.TR4", 2000}})},
      {"DirArc.el",
       Elenco(
           "C:\\Ordelio\\Livelli",
           {{"\\leggimi.txt", 5}, {"\\Kriegler\\k.tr4", 9}, {"\\kriegler\\k.tr4", 9}, {"\\Egitto\\e", 9}})},
      {"ORDL.el", Elenco("C:\\Ordelio", {{"\\backup_trle\\tomb4.exe", 4}, {"\\backup_trle\\a.tr4", 3}})},
      {"ordeio.txt", "Kriegler\r\n"},
      {"script.dat", Script({"DATA\\TITLE", "data\\Egypt"})}};
  // Whether the program folder holds the two sample lists.
  bool campioni = false;
  // How many files of the good copy the sample list was made from stand on this computer.
  int copieBuone = 2;

  Caso() {
    h.VersioneOrdelio.Assegna("2.0.1");
    h.SpazioDiscoC = 5e9;
    h.SpazioDiscoMaggiore = 8e9;
    h.DiscoMaggiore.Assegna("D");
    p.PathTRLE.Assegna("c:\\giochi\\TRLE\\");
    a.TotLivelli = 2;
  }
  // The records' members, each with its own value unless the case set it; the archive holds as many level
  // records as its header counts.
  void Completa() {
    std::string archivio = formats::CodificaArchivioHeader(a);
    for (std::int32_t i = 0; i < a.TotLivelli; ++i) archivio += formats::CodificaArchivioLivello({});
    membri.try_emplace("infofile.bin", formats::CodificaInfoHeader(h));
    membri.try_emplace("ordelio.prf", formats::CodificaPreferenze(p));
    membri.try_emplace("Archivio.QLV", archivio);
  }
  std::string Snapshot() {
    Completa();
    std::erase_if(membri, [](const auto& m) { return m.second.empty(); });
    std::string tabella, corpi;
    for (const auto& [nome, byte] : membri) {
      tabella += Stringa("C:\\Utente\\" + nome) + Le32(static_cast<std::int32_t>(byte.size()));
      corpi += byte;
    }
    return Le32(static_cast<std::int32_t>(membri.size())) + tabella + corpi;
  }
};

// The case's snapshot opened and checked, with the sample lists beside the program when it asks for them.
analysis::RiepilogoSnapshot Verifica(Caso& c, MacchinaProva& m) {
  MacchinaProva::ScriviHost(m.C("s.bin"), c.Snapshot());
  EXPECT_TRUE(support::CreaCartella("C:\\Dati"));
  // The good copy of a backup folder that holds tomb4.exe and a.tr4, and its sample lists.
  if (c.copieBuone > 0) MacchinaProva::ScriviHost(m.C("Campione/tomb4.exe"), "1234");
  if (c.copieBuone > 1) MacchinaProva::ScriviHost(m.C("Campione/a.tr4"), "123");
  if (c.campioni) {
    MacchinaProva::ScriviHost(m.C("P/backup_trle.le"),
                              Elenco("C:\\Campione", {{"\\tomb4.exe", 4}, {"\\a.tr4", 3}}));
    MacchinaProva::ScriviHost(m.C("P/trle_cd.le"), Elenco("D:", {}));
  }
  return analysis::ApriEVerifica("C:\\s.bin", "C:\\Dati", "C:\\P", '.');
}

// The findings of the JSON line, one a line: "fail archive.cut: title {evidence}".
std::string Righe(const analysis::RiepilogoSnapshot& r) {
  // Every failure and warning has its words for the user, but those about the supporter's own computer.
  for (const analysis::Esito& e : r.Esiti)
    EXPECT_EQ(e.Livello == analysis::Gravita::pass || e.Id == "backup.no-sample-lists" ||
                  e.Id == "backup.no-good-copy" || e.Id == "rules.unreadable",
              e.Risposta.empty())
        << e.Id;
  std::string righe;
  const auto j = nlohmann::json::parse(analysis::JsonRiepilogo("", r));
  for (const auto& f : j["findings"]) {
    righe += "\n" + f["severity"].get<std::string>() + " " + f["id"].get<std::string>() + ": " +
             f["title"].get<std::string>() + " " + f["evidence"].dump();
    // An id of the table, with one of the severities the table gives it.
    const analysis::VoceEsito* v = analysis::CercaEsito(f["id"].get<std::string>());
    EXPECT_TRUE(v && v->livelli.find(f["severity"].get<std::string>()) != std::string_view::npos) << righe;
  }
  return righe;
}

TEST(Riepilogo, CasiControAttesi) {
  const std::map<std::string, std::function<void(Caso&)>> casi = {
      {"sano", [](Caso& c) { c.campioni = true; }},
      {"flag_e_dischi",
       [](Caso& c) {
         c.h.FlagErrori =
             formats::kMancaArchivioQlv | formats::kMancaOrdelioPrf | formats::kMancaOrdeioTxt | 0x400;
         c.h.VersioneOrdelio.Assegna("");
         c.h.SpazioDiscoC = 100.0 * 1024 * 1024;
         c.h.SpazioDiscoMaggiore = 150.0 * 1024 * 1024;
       }},
      {"editor",
       [](Caso& c) {
         c.membri["script.dat"] = Script({"DATA\\TITLE", "DATA\\TUT1", "\\data\\egypt", "DATA\\TUT1"});
         c.membri["TRLE.el"] =
             Elenco("C:\\Giochi\\Trle\\", {{"\\data\\title.tr4", 1000}, {"\\data\\egypt.tr4", 0}});
         c.p.PathTRLE.Assegna("C:\\Giochi\\Trle2");
       }},
      {"archivio_e_backup",
       [](Caso& c) {
         c.a.TotLivelli = 3;
         c.membri["ORDL.el"] = Elenco("C:\\Ordelio", {{"\\backup_trle\\tomb4.exe", 5}});
         c.campioni = true;
       }},
      // The sample lists without the good copy they were made from: no totals, what to set up.
      {"backup_senza_copia",
       [](Caso& c) {
         c.campioni = true;
         c.copieBuone = 0;
       }},
      {"backup_copia_parziale",
       [](Caso& c) {
         c.campioni = true;
         c.copieBuone = 1;
       }},
      // Ordelio's files on the machine, by its listing, that the check run could not take.
      {"membri_elencati",
       [](Caso& c) {
         c.membri["ordelio.prf"] = "";
         c.membri["Archivio.QLV"] = "";
         c.membri["ORDL.el"] = Elenco(
             "C:\\Ordelio", {{"\\ordl2009.exe", 4}, {"\\Ordelio.PRF", 1}, {"\\dati\\archivio.qlv", 9}});
       }},
      {"membri_mancanti",
       [](Caso& c) {
         c.membri = {
             {"script.dat", Script({"X"})}, {"infofile.bin", ""}, {"ordelio.prf", ""}, {"Archivio.QLV", ""}};
       }},
      // The editor where its 32-bit installer puts it, Ordelio in a OneDrive folder with an accented name,
      // the archive on a long path; names the code page could not show, and one past the path limit.
      {"installazione",
       [](Caso& c) {
         const std::string editor = "C:\\Program Files (x86)\\Core Design\\trle";
         c.membri["TRLE.el"] = Elenco(editor, {{"\\tomb4.exe", 800000},
                                               {"\\data\\title.tr4", 1000},
                                               {"\\data\\egypt.TR4", 2000},
                                               {"\\data\\??????.tr4", 10}});
         c.p.PathTRLE.Assegna(editor);
         c.membri["ORDL.el"] =
             Elenco("C:\\Users\\Mario\\OneDrive\\Documenti\\Perch\xe9", {{"\\ordl2009.exe", 4}});
         const std::string archivio = "C:\\" + std::string(240, 'L');
         c.membri["DirArc.el"] =
             Elenco(archivio, {{"\\Kriegler\\k.tr4", 9}, {"\\Egitto\\" + std::string(30, 'e') + ".tr4", 9}});
       }},
      // The planted environment over an editor below Documents; script.dat was held open by another program.
      {"ambiente",
       [](Caso& c) {
         const std::string editor = "C:\\Users\\Mario\\Documents\\Trle";
         c.membri["TRLE.el"] = Elenco(editor, {{"\\tomb4.exe", 800000}, {"\\data\\title.tr4", 1000}});
         c.p.PathTRLE.Assegna(editor);
         c.membri["script.dat"] = "";
         c.membri["ambiente.json"] = formats::CodificaAmbiente(AmbienteProva());
       }},
      // A clean machine gives a few pass lines, Controlled Folder Access that only audits a note; a member
      // that is no JSON one warning and nothing else.
      {"ambiente_pulito",
       [](Caso& c) {
         formats::Ambiente a = AmbienteProva();
         a.windows.accessoControllato = 2;
         a.eseguibili.resize(1);
         a.eseguibili[0].eseguibile.zona = host::kZonaNessuna;
         a.eseguibili[0].eseguibile.livelli.clear();
         a.eseguibili[0].eseguibile.importazioni.resize(1);
         a.membriVirtuali.clear();
         a.fileVirtuali.clear();
         a.fileVirtualiTotale = 0;
         a.nonLetti.clear();
         c.membri["ambiente.json"] = formats::CodificaAmbiente(a);
       }},
      {"ambiente_illeggibile", [](Caso& c) { c.membri["ambiente.json"] = "{\"format\": 1, \"program\": "; }},
      // Lists that cannot be read leave their checks out; without ordl2009.exe no version is expected.
      // The files of a walk through damaged snapshots: a script.dat of random bytes, an archive cut to 1,500
      // bytes whose header counts 2 levels; and records of other lengths.
      {"danneggiati",
       [](Caso& c) {
         c.Completa();
         c.membri["script.dat"] =
             MacchinaProva::LeggiHost(CHECKORDL_DATI_PROVA "/riepilogo/script_casuale.bin");
         c.membri["Archivio.QLV"].resize(1500);
         c.membri["infofile.bin"].pop_back();
         c.membri["ordelio.prf"] += "\r\n";
       }},
      {"elenchi_rotti_senza_ordl2009",
       [](Caso& c) {
         c.membri["TRLE.el"] = Le32(1000) + Stringa("C:\\x") + Stringa("\\tomb4.exe");
         c.membri["DirArc.el"] = Le32(-1);
         c.h.FlagErrori = formats::kMancaOrdl2009Exe;
         c.h.VersioneOrdelio = {};
         c.h.DiscoMaggiore.Assegna("c");
       }},
  };
  const std::string cartella = std::string(CHECKORDL_DATI_PROVA) + "/riepilogo/";
  const bool riscrivi = std::getenv("CHECKORDL_RIGENERA") != nullptr;
  for (const auto& [nome, prepara] : casi) {
    SCOPED_TRACE(nome);
    MacchinaProva m;
    Caso c;
    prepara(c);
    const auto r = Verifica(c, m);
    Righe(r);
    const std::string testo = analysis::TestoRiepilogo(r);
    const std::string json = analysis::JsonRiepilogo("C:\\s.bin", r) + "\n";
    const auto j = nlohmann::json::parse(json);
    ASSERT_EQ(j["findings"].size(), r.Esiti.size());
    if (riscrivi) {
      MacchinaProva::ScriviHost(cartella + nome + ".txt", testo);
      MacchinaProva::ScriviHost(cartella + nome + ".json", json);
    }
    EXPECT_EQ(testo, MacchinaProva::LeggiHost(cartella + nome + ".txt"));
    EXPECT_LE(RigaPiuLarga(testo), static_cast<std::size_t>(analysis::ColonneAreaProspetto()));
    EXPECT_EQ(SenzaSpazi(analysis::TestoRiepilogo(r, 0)), SenzaSpazi(testo));
    EXPECT_EQ(json, MacchinaProva::LeggiHost(cartella + nome + ".json"));
  }
}

// A member its reader refuses gives its area's finding, no finding that passes over it, and counts as
// present; the checks of the other members run as ever. The cases are tests/data/riepilogo/danneggiati.tab.
TEST(Riepilogo, MembriDanneggiati) {
  for (const auto& d : LeggiTabella("riepilogo/danneggiati.tab")) {
    SCOPED_TRACE(d[0]);
    MacchinaProva m;
    Caso c;
    c.Completa();
    std::string& byte = c.membri[d[1]];
    const auto n = [&] { return static_cast<std::size_t>(std::stol(d[3])); };
    if (d[2] == "cut") byte.resize(d[3].starts_with('-') ? byte.size() + n() : n());
    if (d[2] == "add") byte += d[3];
    if (d[2] == "at") byte.replace(n(), 4, "\xff\xff\xff\xff");
    if (d[2] == "file") byte = MacchinaProva::LeggiHost(CHECKORDL_DATI_PROVA "/riepilogo/" + d[3]);
    const std::string righe = Righe(Verifica(c, m));
    const std::size_t riga = righe.find("\n" + d[4] + ":");
    ASSERT_NE(riga, std::string::npos) << righe;
    EXPECT_NE(righe.substr(riga, righe.find('\n', riga + 1) - riga).find(d[5]), std::string::npos) << righe;
    std::istringstream assenti(d[6] + " member.missing");
    for (std::string id; assenti >> id;)
      EXPECT_EQ(righe.find(" " + id + ":"), std::string::npos) << id << righe;
    for (const char* id : {"\npass member.all-present:", "\npass editor.tomb4-present:"})
      EXPECT_NE(righe.find(id), std::string::npos) << righe;
  }
}

// The README's table of findings is the code's: each row once, in the same order, with the same severities
// and words.
TEST(Riepilogo, IdNelReadme) {
  std::istringstream readme(MacchinaProva::LeggiHost(CHECKORDL_DATI_PROVA "/../../README.md"));
  std::vector<std::string> righe, attese;
  bool dentro = false;
  for (std::string riga; std::getline(readme, riga);) {
    if (riga.starts_with("## ")) dentro = riga == "## Findings";
    if (dentro && riga.starts_with("| `")) righe.push_back(riga);
  }
  for (const analysis::VoceEsito& v : analysis::kEsitiNoti)
    attese.push_back("| `" + std::string(v.id) + "` | " + std::string(v.livelli) + " | " +
                     std::string(v.descrizione) + " |");
  EXPECT_EQ(righe, attese);
}

// Every hostile snapshot of the snapshot tests gives findings, or the reason it could not be read.
// So does a header whose disk figures are no numbers (found by the fuzzer).
TEST(Riepilogo, SnapshotOstili) {
  auto casi = LeggiCasi("snapshot/ostili.hex");
  casi.push_back(
      {{"spazio_nan"}, MacchinaProva::LeggiHost(CHECKORDL_DATI_PROVA "/riepilogo/spazio_nan.bin")});
  for (const auto& c : casi) {
    SCOPED_TRACE(c.campi[0]);
    MacchinaProva m;
    MacchinaProva::ScriviHost(m.C("s.bin"), c.byte);
    ASSERT_TRUE(support::CreaCartella("C:\\R"));
    const auto r = analysis::ApriEVerifica("C:\\s.bin", "C:\\R", "C:\\", '.');
    ASSERT_FALSE(r.Esiti.empty());
    EXPECT_EQ(r.Errore.empty(), r.Esiti[0].Id != "snapshot.unreadable");
  }
}

// ---- The low-space threshold of the findings ----
// Exactly 200 Mb free on a drive is enough; one byte less is little.
TEST(Riepilogo, SogliaDelloSpazioLibero) {
  constexpr double kSoglia = 200.0 * 1024 * 1024;
  for (const auto& [libero, atteso] : {std::pair{kSoglia, "\npass disk.space-ok:"},
                                       std::pair{kSoglia - 1, "\nwarn disk.low-space: Drive C:"}}) {
    MacchinaProva m;
    Caso c;
    c.h.SpazioDiscoC = libero;
    const std::string righe = Righe(Verifica(c, m));
    EXPECT_NE(righe.find(atteso), std::string::npos) << righe;
  }
}
// ---- end of the low-space threshold ----

}  // namespace
