#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "esadecimale.h"
#include "formats/archivio.h"
#include "formats/elenco.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "macchina_prova.h"

namespace {

using namespace formats;

template <std::size_t N>
StringaFissa<N> S(std::string_view testo) {
  StringaFissa<N> s;
  s.Assegna(testo);
  return s;
}

// Records with every field set to a value of its own, as the golden files under tests/data/record hold them.
// The drive letter and an author's name are longer than their fields and cut.
// clang-format off
const InfoHeader kInfoNota{.StartFolderTrle = S<256>("C:\\Trle"), .StartFolderOrdl = S<256>("C:\\Ordl"),
                           .VersioneOrdelio = S<256>("1, 0, 0, 5"), .FlagErrori = 0x01020304,
                           .WindowsXp = true, .SpazioDiscoC = 5368709120.5, .SpazioDiscoMaggiore = 1.5,
                           .DiscoMaggiore = S<1>("D:")};

PrefRecord PrefNota() {
  PrefRecord p{.TestShowScreenShot = true, .TestConfrontaUguali = true,
               .PathArchivio = S<256>("C:\\Ordl\\archivio.qlv"), .PathTRLE = S<256>("C:\\Trle"),
               .NameTom2Pc = S<256>("t2p.exe"), .NameTomb4 = S<256>("t4.exe"),
               .DefaultLoadDir = S<256>("d:\\"), .TestFullBackup = true, .NumeroArcSavegame = 0x01020304,
               .NonMostrato1 = 0x0506, .MinutiSaveGameScreenShot = 0x0708090A,
               .PathEditorGrafico = S<256>("paint.exe"), .TimerDecimi = -77, .TestAttivaJoystick = true,
               .Joy_ScreenShot = 0x0B0C0D0E, .Joy_ChiudiTrle = 0x0F101112, .Joy_ChiudiTrleDaSolo = true,
               .Joy_GamePort = 0x1314, .VersioneSubBumber = 0x1516, .Flags = 0x7F00,
               .LinguaAttuale = S<256>("ITALIANO"), .NonMostrato2 = -2,
               .FolderSavegameExt = S<256>("C:\\Save"), .FolderScriptEx = S<256>("C:\\Script"),
               .DateLastUpdating = 45000.25, .LinguaDatDefault = S<32>("english.dat")};
  for (std::size_t i = 0; i < p.TabellaNonMostrata.size(); ++i)
    p.TabellaNonMostrata[i] = static_cast<std::int16_t>(100 + i);
  return p;
}

const ArchivioHeader kArchivioNoto{.NVersione = 0x01020304, .MainDir = S<256>("C:\\Livelli"),
                                   .SecondaryDir = S<256>("D:\\Backup"), .TotLivelli = 0x05060708,
                                   .TotCD = -9, .TestAudioInMp3 = true, .SizeMainDir = 1e10,
                                   .SizeSecondayDir = 2.5};
const ArchivioLivello kLivelloNoto{.Nome = S<256>("Tomba"), .Note = S<256>("note"),
                                   .Autore_Nome = S<80>(std::string(90, 'A')),
                                   .Autore_Email = S<256>("a@b.c"), .Autore_Sito = S<256>("www"),
                                   .Autore_Note = S<256>("bravo"), .Codice = 0x0102, .MaxSavegames = 0x0304,
                                   .NumeroCd = 0x0506, .Flags = -16, .NomeSoluzione = S<256>("sol"),
                                   .SizeFiles = 0x0708090A, .SizeSubDir = -2000, .TestRicalcolaSize = true};
// clang-format on

const ElencoFile kListaNota{2, "C:\\B", {"\\a.txt", "\\d\\b"}, {3, 70000}};

// Each record as written against its golden file, and the golden file read back into the record.
TEST(Record, FileCampione) {
  MacchinaProva m;
  const auto scrittaLista = [&] {
    EXPECT_TRUE(ScriviElencoFile("C:\\l.el", kListaNota));
    return MacchinaProva::LeggiHost(m.C("l.el"));
  };
  const auto rilettaLista = [&](const std::string& byte) {
    MacchinaProva::ScriviHost(m.C("l.el"), byte);
    ElencoFile stretta, tollerante;
    return CaricaElencoStretto("C:\\l.el", stretta) && stretta == kListaNota &&
           CaricaElencoTollerante("C:\\l.el", tollerante) == GuastoElenco::kNessuno &&
           tollerante == kListaNota;
  };
  const std::tuple<const char*, std::string, std::function<bool(const std::string&)>> casi[] = {
      {"info_header", CodificaInfoHeader(kInfoNota),
       [](const std::string& b) { return DecodificaInfoHeader(b) == kInfoNota; }},
      {"preferenze", CodificaPreferenze(PrefNota()),
       [](const std::string& b) { return DecodificaPreferenze(b) == PrefNota(); }},
      {"archivio_header", CodificaArchivioHeader(kArchivioNoto),
       [](const std::string& b) { return DecodificaArchivioHeader(b) == kArchivioNoto; }},
      {"archivio_livello", CodificaArchivioLivello(kLivelloNoto),
       [](const std::string& b) { return DecodificaArchivioLivello(b) == kLivelloNoto; }},
      {"elenco", scrittaLista(), rilettaLista},
  };
  for (const auto& [nome, scritto, rilegge] : casi) {
    const std::string atteso =
        LeggiEsadecimale(std::string(CHECKORDL_DATI_PROVA) + "/record/" + nome + ".hex");
    ASSERT_FALSE(atteso.empty()) << nome;
    const auto diverso = std::mismatch(scritto.begin(), scritto.end(), atteso.begin(), atteso.end());
    EXPECT_TRUE(scritto == atteso) << nome << ": first wrong byte at " << diverso.first - scritto.begin();
    EXPECT_TRUE(rilegge(atteso)) << nome << " read back otherwise";
  }
  // Any non-zero boolean reads as true.
  bool vero = false;
  Lettore(std::string("\x01\x00", 2))(vero);
  EXPECT_TRUE(vero);
}

TEST(Record, CaricaPreferenzeERegolaDellaLunghezza) {
  MacchinaProva m;
  PrefRecord p, difetto;
  ImpostaDefaultPreferenze(difetto, false);
  CaricaPreferenze("C:\\Ordl\\ordelio.prf", p);  // no file: the defaults
  EXPECT_EQ(p, difetto);
  const PrefRecord nota = PrefNota();
  for (const std::size_t lunghezza : {2606, 2607, 1400}) {
    std::string byte = CodificaPreferenze(nota).substr(0, lunghezza);
    byte.resize(lunghezza, 'x');
    MacchinaProva::ScriviHost(m.C("Ordl/ordelio.prf"), byte);
    PrefRecord q;
    CaricaPreferenze("C:\\ordl\\ORDELIO.PRF", q);
    // Of the wrong length, the later fields get their defaults back; the earlier ones keep the file's, and
    // past the end of a short file the defaults stand.
    EXPECT_EQ(q.Flags, lunghezza == 2606 ? nota.Flags : difetto.Flags) << lunghezza;
    EXPECT_EQ(q.PathTRLE, nota.PathTRLE) << lunghezza;
    EXPECT_EQ(q.LinguaDatDefault, lunghezza >= 2606 ? nota.LinguaDatDefault : difetto.LinguaDatDefault);
  }
}

}  // namespace
