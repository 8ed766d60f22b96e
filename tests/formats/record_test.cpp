#include <gtest/gtest.h>

#include <bit>
#include <cstring>

#include "formats/archivio.h"
#include "formats/info_header.h"
#include "formats/preferenze.h"
#include "macchina_prova.h"

namespace {

using namespace formats;

std::string Le16(std::int16_t v) {
  return Le32(v).substr(0, 2);
}
std::string LeDoppio(double d) {
  const auto u = std::bit_cast<std::uint64_t>(d);
  return Le32(static_cast<std::int32_t>(u & 0xFFFFFFFF)) + Le32(static_cast<std::int32_t>(u >> 32));
}
template <std::size_t N>
StringaFissa<N> Fissa(std::string_view t) {
  StringaFissa<N> s;
  s.Assegna(t);
  return s;
}
std::string Riempita(std::string t, std::size_t n) {
  return t + std::string(n - t.size(), ' ');
}

struct Campo {
  std::size_t offset;
  std::string byte;
};

void ControllaCampi(const std::string& codificato, std::size_t dimensione, const std::vector<Campo>& campi) {
  ASSERT_EQ(codificato.size(), dimensione);
  std::size_t coperti = 0;
  for (const auto& c : campi) {
    EXPECT_EQ(codificato.substr(c.offset, c.byte.size()), c.byte) << "offset " << c.offset;
    coperti += c.byte.size();
  }
  EXPECT_EQ(coperti, dimensione) << "every byte belongs to one field";
}

TEST(Record, InfoHeaderAlByte) {
  InfoHeader h;
  h.StartFolderTrle.Assegna("C:\\Trle");
  h.StartFolderOrdl.Assegna("C:\\Ordl");
  h.VersioneOrdelio.Assegna("1, 0, 0, 5");
  h.FlagErrori = 0x1C3;
  h.WindowsXp = true;
  h.SpazioDiscoC = 5368709120.0;
  h.SpazioDiscoMaggiore = 1.5;
  h.DiscoMaggiore.Assegna("D:");
  const std::string b = CodificaInfoHeader(h);
  ControllaCampi(b, 791,
                 {{0, Riempita("C:\\Trle", 256)},
                  {256, Riempita("C:\\Ordl", 256)},
                  {512, Riempita("1, 0, 0, 5", 256)},
                  {768, Le32(0x1C3)},
                  {772, Le16(-1)},
                  {774, LeDoppio(5368709120.0)},
                  {782, LeDoppio(1.5)},
                  {790, "D"}});
  EXPECT_EQ(DecodificaInfoHeader(b), h);

  // Nothing assigned: NUL bytes, which clean to an empty text.
  const std::string vuoto = CodificaInfoHeader(InfoHeader{});
  EXPECT_EQ(vuoto, std::string(791, '\0'));
  // Any non-zero boolean reads as true; a short file leaves the rest as it was.
  std::string uno = vuoto;
  uno[772] = 1;
  EXPECT_TRUE(DecodificaInfoHeader(uno).WindowsXp);
  EXPECT_EQ(DecodificaInfoHeader(b.substr(0, 300)).StartFolderOrdl.Testo(),
            Riempita("C:\\Ordl", 44) + std::string(212, '\0'));
}

TEST(Record, StringheFisse) {
  EXPECT_EQ(Fissa<4>("ab").Testo(), "ab  ");
  EXPECT_EQ(Fissa<4>("abcdef").Testo(), "abcd");
  EXPECT_EQ(Fissa<4>("").Testo(), "    ");
  EXPECT_EQ(StringaFissa<4>{}.Testo(), std::string(4, '\0'));
}

PrefRecord PreferenzeDistinte() {
  PrefRecord p;
  p.TestShowScreenShot = true;
  p.TestNoAutoCompile = true;
  p.TestLogFile = true;
  p.PathArchivio.Assegna("C:\\Ordl\\archivio.qlv");
  p.PathTRLE.Assegna("C:\\Trle");
  p.NameTom2Pc.Assegna("t2p.exe");
  p.NameTomb4.Assegna("t4.exe");
  p.DefaultLoadDir.Assegna("d:\\");
  p.TestFullBackup = true;
  p.TestArchiviaSavegame = true;
  p.NumeroArcSavegame = 0x01020304;
  p.NonMostrato1 = 0x0506;
  p.MinutiSaveGameScreenShot = 0x0708090A;
  p.PathEditorGrafico.Assegna("paint.exe");
  p.TimerDecimi = 77;
  p.TestAttivaJoystick = true;
  p.Joy_ScreenShot = 11;
  p.Joy_ShowDaSolo = true;
  p.Joy_ChiudiTrle = 12;
  p.Joy_ChiudiTrleDaSolo = true;
  p.Joy_GamePort = 13;
  p.VersioneSubBumber = 14;
  p.Flags = 0x7F00;
  p.LinguaAttuale.Assegna("ITALIANO");
  p.NonMostrato2 = -2;
  for (std::size_t i = 0; i < p.TabellaNonMostrata.size(); ++i)
    p.TabellaNonMostrata[i] = static_cast<std::int16_t>(i + 100);
  p.FolderSavegameExt.Assegna("C:\\Save");
  p.FolderScriptEx.Assegna("C:\\Script");
  p.DateLastUpdating = 45000.25;
  p.LinguaDatDefault.Assegna("english.dat");
  return p;
}

TEST(Record, PreferenzeAlByte) {
  const PrefRecord p = PreferenzeDistinte();
  const std::string b = CodificaPreferenze(p);
  std::string tabella;
  for (std::size_t i = 0; i < 101; ++i) tabella += Le16(static_cast<std::int16_t>(i + 100));
  ControllaCampi(b, 2606,
                 {{0, Le16(-1)},
                  {2, Le16(0)},
                  {4, Le16(-1)},
                  {6, Le16(0)},
                  {8, Le16(-1)},
                  {10, Riempita("C:\\Ordl\\archivio.qlv", 256)},
                  {266, Riempita("C:\\Trle", 256)},
                  {522, Riempita("t2p.exe", 256)},
                  {778, Riempita("t4.exe", 256)},
                  {1034, Riempita("d:\\", 256)},
                  {1290, Le16(0)},
                  {1292, Le16(-1)},
                  {1294, Le16(0)},
                  {1296, Le16(-1)},
                  {1298, Le32(0x01020304)},
                  {1302, Le16(0x0506)},
                  {1304, Le32(0x0708090A)},
                  {1308, Riempita("paint.exe", 256)},
                  {1564, Le32(77)},
                  {1568, Le16(0)},
                  {1570, Le16(-1)},
                  {1572, Le32(11)},
                  {1576, Le16(-1)},
                  {1578, Le32(12)},
                  {1582, Le16(-1)},
                  {1584, Le16(13)},
                  {1586, Le16(14)},
                  {1588, Le32(0x7F00)},
                  {1592, Riempita("ITALIANO", 256)},
                  {1848, Le32(-2)},
                  {1852, tabella},
                  {2054, Riempita("C:\\Save", 256)},
                  {2310, Riempita("C:\\Script", 256)},
                  {2566, LeDoppio(45000.25)},
                  {2574, Riempita("english.dat", 32)}});
  EXPECT_EQ(DecodificaPreferenze(b), p);
}

TEST(Record, CaricaPreferenzeDefaultERegolaDellaLunghezza) {
  MacchinaProva m;
  PrefRecord p;
  CaricaPreferenze("C:\\Ordl\\ordelio.prf", p);  // no file: the defaults
  EXPECT_TRUE(p.TestShowScreenShot);
  EXPECT_EQ(p.NameTomb4.Testo(), Riempita("tomb4.exe", 256));
  EXPECT_EQ(p.DefaultLoadDir.Testo(), Riempita("c:\\", 256));
  EXPECT_EQ(p.PathTRLE.Testo(), std::string(256, ' '));
  EXPECT_EQ(p.Flags, 4);
  EXPECT_EQ(p.TimerDecimi, 5);
  EXPECT_EQ(p.DateLastUpdating, 0.0);
  EXPECT_EQ(p.TabellaNonMostrata[0], 0);  // no default: untouched

  PrefRecord nelFile = PreferenzeDistinte();
  nelFile.Joy_ChiudiTrleDaSolo = true;
  const std::string intero = CodificaPreferenze(nelFile);
  for (const std::size_t lunghezza : {2606, 2605, 2607, 1400}) {
    std::string byte = intero.substr(0, std::min<std::size_t>(lunghezza, 2606));
    byte.resize(lunghezza, 'x');
    MacchinaProva::ScriviHost(m.C("Ordl/ordelio.prf"), byte);
    PrefRecord q;
    CaricaPreferenze("C:\\ordl\\ORDELIO.PRF", q);
    const bool giusta = lunghezza == 2606;
    EXPECT_EQ(q.Flags, giusta ? 0x7F00 : 4) << lunghezza;
    EXPECT_EQ(q.NumeroArcSavegame, giusta ? 0x01020304 : 5) << lunghezza;
    EXPECT_EQ(q.LinguaAttuale.Testo(), giusta ? Riempita("ITALIANO", 256) : std::string(256, ' '))
        << lunghezza;
    EXPECT_EQ(q.PathTRLE.Testo(), Riempita("C:\\Trle", 256)) << lunghezza;
    EXPECT_EQ(q.PathArchivio.Testo(), Riempita("C:\\Ordl\\archivio.qlv", 256)) << lunghezza;
    // Past the end of a short file the defaults stand; not-reset fields that the file holds stay.
    EXPECT_EQ(q.Joy_ChiudiTrleDaSolo, lunghezza >= 1584) << lunghezza;
    EXPECT_EQ(q.LinguaDatDefault.Testo(),
              lunghezza < 2574 ? std::string(32, ' ') : Riempita("english.dat", 32))
        << lunghezza;
  }

  // The raw read takes the file as it is, with no defaults.
  MacchinaProva::ScriviHost(m.C("Ordl/ordelio.prf"), intero.substr(0, 100));
  PrefRecord r;
  ASSERT_TRUE(LeggiPreferenze("C:\\Ordl\\ordelio.prf", &r));
  EXPECT_EQ(r.Flags, 0);
  EXPECT_EQ(r.NameTomb4.Testo(), std::string(256, '\0'));
  EXPECT_FALSE(LeggiPreferenze("C:\\Ordl\\manca.prf", &r));
}

ArchivioLivello Livello(const std::string& nome) {
  ArchivioLivello v;
  v.Nome.Assegna(nome);
  return v;
}

TEST(Record, ArchivioAlByte) {
  ArchivioHeader h;
  h.NVersione = 3;
  h.MainDir.Assegna("C:\\Livelli");
  h.SecondaryDir.Assegna("D:\\Backup");
  h.TotLivelli = 2;
  h.TotCD = 9;
  h.TestCompresso = true;
  h.TestSetupCd = true;
  h.SizeMainDir = 1e10;
  h.SizeSecondayDir = 2.5;
  const std::string bh = CodificaArchivioHeader(h);
  ControllaCampi(bh, 546,
                 {{0, Le32(3)},
                  {4, Riempita("C:\\Livelli", 256)},
                  {260, Riempita("D:\\Backup", 256)},
                  {516, Le32(2)},
                  {520, Le32(9)},
                  {524, Le16(-1)},
                  {526, Le16(0)},
                  {528, Le16(-1)},
                  {530, LeDoppio(1e10)},
                  {538, LeDoppio(2.5)}});
  EXPECT_EQ(DecodificaArchivioHeader(bh), h);

  ArchivioLivello v;
  v.Nome.Assegna("Tomba");
  v.Note.Assegna("note");
  v.Autore_Nome.Assegna(std::string(90, 'A'));  // cut at 80
  v.Autore_Email.Assegna("a@b.c");
  v.Autore_Sito.Assegna("www");
  v.Autore_Note.Assegna("bravo");
  v.Codice = 21;
  v.MaxSavegames = 22;
  v.NumeroCd = 23;
  v.Flags = -16;
  v.NomeSoluzione.Assegna("sol");
  v.SizeFiles = 1000;
  v.SizeSubDir = 2000;
  v.TestRicalcolaSize = true;
  const std::string bl = CodificaArchivioLivello(v);
  ControllaCampi(bl, 1634,
                 {{0, Riempita("Tomba", 256)},
                  {256, Riempita("note", 256)},
                  {512, std::string(80, 'A')},
                  {592, Riempita("a@b.c", 256)},
                  {848, Riempita("www", 256)},
                  {1104, Riempita("bravo", 256)},
                  {1360, Le16(21)},
                  {1362, Le16(22)},
                  {1364, Le16(23)},
                  {1366, Le16(-16)},
                  {1368, Riempita("sol", 256)},
                  {1624, Le32(1000)},
                  {1628, Le32(2000)},
                  {1632, Le16(-1)}});
  EXPECT_EQ(DecodificaArchivioLivello(bl), v);
}

TEST(Record, ArchivioConteggiOstili) {
  MacchinaProva m;
  const auto archivio = [](std::int32_t tot, int record, std::size_t taglio = 0) {
    ArchivioHeader h;
    h.TotLivelli = tot;
    std::string b = CodificaArchivioHeader(h);
    for (int i = 0; i < record; ++i) b += CodificaArchivioLivello(Livello("L" + std::to_string(i)));
    return b.substr(0, b.size() - taglio);
  };
  struct Caso {
    const char* caso;
    std::string byte;
    std::size_t livelli;
  };
  const Caso casi[] = {
      {"no levels", archivio(0, 2), 0},
      {"more records than counted", archivio(2, 5), 2},
      {"negative count", archivio(-7, 2), 0},
      {"count past the end", archivio(0x7FFFFFFF, 3), 3},
      {"cut last record", archivio(3, 3, 1000), 3},
      {"header only, cut", archivio(5, 0).substr(0, 100), 0},
  };
  for (const auto& c : casi) {
    MacchinaProva::ScriviHost(m.C("archivio.qlv"), c.byte);
    ArchivioHeader h;
    std::vector<ArchivioLivello> livelli;
    ASSERT_TRUE(LeggiArchivio("C:\\archivio.qlv", &h, &livelli)) << c.caso;
    ASSERT_EQ(livelli.size(), c.livelli) << c.caso;
    for (std::size_t i = 0; i < livelli.size(); ++i)
      EXPECT_EQ(livelli[i].Nome.Testo().substr(0, 2), "L" + std::to_string(i)) << c.caso;
  }
  ArchivioHeader h;
  EXPECT_FALSE(LeggiArchivioHeader("C:\\manca.qlv", &h));
}

}  // namespace
