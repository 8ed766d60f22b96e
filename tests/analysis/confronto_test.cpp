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
#include "analysis/riepilogo.h"
#include "collection/scansione.h"
#include "esadecimale.h"
#include "finestra_prova.h"
#include "formats/ambiente.h"
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

void ConAmbiente(Membri& m, const formats::Ambiente& a) {
  m.file["ambiente.json"] = formats::CodificaAmbiente(a);
}

// An x86 executable that imports nothing.
formats::EseguibileAmbiente Senza(formats::CartellaEseguibile cartella, const std::string& percorso) {
  return {cartella, {percorso, host::MacchinaPe::x86, {}, "", {}}};
}

// The machine around the installations, as a check run records it.
formats::Ambiente Ambiente(const std::string& data, int scarto) {
  formats::Ambiente a;
  a.programma = "CheckORDL";
  a.versioneProgramma = "2.0";
  a.bitProgramma = 32;
  a.dataLocale = data;
  a.scartoUtcMinuti = scarto;
  a.windows = {
      "Windows 10 Pro", "22H2", 10, 0, 19045, true, true, false, "", true, true, 1252, 96, 0, 2, true};
  using enum host::Origine;
  const auto tomb4 = [](std::vector<host::DllImportata> dll) {
    return formats::EseguibileAmbiente{
        formats::CartellaEseguibile::editor,
        {"C:\\Giochi\\Trle\\tomb4.exe", host::MacchinaPe::x86, std::move(dll), "", {}}};
  };
  a.eseguibili = {tomb4({{"d3dx9_43.dll", nonTrovata, ""},
                         {"XINPUT1_3.dll", sistema, "C:\\windows\\syswow64\\xinput1_3.dll"},
                         {"api-ms-win-crt-runtime-l1-1-0.dll", apiSet, ""},
                         {"bass.dll", cartellaEseguibile, "C:\\Giochi\\Trle\\bass.dll", 3},
                         {"msvcr71.dll", cartellaWindows, "C:\\windows\\msvcr71.dll"}}),
                  Senza(formats::CartellaEseguibile::editor, "C:\\Giochi\\Trle\\ngle.exe"),
                  Senza(formats::CartellaEseguibile::ordelio, "C:\\Ordelio\\ordl2009.exe"),
                  Senza(formats::CartellaEseguibile::editor, "C:\\Giochi\\Trle\\uninstall.exe"),
                  Senza(formats::CartellaEseguibile::ordelio, "C:\\Ordelio\\uninstall.exe")};
  a.eseguibili[0].eseguibile.livelli = {{"HKCU", "~ RUNASADMIN WINXPSP3"}};
  return a;
}

