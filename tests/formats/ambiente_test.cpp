// The environment member: a record with every field set goes to the JSON of tests/data/ambiente/pieno.json
// and back unchanged; documents no check run writes are refused with the field and the reason.
#include "formats/ambiente.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <nlohmann/json.hpp>

#include "macchina_prova.h"

namespace {

using formats::Ambiente;

const std::string kPieno = std::string(CHECKORDL_DATI_PROVA) + "/ambiente/pieno.json";

// Every field away from its default; paths with letters of Windows-1252 beyond ASCII.
Ambiente Pieno() {
  Ambiente a;
  a.programma = "CheckORDL";
  a.versioneProgramma = "1.0.0";
  a.bitProgramma = 32;
  a.dataLocale = "2026-11-25T17:05:03";
  a.scartoUtcMinuti = -330;
  host::SistemaWindows& w = a.windows;
  w = {.prodotto = "Windows 10 Pro",
       .rilascio = "22H2",
       .maggiore = 10,
       .minore = 1,
       .build = 19045,
       .windows64 = true,
       .wow64 = true,
       .wine = true,
       .versioneWine = "wine-9.0",
       .uac = true,
       .virtualizzazione = true,
       .codePage = 1252,
       .dpi = 144,
       .accessoControllato = 1,
       .dep = 2,
       .zoneLeggibili = true};
  host::Eseguibile e;
  e.percorso = "C:\\Giochi\\Tomb Raider \xe8\\tomb4.exe";
  e.macchina = host::MacchinaPe::x86;
  e.importazioni = {{"d3dx9_43.dll", host::Origine::nonTrovata, "", host::kZonaNessuna},
                    {"binkw32.dll", host::Origine::cartellaEseguibile, "C:\\Giochi\\binkw32.dll", 3},
                    {"KERNEL32.dll", host::Origine::sistema, "C:\\windows\\syswow64\\kernel32.dll", 0},
                    {"winhlp32.exe", host::Origine::cartellaWindows, "C:\\windows\\winhlp32.exe", 1},
                    {"api-ms-win-crt-runtime-l1-1-0.dll", host::Origine::apiSet, "", 2}};
  e.problema = "the import table was cut";
  e.livelli = {{"HKCU", "~ RUNASADMIN WINXPSP3"}, {"HKLM (32-bit)", "HIGHDPIAWARE"}};
  e.zona = 3;
  a.eseguibili = {{formats::CartellaEseguibile::editor, e}, {}, {}};
  a.eseguibili[1] = {formats::CartellaEseguibile::ordelio, {}};
  a.eseguibili[1].eseguibile.percorso = "C:\\Ordl\\x.exe";
  a.eseguibili[1].eseguibile.macchina = host::MacchinaPe::altra;
  a.eseguibili[1].eseguibile.zona = 4;
  a.eseguibili[2].eseguibile.percorso = "C:\\Ordl\\y.exe";
  a.eseguibili[2].eseguibile.macchina = host::MacchinaPe::x64;
  a.membriVirtuali = {"C:\\Program Files (x86)\\Trle\\script.dat"};
  a.fileVirtuali = {"C:\\Program Files (x86)\\Trle\\data\\karnak.tr4",
                    "C:\\Program Files (x86)\\Trle\\\xe0.txt"};
  a.fileVirtualiTotale = 5;
  a.nonLetti = {{"C:\\Trle\\ordeio.txt", 32}};
  return a;
}

TEST(Ambiente, TuttiICampiAndataERitorno) {
  const std::string json = formats::CodificaAmbiente(Pieno());
  if (std::getenv("CHECKORDL_RIGENERA")) MacchinaProva::ScriviHost(kPieno, json);
  EXPECT_EQ(json, MacchinaProva::LeggiHost(kPieno));
  Ambiente letto;
  std::string motivo;
  ASSERT_TRUE(formats::DecodificaAmbiente(json, &letto, &motivo)) << motivo;
  EXPECT_EQ(formats::CodificaAmbiente(letto), json);
  EXPECT_EQ(letto.eseguibili[0].eseguibile.percorso, Pieno().eseguibili[0].eseguibile.percorso);
}

// Each row changes the full document at one place (a JSON pointer): a new value, or "-" to remove the
// field; the reason it is refused with, "" for a document that is still read.
TEST(Ambiente, DocumentiCambiati) {
  const struct {
    const char* dove;
    const char* valore;
    const char* motivo;
  } righe[] = {
      {"/format", "2", ""},
      {"/later_field", "{\"a\": [1, 2]}", ""},
      {"/windows/controlled_folder_access", "null", ""},
      {"/format", "0", "format: out of range"},
      {"/format", "\"1\"", "format: not a whole number"},
      {"/program", "-", "program: missing"},
      {"/program", "[]", "program: not an object"},
      {"/program/bits", "48", "program.bits: neither 32 nor 64"},
      {"/program/name", "7", "program.name: not a text"},
      {"/made/local", "\"2026-13-01T00:00:00\"", "made.local: not a date and time"},
      {"/made/local", "\"yesterday\"", "made.local: not a date and time"},
      {"/made/utc_offset_minutes", "100000", "made.utc_offset_minutes: out of range"},
      {"/windows/build", "-1", "windows.build: out of range"},
      {"/windows/build", "18446744073709551615", "windows.build: out of range"},
      {"/windows/dpi", "1.5", "windows.dpi: not a whole number"},
      {"/windows/wow64", "1", "windows.wow64: not true or false"},
      {"/executables/0/machine", "\"arm\"", "executables.machine: not a known word"},
      {"/executables/0/zone", "9", "executables.zone: out of range"},
      {"/executables/0/imports/0/found", "\"somewhere\"", "executables.imports.found: not a known word"},
      {"/executables/1", "\"tomb4.exe\"", "executables.: not an object"},
      {"/virtual_store/listed_total", "1", "virtual_store.listed_total: fewer than the paths listed"},
      {"/virtual_store/members", "[3]", "virtual_store.members: holds something that is not a path"},
      {"/unread_members/0/error", "-5", "unread_members.error: out of range"},
  };
  const auto pieno = nlohmann::json::parse(formats::CodificaAmbiente(Pieno()));
  for (const auto& r : righe) {
    SCOPED_TRACE(std::string(r.dove) + " = " + r.valore);
    auto j = pieno;
    const nlohmann::json::json_pointer p(r.dove);
    if (std::string(r.valore) == "-")
      j.at(p.parent_pointer()).erase(p.back());
    else
      j[p] = nlohmann::json::parse(r.valore);
    Ambiente a;
    std::string motivo;
    EXPECT_EQ(formats::DecodificaAmbiente(j.dump(), &a, &motivo), *r.motivo == '\0');
    EXPECT_EQ(motivo, r.motivo);
  }
}

// Bytes that are no such document at all, and lists longer than any check run writes.
TEST(Ambiente, ByteRifiutati) {
  const auto pieno = nlohmann::json::parse(formats::CodificaAmbiente(Pieno()));
  auto molti = pieno;
  molti["executables"] = nlohmann::json::array();
  for (int i = 0; i < 129; ++i) molti["executables"].push_back(pieno["executables"][1]);
  auto importazioni = pieno;
  importazioni["executables"][0]["imports"] = nlohmann::json::array();
  for (int i = 0; i < 10000; ++i)
    importazioni["executables"][0]["imports"].push_back(pieno["executables"][0]["imports"][0]);
  const std::pair<std::string, const char*> casi[] = {
      {"", "not JSON"},
      {"{\"format\": 1", "not JSON"},
      {"{\"format\": \"\xe8\"}", "not JSON"},  // Windows-1252 where UTF-8 belongs
      {"[1]", "not a JSON object"},
      {std::string(1000, '[') + std::string(1000, ']'), "nested too deeply"},
      {"{\"a\": \"[[[[[[[[[[[[\", \"format\": 1}", "program: missing"},  // brackets inside a text do not nest
      {molti.dump(), "executables: too many entries"},
      {importazioni.dump(), "executables.imports: too many entries"},
  };
  for (const auto& [byte, motivo] : casi) {
    SCOPED_TRACE(motivo);
    Ambiente a;
    std::string perche;
    EXPECT_FALSE(formats::DecodificaAmbiente(byte, &a, &perche));
    EXPECT_EQ(perche, motivo);
  }
}

}  // namespace
