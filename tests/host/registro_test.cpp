#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/machine.h"
#include "host/registro.h"
#include "host/registro_file.h"
#include "macchina_prova.h"

// tests/data/registro/system.reg holds lines cut from the system.reg of a real prefix: Wine 8.0 (Debian
// 8.0~repack-4, 64-bit), `WINEPREFIX=... wineboot -i`, then `wine reg add` of the App Paths entries,
// Software\Prova and Software\Wine\Drives, then `wineserver -w`. The header, the CurrentVersion key, the
// Wow6432Node link and an Environment key with str(2) values came with the prefix.

namespace {

const std::string kDati = CHECKORDL_DATI_PROVA "/registro/system.reg";

const host::ChiaveRegistro* Trova(const std::vector<host::ChiaveRegistro>& chiavi, const std::string& nome) {
  for (const auto& k : chiavi)
    if (k.nome == nome) return &k;
  return nullptr;
}

const host::ValoreRegistro* Valore(const host::ChiaveRegistro* k, const std::string& nome) {
  if (!k) return nullptr;
  for (const auto& v : k->valori)
    if (v.nome == nome) return &v;
  return nullptr;
}

std::vector<std::string> Nomi(const host::ChiaveRegistro* k) {
  std::vector<std::string> nomi;
  if (k)
    for (const auto& v : k->valori) nomi.push_back(v.nome);
  return nomi;
}

const std::string kAp = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";

TEST(FileRegistro, ValoriDiUnFileVero) {
  const auto chiavi = host::LeggiFileRegistro(kDati);
  ASSERT_FALSE(chiavi.empty());
  struct Caso {
    std::string chiave, valore;
    int tipo;
    std::string dati;
  };
  const std::string lungo = [] {
    std::string s;
    for (int i = 0; i < 30; ++i) s += "C:\\Cartella";
    return s + "\\ordl2009.exe";
  }();
  const Caso casi[] = {
      {kAp + "ordl2009.exe", "", host::kRegSz, "C:\\Ordelio\\ordl2009.exe"},
      {kAp + "virgolette.exe", "", host::kRegSz, "\"C:\\Ordelio\\ordl2009.exe\" \"%1\""},
      {kAp + "accento.exe", "", host::kRegSz, "C:\\Perch\xe9\\ordl2009.exe"},
      {kAp + "lungo.exe", "", host::kRegSz, lungo},
      {kAp + "espanso.exe", "", host::kRegExpandSz, "%ProgramFiles%\\Ordelio\\ordl2009.exe"},
      {kAp + "numero.exe", "Versione", host::kRegDword, std::string("\xd9\x07\0\0", 4)},
      {kAp + "multi.exe", "Multi", host::kRegMultiSz, std::string("uno\0due\0", 8)},
      {kAp + "multi.exe", "Bin", host::kRegBinary, "\x01\x02\xff"},
      {kAp + "multi.exe", "Nome \"strano\"\\x", host::kRegSz, "tab\ta capo"},
      {kAp + "Perch\xe9.exe", "", host::kRegSz, "x"},
      // U+00E9 padded to four digits before a hex digit, the euro sign, a character the code page lacks.
      {"Software\\Prova\\a]b[c", "x", host::kRegSz,
       "\xe9"
       "a\x80?\t\nq"},
      {"Software\\Prova\\a]b[c", "q", host::kRegQword, std::string("\x05\0\0\0\0\0\0\0", 8)},
      {"System\\CurrentControlSet\\Control\\Session Manager\\Environment", "windir", host::kRegExpandSz,
       "%SystemRoot%"},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.chiave + " / " + c.valore);
    const auto* v = Valore(Trova(chiavi, c.chiave), c.valore);
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->tipo, c.tipo);
    EXPECT_EQ(v->dati, c.dati);
  }

  // A link's target is UTF-16 spread over continuation lines.
  const auto* link = Trova(chiavi, "Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths");
  ASSERT_NE(link, nullptr);
  EXPECT_TRUE(link->collegamento);
  const auto* bersaglio = Valore(link, "SymbolicLinkValue");
  ASSERT_NE(bersaglio, nullptr);
  EXPECT_EQ(bersaglio->tipo, host::kRegLink);
  EXPECT_EQ(host::TestoDaUtf16(bersaglio->dati),
            "\\Registry\\Machine\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths");

  // `wine reg add` of zeta, Beta, alfa, _under, ZZ and the default value, in that order; `wine reg query`
  // lists them as the file has them: lower case decides, so '_' and '[' come before letters.
  EXPECT_EQ(Nomi(Trova(chiavi, kAp + "ordine.exe")),
            (std::vector<std::string>{"", "_under", "alfa", "Beta", "zeta", "ZZ"}));
  EXPECT_EQ(Nomi(Trova(chiavi, "Software\\Prova\\a]b[c")),
            (std::vector<std::string>{"[", "a", "ab", "n", "q", "x", "xm", "Z", "\xe9"}));
}