std::string Script(const std::vector<std::string>& livelli) {
  std::string testa(56, '\0'), tabella, nomi;
  host::ScriviLE(testa, 10, static_cast<std::uint16_t>(livelli.size()));
  for (const auto& l : livelli) {
    host::AccodaLE(tabella, static_cast<std::uint16_t>(nomi.size()));
    nomi += l + '\0';
  }
  host::ScriviLE(testa, 12, static_cast<std::uint16_t>(nomi.size()));
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

// A case's name (its expected files), what it changes in the new snapshot, and the old one's environment
// where it records one.
struct Caso {
  const char* nome;
  std::function<void(Membri&)> cambia;
  std::string ambienteVecchio = {};
};
const Caso kCasi[] = {
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
    // A value that looks like the next field's line is still one value.
    {"valore_come_etichetta", [](Membri& m) { m.livelli[0].Note.Assegna("vedi\r\nNumeroCd: 9"); }},
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
    // The old snapshot has no environment (an older program made it); the new one's is the base machine.
    {"ambiente_solo_nuovo", [](Membri& m) { ConAmbiente(m, Ambiente("2026-11-25T17:05:03", 60)); }},
    {"ambiente_cambiato",
     [](Membri& m) {
       formats::Ambiente a = Ambiente("2026-11-25T11:30:00", 0);
       a.windows.prodotto = "Windows 11 Pro";
       a.windows.rilascio = "23H2";
       a.windows.build = 22631;
       a.windows.accessoControllato = 1;
       a.fileVirtualiTotale = 12;
       host::Eseguibile& e = a.eseguibili[0].eseguibile;
       e.importazioni[0] = {"D3DX9_43.DLL", host::Origine::sistema, "C:\\windows\\syswow64\\d3dx9_43.dll"};
       e.importazioni[1] = {"xinput1_3.dll", host::Origine::nonTrovata, ""};
       e.importazioni[3].zona = host::kZonaNessuna;
       e.importazioni[4].percorso = "C:\\WINDOWS\\MSVCR71.DLL";  // the same file
       e.importazioni.erase(e.importazioni.begin() + 2);
       e.importazioni.push_back(
           {"dinput8.dll", host::Origine::sistema, "C:\\windows\\syswow64\\dinput8.dll"});
       e.livelli = {{"HKCU", "~ RUNASADMIN"}, {"HKLM (32-bit)", "HIGHDPIAWARE"}};
       e.zona = 3;
       a.eseguibili[1].eseguibile.macchina = host::MacchinaPe::x64;
       a.eseguibili[4].eseguibile.problema = "not a program";  // a name both folders hold
       a.eseguibili.erase(a.eseguibili.begin() + 2);
       a.eseguibili.push_back(Senza(formats::CartellaEseguibile::ordelio, "D:\\Ordelio\\setup.exe"));
       ConAmbiente(m, a);
     },
     // Later by its local time, earlier in UTC: the new snapshot is the newer.
     formats::CodificaAmbiente(Ambiente("2026-11-25T12:00:00", 120))},
    // Earlier by its local time, later in UTC.
    {"ambiente_vecchio_piu_recente", [](Membri& m) { ConAmbiente(m, Ambiente("2026-11-25T11:00:00", 60)); },
     formats::CodificaAmbiente(Ambiente("2026-11-25T10:00:00", -120))},
    {"ambiente_illeggibile", [](Membri& m) { ConAmbiente(m, Ambiente("2026-11-25T11:00:00", 60)); },
     "{\"format\": 1"},
};

TEST(Confronto, EachCaseGivesItsExpectedTextAndJson) {
  for (const auto& [caso, cambia, ambienteVecchio] : kCasi) {
    SCOPED_TRACE(caso);
    MacchinaProva macchina;
    Membri vecchio = Base(), nuovo = Base();
    if (!ambienteVecchio.empty()) vecchio.file["ambiente.json"] = ambienteVecchio;
    cambia(nuovo);
    analysis::SnapshotAperto a, b;
    MessaggiProva messaggi;
    ASSERT_TRUE(analysis::ApriSnapshot(Impacchetta(vecchio, "vecchio"), "C:\\Dati", a, messaggi));
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
    EXPECT_LE(RigaPiuLarga(analysis::TestoConfronto(c)),
              static_cast<std::size_t>(analysis::ColonneAreaProspetto()));
    EXPECT_EQ(SenzaSpazi(analysis::TestoConfronto(c, 0)), SenzaSpazi(analysis::TestoConfronto(c)));
  }
}

}  // namespace

namespace {

// The findings of a snapshot opened apart say when it was made, where it says so, as the comparison does.
TEST(Confronto, FindingsNameTheSnapshotsDate) {
  for (const bool conAmbiente : {false, true}) {
    MacchinaProva macchina;
    Membri m = Base();
    if (conAmbiente) ConAmbiente(m, Ambiente("2026-11-25T17:05:03", 60));
    const std::string snapshot = Impacchetta(m, "s");
    ASSERT_TRUE(support::CreaCartella("C:\\F"));
    const analysis::RiepilogoSnapshot r = analysis::ApriEVerifica(snapshot, "C:\\F", "C:\\P", '.');
    const std::string data = "2026-11-25 17:05:03 (UTC+01:00)";
    EXPECT_EQ(analysis::TestoRiepilogo(r).starts_with("Snapshot made: " + data + "\r\nFindings: "),
              conAmbiente);
    EXPECT_EQ(analysis::JsonRiepilogo(snapshot, r).find(",\"made\":\"" + data + "\",") != std::string::npos,
              conAmbiente);
  }
}

}  // namespace
