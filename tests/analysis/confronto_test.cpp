// The comparison of two snapshots packed from composed records: each case changes one part of a base machine,
// and its text and JSON are compared with tests/data/confronto/<case>.txt and .json.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <optional>
#include <utility>

#include "analysis/confronto.h"
#include "analysis/forma_analisi.h"
#include "esadecimale.h"
#include "collection/scansione.h"
#include "finestra_prova.h"
#include "formats/archivio.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "host/byte_le.h"
#include "macchina_prova.h"
#include "support/files.h"

namespace {

// What a check run packs: the records, the lists and the other files by name; what is left out is not packed.
struct Membri {
  formats::InfoHeader header;
  std::optional<formats::PrefRecord> pref = formats::PrefRecord{};
  formats::ArchivioHeader archivio;
  std::vector<formats::ArchivioLivello> livelli;
  std::map<std::string, formats::ElencoFile> elenchi;
  std::map<std::string, std::string> file;
};

std::string Script(const std::vector<std::string>& livelli) {
  std::string testa(56, '\0'), tabella, nomi;
  host::ScriviLE(testa, 10, static_cast<std::uint16_t>(livelli.size()));
  for (const auto& l : livelli) {
    host::AccodaLE(tabella, static_cast<std::uint16_t>(nomi.size()));
    nomi += l + '\0';
  }
  return testa + tabella + nomi + std::string(30, '\0');
}

Membri Base() {
  Membri m;
  m.header.VersioneOrdelio.Assegna("1.0");
  m.header.FlagErrori = formats::kMancaOrdl2009Exe;
  m.header.SpazioDiscoC = 5e9;
  m.pref->LinguaAttuale.Assegna("Italiano");
  for (const auto& [codice, nome] :
       {std::pair{100, "Kriegler"}, std::pair{101, "Egitto"}, std::pair{102, "Roma"}}) {
    m.livelli.emplace_back().Codice = static_cast<std::int16_t>(codice);
    m.livelli.back().Nome.Assegna(nome);
  }
  m.archivio.TotLivelli = 3;
  m.elenchi["trle.el"] = {5,
                          "C:\\Giochi\\Trle",
                          {"\\tomb4.exe", "\\data\\a.tr4", "\\data\\b.tr4", "\\x.txt", "\\x.txt"},
                          {800, 20, 30, 1, 2}};
  m.elenchi["ordl.el"] = {1, "C:\\Ordelio", {"\\ordl2009.exe"}, {500}};
  m.file = {{"ordeio.txt", "uno\r\ndue\r\n"}, {"script.dat", Script({"DATA\\TITLE", "DATA\\A", "DATA\\B"})}};
  return m;
}

std::string Impacchetta(Membri m, const std::string& nome) {
  m.file["Infofile.bin"] = formats::CodificaInfoHeader(m.header);
  if (m.pref) m.file["ordelio.prf"] = formats::CodificaPreferenze(*m.pref);
  m.file["archivio.qlv"] = formats::CodificaArchivioHeader(m.archivio);
  for (const auto& l : m.livelli) m.file["archivio.qlv"] += formats::CodificaArchivioLivello(l);
  std::vector<std::string> membri;
  for (const auto& [f, byte] : m.file) support::ScriviFileTesto(membri.emplace_back("C:\\" + f), byte);
  for (const auto& [f, e] : m.elenchi) collection::ScriviElencoFile(membri.emplace_back("C:\\" + f), e);
  support::DidascaliaMuta label;
  support::BarraMuta barra;
  // Both snapshots are packed from C:\, the new over the old: what a snapshot leaves out is not listed.
  EXPECT_TRUE(collection::SalvaSnapshot("C:\\" + nome + ".bin", membri,
                                        static_cast<std::int32_t>(membri.size()), label, barra));
  return "C:\\" + nome + ".bin";
}

// A case's name (its expected files) and what it changes in the new snapshot.
const std::pair<const char*, std::function<void(Membri&)>> kCasi[] = {
    {"identici", [](Membri&) {}},
    {"record",
     [](Membri& m) {
       m.header.FlagErrori = formats::kMancaScriptDat;
       m.header.VersioneOrdelio.Assegna("1.1");
       m.header.SpazioDiscoC = 5e9 + 1;  // the same text in the report: no difference
       m.pref->LinguaAttuale.Assegna("English");
       m.pref->TabellaNonMostrata[7] = 3;
       m.archivio.NVersione = 4;
       m.livelli[0].Note.Assegna("nuova\r\nnota");  // one value over two lines
       m.livelli[1].Codice = 201;                   // met by its name
       m.livelli[2].Codice = 103;                   // another level
       m.livelli[2].Nome.Assegna("Atene");
     }},
    {"elenchi",
     [](Membri& m) {
       m.elenchi["trle.el"] = {4,
                               "c:\\giochi\\trle",
                               {"\\TOMB4.EXE", "\\data\\b.tr4", "\\x.txt", "\\data\\caf\xe9.tr4"},
                               {800, 31, 1, 5}};
       m.elenchi["ordl.el"].CartellaBase = "D:\\Ordelio";
       m.file["ordeio.txt"] = "due\r\ntre\r\n";
       m.file["script.dat"] = Script({"DATA\\B", "data\\title", "DATA\\C", "DATA\\A"});
     }},
    {"membri",
     [](Membri& m) {
       m.file["ordeio.txt"] = "uno\ndue";
       m.file.erase("script.dat");
       m.pref.reset();
     }},
};

TEST(Confronto, EachCaseGivesItsExpectedTextAndJson) {
  for (const auto& [caso, cambia] : kCasi) {
    SCOPED_TRACE(caso);
    MacchinaProva macchina;
    Membri nuovo = Base();
    cambia(nuovo);
    analysis::SnapshotAperto a, b;
    MessaggiProva messaggi;
    ASSERT_TRUE(analysis::ApriSnapshot(Impacchetta(Base(), "vecchio"), "C:\\Dati", a, messaggi));
    ASSERT_TRUE(analysis::ApriSnapshot(Impacchetta(nuovo, "nuovo"), "C:\\Confronto", b, messaggi));
    const analysis::Confronto c = analysis::ConfrontaSnapshot(a, b, messaggi);
    EXPECT_TRUE(messaggi.tutti.empty());
    const std::string radice = std::string(CHECKORDL_DATI_PROVA) + "/confronto/" + caso;
    for (const auto& [estensione, testo] :
         {std::pair{".txt", analysis::TestoConfronto(c)}, std::pair{".json", analysis::JsonConfronto(c)}}) {
      // CHECKORDL_RIGENERA=1 writes what the comparison gives now as the expected texts: for a change
      // of the texts made on purpose, to be read over in the diff before it is committed.
      if (std::getenv("CHECKORDL_RIGENERA")) MacchinaProva::ScriviHost(radice + estensione, testo);
      EXPECT_EQ(testo, MacchinaProva::LeggiHost(radice + estensione)) << radice + estensione;
    }
    // Every line visible in the report area without scrolling sideways.
    EXPECT_LE(RigaPiuLarga(analysis::TestoConfronto(c)), static_cast<std::size_t>(analysis::ColonneAreaProspetto()));
  }
}

}  // namespace