// Hand-written keys, loaded by Wine 8.0 as a prefix's system.reg (with "#arch=win64" after the header, as a
// 64-bit prefix wants) and listed with `wine reg query`: what it showed is expected here, down to the
// values whose data it called malformed (kept, empty, of no type).
TEST(FileRegistro, ComeWineCaricaUnTestoScrittoAMano) {
  const std::string testo =
      "WINE REGISTRY Version 2\n"
      "\n"
      "\"orfano\"=\"no key yet\"\n"
      "[Software\\\\Esperimento]\n"
      "\"zeta\"=\"1\"\n"
      "\"Alfa\"=\"2\"\n"
      "garbage line here\n"
      "\"beta\"=dword:zz\n"
      "\"gamma\"=dword:123456789\n"
      "\"d2\"=dword:-1\n"
      "\"delta\"=hex:01,0\n"
      "\"eps\"=hex:1 ,2\n"
      "\"ALFA\"=\"3\"\n"
      "@=\"def\"\n"
      "\"multi\"=hex(7):41,00,00,00,42,00,00,00,00,00\n"
      "\"u8\"=\"caff\xc3\xa8\"\n"
      "\"oct\"=\"\\101\\7a\"\n"
      "\"hx\"=\"\\x41\\x4g\\x\"\n"
      "\"cont\"=hex:01,02,\\\n"
      "  03,04\n"
      "\"odd\"=hex(1):41,00,42\n"
      "\"sz16\"=hex(1):41,00,42,00,00,00,43,00,00,00\n"
      "\"troppo\"=hex:100\n"
      "\"coda\"=hex:01,02,\\\n"
      "  zz\n"
      "\"s4\"=str(4):\"ab\"\n"
      "\"aperta\"=\"unterminated\n"
      "\"senza uguale\" \"x\"\n"
      "\n"
      "[software\\\\esperimento] 1234\n"
      "#time=1d\n"
      "#class=\"classe\"\n"
      "\"Zeta\"=\"4\"\n"
      "\"omega\"=str(2):\"5\" trailing\n"
      "\"beta\"=bad\n"
      "[\\\\Software\\\\\\\\Altra\\\\]\n"
      "\"v\"=\"x\"\n"
      "[Software\\\\Chiusa\n"
      "\"persa\"=\"x\"\n"
      "[]\n"
      "\"radice\"=\"r\"\n";
  const auto chiavi = host::AnalizzaTestoRegistro(testo);
  std::vector<std::string> nomi;
  for (const auto& k : chiavi) nomi.push_back(k.nome + "=" + std::to_string(k.valori.size()));
  EXPECT_EQ(nomi, (std::vector<std::string>{"Software\\Esperimento=20", "Software\\Altra=1", "=1"}));
  ASSERT_FALSE(chiavi.empty());
  struct Atteso {
    std::string nome;
    int tipo;
    std::string dati;
  };
  const std::vector<Atteso> attesi = {
      {"", host::kRegSz, "def"},
      {"Alfa", host::kRegSz, "3"},
      {"aperta", host::kRegNone, ""},
      {"beta", host::kRegNone, ""},
      {"coda", host::kRegNone, ""},
      {"cont", host::kRegBinary, "\x01\x02\x03\x04"},
      {"d2", host::kRegDword, "\xff\xff\xff\xff"},
      {"delta", host::kRegBinary, std::string("\x01\0", 2)},
      {"eps", host::kRegBinary, "\x01\x02"},
      {"gamma", host::kRegDword, "\x89\x67\x45\x23"},
      {"hx", host::kRegSz, "A\x04gx"},
      {"multi", host::kRegMultiSz, std::string("A\0B\0", 4)},
      {"oct", host::kRegSz, "A\aa"},
      {"odd", host::kRegSz, "A"},
      {"omega", host::kRegExpandSz, "5"},
      {"s4", host::kRegNone, ""},
      {"sz16", host::kRegSz, std::string("AB\0C", 4)},
      {"troppo", host::kRegNone, ""},
      {"u8", host::kRegSz, "caff\xe8"},
      {"zeta", host::kRegSz, "4"},
  };
  const auto& k = chiavi[0];
  ASSERT_EQ(k.valori.size(), attesi.size()) << testing::PrintToString(Nomi(&k));
  for (std::size_t i = 0; i < attesi.size(); ++i) {
    SCOPED_TRACE(attesi[i].nome);
    EXPECT_EQ(k.valori[i].nome, attesi[i].nome);
    EXPECT_EQ(k.valori[i].tipo, attesi[i].tipo);
    EXPECT_EQ(k.valori[i].dati, attesi[i].dati);
  }
}

TEST(FileRegistro, TestataEFineRiga) {
  // Wine refuses a file whose first line is not its header, whole.
  EXPECT_TRUE(host::AnalizzaTestoRegistro("WINE REGISTRY Version 3\n[A]\n\"v\"=\"1\"\n").empty());
  EXPECT_TRUE(host::AnalizzaTestoRegistro("\n[A]\n\"v\"=\"1\"\n").empty());
  EXPECT_TRUE(host::AnalizzaTestoRegistro("").empty());
  // Line ends of another system, no final line end, blanks around the equals sign.
  const auto k =
      host::AnalizzaTestoRegistro("WINE REGISTRY Version 2\r\n  [A\\\\B\\\\] 1\r\n\"v\" = \"1\"\r\n@=hex:\\");
  ASSERT_EQ(k.size(), 1u);
  EXPECT_EQ(k[0].nome, "A\\B");
  ASSERT_EQ(k[0].valori.size(), 2u);
  EXPECT_EQ(k[0].valori[0].tipo, host::kRegBinary);
  EXPECT_EQ(k[0].valori[1].dati, "1");
}

