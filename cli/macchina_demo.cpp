#include "macchina_demo.h"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

#include "collection/scansione.h"
#include "formats/archivio.h"
#include "formats/preferenze.h"
#include "host/macchina.h"
#include "support/files.h"

namespace cli {

extern const std::string_view kDemo_ordl2009;
extern const std::string_view kDemo_tomb4;

namespace {

// Bytes that look like level data: deterministic, so that two demo machines are alike.
std::string Riempitivo(std::size_t n, unsigned seme) {
  std::string s(n, '\0');
  for (std::size_t i = 0; i < n; ++i) {
    seme = seme * 1103515245u + 12345u;
    s[i] = static_cast<char>(seme >> 16);
  }
  return s;
}

std::string Le16(int v) {
  return {static_cast<char>(v & 0xFF), static_cast<char>((v >> 8) & 0xFF)};
}

// A compiled script naming these levels: the head, the offsets of the names, the names.
std::string Script(const std::vector<std::string>& livelli) {
  std::string nomi, tabella;
  for (const auto& l : livelli) {
    tabella += Le16(static_cast<int>(nomi.size()));
    nomi += l + '\0';
  }
  std::string testa = std::string(10, '\0') + Le16(static_cast<int>(livelli.size())) +
                      Le16(static_cast<int>(nomi.size())) + std::string(42, '\0');
  return testa + tabella + nomi + std::string(40, '\0');
}

std::string Registro() {
  return "WINE REGISTRY Version 2\n"
         ";; All keys relative to \\\\Machine\n\n"
         "#arch=win64\n\n"
         "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion] 1700000000\n"
         "\"ProgramFilesDir\"=\"C:\\\\Program Files\"\n\n"
         "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\App Paths\\\\ordl2009.exe] 1700000000\n"
         "@=\"C:\\\\Ordelio\\\\ordl2009.exe\"\n\n"
         "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\App Paths\\\\tomb4.exe] 1700000000\n"
         "@=\"C:\\\\Giochi\\\\Trle\\\\tomb4.exe\"\n";
}

// The mark of a demo machine, written before anything else so that a demo cut short may be made again.
constexpr const char* kMarca = "checkordl-demo.txt";
constexpr std::string_view kTestoMarca =
    "A demo machine made by \"checkordl-cli demo\"; the demo may be made again in this folder.\n";

}  // namespace

bool CartellaPerDemo(const std::string& cartella) {
  namespace fs = std::filesystem;
  std::error_code ec;
  const fs::file_status s = fs::status(cartella, ec);
  if (s.type() == fs::file_type::not_found) return true;
  if (ec || s.type() != fs::file_type::directory) return false;
  if (fs::directory_iterator(cartella, ec) == fs::directory_iterator()) return !ec;
  const fs::path marca = fs::path(cartella) / kMarca;
  if (fs::symlink_status(marca, ec).type() != fs::file_type::regular) return false;
  std::ifstream in(marca, std::ios::binary);
  std::string testo(kTestoMarca.size() + 1, '\0');
  in.read(testo.data(), static_cast<std::streamsize>(testo.size()));
  testo.resize(static_cast<std::size_t>(in.gcount()));
  return testo == kTestoMarca;
}

bool CreaMacchinaDemo(const std::string& cartella, std::string* errore) {
  namespace fs = std::filesystem;
  std::error_code ec;
  fs::create_directories(cartella, ec);
  std::ofstream marca(cartella + "/" + kMarca, std::ios::binary | std::ios::trunc);
  marca << kTestoMarca;
  marca.close();
  if (ec || !marca) {
    *errore = "cannot make the demo machine in " + cartella;
    return false;
  }
  fs::create_directories(cartella + "/dosdevices", ec);
  fs::create_directories(cartella + "/drive_c", ec);
  if (!fs::exists(cartella + "/dosdevices/c:", ec))
    fs::create_directory_symlink("../drive_c", cartella + "/dosdevices/c:", ec);
  if (ec) {
    *errore = "cannot make the prefix in " + cartella + ": " + ec.message();
    return false;
  }
  // The registry belongs to the prefix, not to any drive: it is written as the host file it is.
  std::ofstream reg(cartella + "/system.reg", std::ios::binary | std::ios::trunc);
  reg << Registro();
  reg.close();
  if (!reg) {
    *errore = "cannot write the registry of " + cartella;
    return false;
  }
  host::UsaPrefisso(cartella);

  bool ok = true;
  const auto dir = [&](const std::string& p) { ok = support::CreaCartella(p) && ok; };
  const auto file = [&](const std::string& p, std::string_view byte) {
    ok = support::ScriviFileTesto(p, std::string(byte)) && ok;
  };
  for (const char* d :
       {"C:\\Giochi", "C:\\Giochi\\Trle", "C:\\Giochi\\Trle\\data", "C:\\Giochi\\Trle\\graphics",
        "C:\\Ordelio", "C:\\Ordelio\\Livelli", "C:\\Ordelio\\Livelli\\Kriegler",
        "C:\\Ordelio\\Livelli\\Egitto", "C:\\Ordelio\\backup_trle", "C:\\Ordelio\\backup_trle\\data"})
    dir(d);

  // The level editor.
  file("C:\\Giochi\\Trle\\tomb4.exe", kDemo_tomb4);
  // The script names one level more than the data folder holds: the game stops when it gets there.
  const std::vector<std::string> livelli = {"DATA\\TITLE", "DATA\\KRIEGLER", "DATA\\EGYPT", "DATA\\TUT1"};
  unsigned seme = 0;
  for (const char* l : {"title", "kriegler", "egypt"}) {
    ++seme;
    file(std::string("C:\\Giochi\\Trle\\data\\") + l + ".tr4", Riempitivo(20000 + 7000 * seme, seme));
  }
  // The level that the user installs between the two check runs, gone from a demo made before.
  ok = support::CancellaFile("C:\\Giochi\\Trle\\data\\tut1.tr4") && ok;
  file("C:\\Giochi\\Trle\\graphics\\load.bmp", Riempitivo(3000, 9));
  file("C:\\Giochi\\Trle\\script.dat", Script(livelli));
  file("C:\\Giochi\\Trle\\ordeio.txt", "Livelli installati da Ordelio\r\nKriegler\r\nEgitto\r\n");

  // The archive manager, its settings and its archive.
  file("C:\\Ordelio\\ordl2009.exe", kDemo_ordl2009);
  formats::PrefRecord pref;
  formats::ImpostaDefaultPreferenze(pref, false);
  pref.PathArchivio.Assegna("C:\\Ordelio\\archivio.qlv");
  pref.PathTRLE.Assegna("C:\\Giochi\\Trle");
  pref.LinguaAttuale.Assegna("Italiano");
  pref.LinguaDatDefault.Assegna("italian.dat");
  pref.DateLastUpdating = 45000.5;
  file("C:\\Ordelio\\ordelio.prf", formats::CodificaPreferenze(pref));

  formats::ArchivioHeader h;
  h.NVersione = 3;
  h.MainDir.Assegna("C:\\Ordelio");
  h.SecondaryDir.Assegna("C:\\Ordelio\\Livelli");
  h.TotLivelli = 2;
  h.TotCD = 1;
  h.SizeMainDir = 123456789;
  h.SizeSecondayDir = 54321;
  std::string archivio = formats::CodificaArchivioHeader(h);
  const char* nomi[] = {"Castello Kriegler", "Egitto"};
  for (int i = 0; i < 2; ++i) {
    formats::ArchivioLivello v;
    v.Nome.Assegna(nomi[i]);
    v.Autore_Nome.Assegna("Autore demo");
    v.Autore_Email.Assegna("autore@example.invalid");
    v.Codice = static_cast<std::int16_t>(100 + i);
    v.NumeroCd = 1;
    v.SizeFiles = 27000 + i;
    archivio += formats::CodificaArchivioLivello(v);
  }
  file("C:\\Ordelio\\archivio.qlv", archivio);
  file("C:\\Ordelio\\Livelli\\Kriegler\\kriegler.tr4", Riempitivo(27000, 2));
  file("C:\\Ordelio\\Livelli\\Egitto\\egypt.tr4", Riempitivo(34000, 3));

  // A backup of the editor's files, one missing and one grown, as the analysis will find them.
  file("C:\\Ordelio\\backup_trle\\tomb4.exe", kDemo_tomb4);
  file("C:\\Ordelio\\backup_trle\\script.dat", Script(livelli) + "in piu");
  file("C:\\Ordelio\\backup_trle\\data\\title.tr4", Riempitivo(27000, 1));

  // The supporter's good copy of that folder, beside the installations, and the two lists that the
  // analysis compares the user's backup with.
  for (const char* d : {"C:\\Supporto", "C:\\Supporto\\backup_trle", "C:\\Supporto\\backup_trle\\data"})
    dir(d);
  file("C:\\Supporto\\backup_trle\\tomb4.exe", kDemo_tomb4);
  file("C:\\Supporto\\backup_trle\\script.dat", Script(livelli));
  file("C:\\Supporto\\backup_trle\\data\\title.tr4", Riempitivo(27500, 1));
  file("C:\\Supporto\\backup_trle\\data\\tut1.tr4", Riempitivo(1500, 4));

  if (!ok) *errore = "cannot write the sample installations into " + cartella;
  return ok;
}

bool CreaElenchiDemo(const std::string& cartella) {
  const std::string base = "C:\\Supporto\\backup_trle";
  formats::ElencoFile campione;
  campione.CartellaBase = base;
  for (const char* nome : {"\\tomb4.exe", "\\script.dat", "\\data\\title.tr4", "\\data\\tut1.tr4"}) {
    int err = 0;
    campione.NomiFile.emplace_back(nome);
    campione.DimensioniFile.push_back(static_cast<std::int32_t>(host::LunghezzaFile(base + nome, &err)));
  }
  campione.NumeroFile = static_cast<std::int32_t>(campione.NomiFile.size());
  // The CD had an older title level: the size the user's backup still has.
  formats::ElencoFile cd;
  cd.CartellaBase = "D:\\";
  cd.NomiFile = {"\\tomb4.exe", "\\data\\title.tr4"};
  cd.DimensioniFile = {static_cast<std::int32_t>(kDemo_tomb4.size()), 27000};
  cd.NumeroFile = 2;
  return collection::ScriviElencoFile(cartella + "\\backup_trle.le", campione) &&
         collection::ScriviElencoFile(cartella + "\\trle_cd.le", cd);
}

bool CambiaMacchinaDemo() {
  bool ok = support::ScriviFileTesto("C:\\Giochi\\Trle\\data\\tut1.tr4", Riempitivo(1500, 4));
  ok = support::ScriviFileTesto("C:\\Giochi\\Trle\\ordeio.txt",
                                "Livelli installati da Ordelio\r\nKriegler\r\nEgitto\r\nTutorial\r\n") &&
       ok;
  ok = support::ScriviFileTesto("C:\\Giochi\\Trle\\script.dat",
                                Script({"DATA\\TITLE", "DATA\\TUT1", "DATA\\KRIEGLER", "DATA\\EGYPT"})) &&
       ok;
  formats::PrefRecord pref;
  ok = formats::LeggiPreferenze("C:\\Ordelio\\ordelio.prf", &pref) && ok;
  pref.LinguaAttuale.Assegna("English");
  return support::ScriviFileTesto("C:\\Ordelio\\ordelio.prf", formats::CodificaPreferenze(pref)) && ok;
}

}  // namespace cli
