// Every report of the analysis window, byte for byte, against the texts in tests/data/prospetti: one snapshot
// that carries every member, opened as "Leggi Dati" opens it, and one menu item a row. Then what those texts
// cannot show: hostile level counts, the date form under two locales, a short settings file.
//
// To rewrite the expected texts on purpose, run the tests with CHECKORDL_RIGENERA=1: each row then writes
// the text the code gives into its file instead of comparing. Read the diff before committing it.
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "ambiente_prova.h"
#include "analysis/forma_analisi.h"
#include "analysis/prospetto_ambiente.h"
#include "analysis/prospetto_archivio.h"
#include "analysis/prospetto_preferenze.h"
#include "analysis/testi.h"
#include "esadecimale.h"
#include "finestra_prova.h"
#include "formats/archivio.h"
#include "locale_prova.h"
#include "macchina_prova.h"
#include "support/data.h"
#include "support/files.h"

namespace {

using analysis::Voce;

// The snapshot tests/data/prospetti/INFO_ORDL.BIN (see the README there) unpacked into C:\Prog\Dati; on this
// computer Ordelio, the two sample lists in C:\Prog and the good copies of the backup files, which are as
// long as these names say. nuovo.tr4 and z.tr4 have none.
void Prepara(const MacchinaProva& m) {
  const std::string dati = std::string(CHECKORDL_DATI_PROVA) + "/prospetti/";
  for (const char* f : {"INFO_ORDL.BIN", "Prog/backup_trle.le", "Prog/trle_cd.le"})
    MacchinaProva::ScriviHost(m.C(f),
                              MacchinaProva::LeggiHost(dati + std::filesystem::path(f).filename().string()));
  m.Registro(
      "WINE REGISTRY Version 2\n\n"
      "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\App Paths\\\\ordl2009.exe]\n"
      "@=\"C:\\\\Ordelio\\\\ordl2009.exe\"\n");
  MacchinaProva::ScriviHost(m.C("Ordelio/ordl2009.exe"), "MZ");
  for (const char* copia : {"data/a.tr4=1500", "data/b.tr4=8500", "c.tr4=10", "d.tr4=7", "e.tr4=1",
                            "una/cartella/dal/nome/molto/lungo/livello.tr4=2"}) {
    const std::string s = copia;
    MacchinaProva::ScriviHost(m.C("Campione/backup_trle/" + s.substr(0, s.find('='))),
                              std::string(std::stoul(s.substr(s.find('=') + 1)), 'x'));
  }
}

struct Caso {
  const char* file;
  const char* locale;
  Voce voce;
};
void PrintTo(const Caso& c, std::ostream* os) {
  *os << c.file;
}

class Prospetti : public ::testing::TestWithParam<Caso> {};

TEST_P(Prospetti, ComeNelFile) {
  const Caso& c = GetParam();
  LocaleProva numeri(LC_NUMERIC, c.locale), date(LC_TIME, c.locale);
  if (!numeri.Attivo() || !date.Attivo()) GTEST_SKIP() << "no " << c.locale << " locale on this machine";
  MacchinaProva m;
  Prepara(m);
  AnalisiProva a;
  analysis::ImpostaValori(a.d, "C:\\INFO_ORDL.BIN");
  analysis::EseguiVoce(a.d, c.voce);
  EXPECT_TRUE(a.messaggi.tutti.empty()) << a.messaggi.tutti[0];
  // The backup analysis clears the report marks; every report marks itself alone.
  EXPECT_EQ(a.Segnate(), c.voce == Voce::mnu_AnalisiBackup ? std::vector<Voce>{} : std::vector<Voce>{c.voce});
  EXPECT_EQ(a.barra.valore, 0);

  const std::string file = std::string(CHECKORDL_DATI_PROVA) + "/prospetti/" + c.file;
  if (std::getenv("CHECKORDL_RIGENERA")) {
    MacchinaProva::ScriviHost(file, a.area.Testo());
    return;
  }
  EXPECT_EQ(a.area.Testo(), MacchinaProva::LeggiHost(file));
}

INSTANTIATE_TEST_SUITE_P(Voci, Prospetti,
                         ::testing::Values(Caso{"header.txt", "C", Voce::mnu_ShowInfoHeader},
                                           Caso{"header_it.txt", "it_IT.UTF-8", Voce::mnu_ShowInfoHeader},
                                           Caso{"pref.txt", "C", Voce::mnu_ShowPref},
                                           Caso{"archive.txt", "C", Voce::mnu_ShowArchivioQlv},
                                           Caso{"archive_it.txt", "it_IT.UTF-8", Voce::mnu_ShowArchivioQlv},
                                           Caso{"ordl.txt", "C", Voce::mnu_ShowORDL_Dir},
                                           Caso{"trle.txt", "C", Voce::mnu_ShowTRLE_Dir},
                                           Caso{"trle_it.txt", "it_IT.UTF-8", Voce::mnu_ShowTRLE_Dir},
                                           Caso{"dirarc.txt", "C", Voce::mnu_ShowArchivioDir},
                                           Caso{"ordeio.txt", "C", Voce::mnu_ShowOrdelioTxt},
                                           Caso{"script.txt", "C", Voce::mnu_ShowScriptDat},
                                           Caso{"backup.txt", "C", Voce::mnu_AnalisiBackup}),
                         [](const auto& info) {
                           const std::string f = info.param.file;
                           return f.substr(0, f.find('.'));
                         });

// The environment item of "Diagnosi": the planted record's text, marks cleared; a member that cannot be read
// gives a critical message and leaves the text and the marks alone, as a missing one does.
TEST(ProspettoAmbiente, LettoAssenteIlleggibile) {
  const std::string atteso = std::string(CHECKORDL_DATI_PROVA) + "/prospetti/environment.txt";
  const struct {
    const char* nome;
    std::string json;
    std::string messaggio;
  } casi[] = {
      {"letto", formats::CodificaAmbiente(AmbienteProva()), ""},
      {"illeggibile", "[1, 2]", "critical: The snapshot's ambiente.json cannot be read: "},
  };
  for (const auto& c : casi) {
    SCOPED_TRACE(c.nome);
    MacchinaProva m;
    Prepara(m);
    AnalisiProva a;
    analysis::ImpostaValori(a.d, "C:\\INFO_ORDL.BIN");
    support::ScriviFileTesto(a.d.CartellaDati + "\\ambiente.json", c.json);
    const std::string prima = a.area.Testo();
    analysis::EseguiVoce(a.d, Voce::mnu_ShowAmbiente);
    if (c.messaggio.empty()) {
      EXPECT_TRUE(a.messaggi.tutti.empty());
      EXPECT_TRUE(a.Segnate().empty());
      if (std::getenv("CHECKORDL_RIGENERA")) MacchinaProva::ScriviHost(atteso, a.area.Testo());
      EXPECT_EQ(a.area.Testo(), MacchinaProva::LeggiHost(atteso));
      EXPECT_LE(RigaPiuLarga(a.area.Testo()), static_cast<std::size_t>(analysis::ColonneAreaProspetto()));
      continue;
    }
    ASSERT_EQ(a.messaggi.tutti.size(), 1u);
    EXPECT_TRUE(a.messaggi.tutti[0].starts_with(c.messaggio)) << a.messaggi.tutti[0];
    EXPECT_EQ(a.area.Testo(), prima);
    EXPECT_EQ(a.Segnate(), std::vector<Voce>{Voce::mnu_ShowInfoHeader});
  }
}

// The count of levels comes from the file: it may be anything, and the file may end anywhere.
TEST(ProspettoArchivio, ConteggiOstili) {
  LocaleProva locale(LC_NUMERIC, "C");
  MacchinaProva m;
  formats::ArchivioLivello l;
  l.Nome.Assegna("Liv");
  const std::string record = formats::CodificaArchivioLivello(l);
  const struct {
    std::int32_t totLivelli;
    std::string livelli;  // what follows the header
    std::size_t blocchi;
  } casi[] = {
      {0, record, 0},  // records past the count are not read
      {std::numeric_limits<std::int32_t>::min(), record, 0},
      {std::numeric_limits<std::int32_t>::max(), record, 1},
      {3, record + record.substr(0, 300), 2},  // cut inside the second record: read as far as it goes
  };
  for (const auto& c : casi) {
    formats::ArchivioHeader h;
    h.TotLivelli = c.totLivelli;
    MacchinaProva::ScriviHost(m.C("Dati/archivio.qlv"), formats::CodificaArchivioHeader(h) + c.livelli);
    MessaggiProva messaggi;
    const auto t =
        analysis::ProspettoArchivio({1, {"archivio.qlv"}, {1}}, "C:\\Dati", messaggi).testo.value_or("");
    EXPECT_NE(t.find("TotLivelli: " + std::to_string(c.totLivelli) + "\r\n\r\n"), std::string::npos);
    EXPECT_TRUE(t.ends_with("\r\n\r\n"));
    std::size_t blocchi = 0;
    for (auto p = t.find("\r\nNome: Liv\r\n"); p != std::string::npos; p = t.find("\r\nNome: Liv\r\n", p + 1))
      ++blocchi;
    EXPECT_EQ(blocchi, c.blocchi) << c.totLivelli;
    EXPECT_TRUE(messaggi.tutti.empty());
  }
  // Named in the table but not unpacked: the mark moves all the same. A count larger than the table must
  // not walk past it.
  MessaggiProva messaggi;
  EXPECT_TRUE(analysis::ProspettoArchivio({1, {"X:\\a.QLV"}, {1}}, "C:\\Vuota", messaggi).segnaVoce);
  EXPECT_EQ(messaggi.tutti, std::vector<std::string>{"critical: Non trovo file: C:\\Vuota\\a.QLV"});
  EXPECT_FALSE(analysis::ProspettoArchivio({5, {"C:\\a.txt"}, {1}}, "C:\\Dati", messaggi).segnaVoce);
}

TEST(Testi, LivelliScriptOltreLaLista) {
  const std::string testa = "Livelli tr4 usati da file script.dat:\r\n\r\n";
  EXPECT_EQ(analysis::TestoLivelliScript({"a.tr4"}, -3), testa);
  // A list shorter than its count still gives a line per entry.
  EXPECT_EQ(analysis::TestoLivelliScript({"a.tr4"}, 3), testa + "a.tr4\r\n\r\n\r\n");
}

TEST(DataGenerale, DueLocali) {
#ifdef _WIN32
  GTEST_SKIP() << "the date form on Windows is the user's regional setting, not the C library's locale";
#endif
  struct Caso {
    double data;
    const char* c;
    const char* italiano;
  };
  const Caso casi[] = {
      {45000.5, "2023-03-15 12:00:00", "15/03/2023 12:00:00"},
      {45000, "2023-03-15", "15/03/2023"},
      {0, "00:00:00", "00:00:00"},  // no date part: the time alone, midnight included
      {0.75, "18:00:00", "18:00:00"},
      {-1.25, "1899-12-29 06:00:00", "29/12/1899 06:00:00"},  // the fraction counts forward from the day
      {45000.9999999, "2023-03-16", "16/03/2023"},            // rounded to the second
      {2958465.5, "9999-12-31 12:00:00", "31/12/9999 12:00:00"},
      {2958466, "2958466", "2958466"},  // beyond the years a date may hold
      {-700000, "-700000", "-700000"},
  };
  for (const char* nome : {"C", "it_IT.UTF-8"}) {
    LocaleProva locale(LC_TIME, nome);
    if (!locale.Attivo()) {
      ADD_FAILURE() << nome << " is not installed (scripts/dipendenze.sh makes it)";
      continue;
    }
    for (const Caso& c : casi)
      EXPECT_EQ(support::DataGenerale(c.data), nome[0] == 'C' ? c.c : c.italiano) << nome << " " << c.data;
  }
  EXPECT_FALSE(support::DataGenerale(std::nan("")).empty());
}

// A short file is shown as read, without the defaults that loading the settings would put back.
TEST(ProspettoPreferenze, FileCorto) {
  MacchinaProva m;
  std::filesystem::create_directories(m.C("Dati"));
  formats::PrefRecord p;
  p.TestLogFile = true;
  MacchinaProva::ScriviHost(m.C("Dati/ordelio.prf"), formats::CodificaPreferenze(p).substr(0, 1300));
  MessaggiProva messaggi;
  const auto testo = analysis::ProspettoPreferenze("C:\\Dati", messaggi);
  ASSERT_TRUE(testo);
  EXPECT_NE(testo->find("Flags: 0x0\r\n"), std::string::npos);
  EXPECT_NE(testo->find("NumeroArcSavegame: 0\r\n"), std::string::npos);
  EXPECT_NE(testo->find("TestLogFile: True\r\n"), std::string::npos);
  EXPECT_TRUE(messaggi.tutti.empty());
}

}  // namespace