void ScriviSystemReg(const MacchinaProva& m, const std::string& corpo) {
  MacchinaProva::ScriviHost(m.Prefisso() + "/system.reg", "WINE REGISTRY Version 2\n" + corpo);
  host::UsaPrefisso(m.Prefisso());
}

TEST(RegistroPrefisso, EnumerazioneEApertura) {
  MacchinaProva m;
  MacchinaProva::ScriviHost(m.Prefisso() + "/system.reg", MacchinaProva::LeggiHost(kDati));
  host::UsaPrefisso(m.Prefisso());
  struct Caso {
    std::string chiave;
    int indice;
    long esito;
    std::string nome, dati;
  };
  const std::string ap = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
  const Caso casi[] = {
      {ap + "ordl2009.exe", 0, host::kRegOk, "", "C:\\Ordelio\\ordl2009.exe"},
      {ap + "ordl2009.exe", 1, host::kRegOk, "Path", "C:\\Ordelio"},
      {ap + "ordl2009.exe", 2, host::kRegNessunAltro, "", ""},
      {ap + "ordl2009.exe", -1, host::kRegNessunAltro, "", ""},
      {ap + "ORDINE.EXE", 1, host::kRegOk, "_under", "u"},
      {ap + "perch\xc9.exe", 0, host::kRegOk, "", "x"},
      // Separators collapse and a trailing one is dropped, as in Wine; a leading one is refused.
      {"software\\\\microsoft\\Windows\\CurrentVersion\\App Paths\\ordl2009.exe\\", 0, host::kRegOk, "",
       "C:\\Ordelio\\ordl2009.exe"},
      {"\\" + ap + "ordl2009.exe", 0, host::kRegPercorsoErrato, "", ""},
      {ap + "manca.exe", 0, host::kRegNonTrovato, "", ""},
      // App Paths itself has no line of its own but exists, without values.
      {ap, 0, host::kRegNessunAltro, "", ""},
      {"", 0, host::kRegNessunAltro, "", ""},
      // The 32-bit view of App Paths is a link to the shared key.
      {"Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths\\ordl2009.exe", 1, host::kRegOk,
       "Path", "C:\\Ordelio"},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.chiave + " " + std::to_string(c.indice));
    std::string nome = "?", dati = "?";
    int tipo = -1;
    ASSERT_EQ(host::LeggiValoreRegistroIndice(c.chiave, c.indice, &nome, &dati, &tipo), c.esito);
    if (c.esito != host::kRegOk) continue;
    EXPECT_EQ(nome, c.nome);
    EXPECT_EQ(dati, c.dati);
    EXPECT_EQ(tipo, host::kRegSz);
  }
  std::string dati;
  EXPECT_EQ(host::LeggiValoreRegistroNome("Software\\Wine\\Drives", "D:", &dati), host::kRegOk);
  EXPECT_EQ(dati, "cdrom");
  EXPECT_EQ(host::LeggiValoreRegistroNome("Software\\Wine\\Drives", "q:", &dati), host::kRegNonTrovato);

  long esito = -1;
  EXPECT_EQ(host::CartellaSpeciale(38, &esito), "C:\\Program Files");
  EXPECT_EQ(esito, 0);
  EXPECT_EQ(host::CartellaSpeciale(5, &esito), "");
  EXPECT_NE(esito, 0);
}

TEST(RegistroPrefisso, FileCambiatoEFileAssente) {
  MacchinaProva m;
  long esito = 0;
  // No system.reg: not a machine Wine has set up, so no program-files folder either.
  EXPECT_EQ(host::CartellaSpeciale(38, &esito), "");
  EXPECT_NE(esito, 0);
  std::string nome, dati;
  EXPECT_EQ(host::LeggiValoreRegistroIndice("Software", 0, &nome, &dati), host::kRegNonTrovato);

  ScriviSystemReg(m,
                  "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion]\n\"ProgramFilesDir\"=\"D:\\\\Pf\"\n");
  EXPECT_EQ(host::CartellaSpeciale(38, &esito), "D:\\Pf");
  // The same size, written within the same tick of the file clock: the new content still counts.
  ScriviSystemReg(m,
                  "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion]\n\"ProgramFilesDir\"=\"E:\\\\Pf\"\n");
  EXPECT_EQ(host::CartellaSpeciale(38, &esito), "E:\\Pf");
  // An empty value, or none, leaves Wine's own default.
  ScriviSystemReg(m, "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion]\n\"ProgramFilesDir\"=\"\"\n");
  EXPECT_EQ(host::CartellaSpeciale(38, &esito), "C:\\Program Files");
  EXPECT_EQ(esito, 0);
}

}  // namespace
