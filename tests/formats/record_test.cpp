#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <functional>
#include <numeric>

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
std::string Riempita(std::string t, std::size_t n) {
  return t + std::string(n - t.size(), ' ');
}
const std::string kVero = Le16(-1);

// One field of a record: where it lies, the bytes it must become, and how to set it.
template <class R>
struct Campo {
  std::size_t offset;
  std::string byte;
  std::function<void(R&)> imposta;
};

// Each field, set alone on an empty record, must change its own bytes and no others, lie right behind the
// field before it, and read back to the same record; together the fields fill the record.
template <class R>
void ControllaCampi(std::size_t dimensione, const std::vector<Campo<R>>& campi,
                    const std::function<std::string(const R&)>& codifica,
                    const std::function<R(std::string_view)>& decodifica) {
  const std::string vuoto = codifica(R{});
  ASSERT_EQ(vuoto, std::string(dimensione, '\0'));
  std::size_t fine = 0;
  for (const auto& c : campi) {
    SCOPED_TRACE("offset " + std::to_string(c.offset));
    EXPECT_EQ(c.offset, fine);
    fine = c.offset + c.byte.size();
    R r{};
    c.imposta(r);
    const std::string b = codifica(r);
    const std::string atteso = std::string(vuoto).replace(c.offset, c.byte.size(), c.byte);
    const auto diverso = std::mismatch(b.begin(), b.end(), atteso.begin(), atteso.end()).first;
    EXPECT_TRUE(diverso == b.end()) << "first wrong byte at " << diverso - b.begin();
    EXPECT_TRUE(decodifica(b) == r) << "read back otherwise";
  }
  EXPECT_EQ(fine, dimensione);
}

TEST(Record, InfoHeaderAlByte) {
  using I = InfoHeader;
  ControllaCampi<I>(
      791,
      {
          {0, Riempita("C:\\Trle", 256), [](I& h) { h.StartFolderTrle.Assegna("C:\\Trle"); }},
          {256, Riempita("C:\\Ordl", 256), [](I& h) { h.StartFolderOrdl.Assegna("C:\\Ordl"); }},
          {512, Riempita("1, 0, 0, 5", 256), [](I& h) { h.VersioneOrdelio.Assegna("1, 0, 0, 5"); }},
          {768, Le32(0x01020304), [](I& h) { h.FlagErrori = 0x01020304; }},
          {772, kVero, [](I& h) { h.WindowsXp = true; }},
          {774, LeDoppio(5368709120.5), [](I& h) { h.SpazioDiscoC = 5368709120.5; }},
          {782, LeDoppio(1.5), [](I& h) { h.SpazioDiscoMaggiore = 1.5; }},
          {790, "D", [](I& h) { h.DiscoMaggiore.Assegna("D:"); }},  // cut to its one character
      },
      CodificaInfoHeader, [](std::string_view b) { return DecodificaInfoHeader(b); });
  // Any non-zero boolean reads as true.
  std::string uno(791, '\0');
  uno[772] = 1;
  EXPECT_TRUE(DecodificaInfoHeader(uno).WindowsXp);
}

TEST(Record, PreferenzeAlByte) {
  using P = PrefRecord;
  std::string tabella;
  for (std::int16_t i = 0; i < 101; ++i) tabella += Le16(static_cast<std::int16_t>(i + 100));
  ControllaCampi<P>(
      2606,
      {
          {0, kVero, [](P& p) { p.TestShowScreenShot = true; }},
          {2, kVero, [](P& p) { p.TestChiediDopoCattura = true; }},
          {4, kVero, [](P& p) { p.TestNoAutoCompile = true; }},
          {6, kVero, [](P& p) { p.TestConfrontaUguali = true; }},
          {8, kVero, [](P& p) { p.TestLogFile = true; }},
          {10, Riempita("C:\\Ordl\\archivio.qlv", 256),
           [](P& p) { p.PathArchivio.Assegna("C:\\Ordl\\archivio.qlv"); }},
          {266, Riempita("C:\\Trle", 256), [](P& p) { p.PathTRLE.Assegna("C:\\Trle"); }},
          {522, Riempita("t2p.exe", 256), [](P& p) { p.NameTom2Pc.Assegna("t2p.exe"); }},
          {778, Riempita("t4.exe", 256), [](P& p) { p.NameTomb4.Assegna("t4.exe"); }},
          {1034, Riempita("d:\\", 256), [](P& p) { p.DefaultLoadDir.Assegna("d:\\"); }},
          {1290, kVero, [](P& p) { p.TestNonDecomprimere = true; }},
          {1292, kVero, [](P& p) { p.TestFullBackup = true; }},
          {1294, kVero, [](P& p) { p.TestAutoSave = true; }},
          {1296, kVero, [](P& p) { p.TestArchiviaSavegame = true; }},
          {1298, Le32(0x01020304), [](P& p) { p.NumeroArcSavegame = 0x01020304; }},
          {1302, Le16(0x0506), [](P& p) { p.NonMostrato1 = 0x0506; }},
          {1304, Le32(0x0708090A), [](P& p) { p.MinutiSaveGameScreenShot = 0x0708090A; }},
          {1308, Riempita("paint.exe", 256), [](P& p) { p.PathEditorGrafico.Assegna("paint.exe"); }},
          {1564, Le32(-77), [](P& p) { p.TimerDecimi = -77; }},
          {1568, kVero, [](P& p) { p.TestVerifyImpage = true; }},
          {1570, kVero, [](P& p) { p.TestAttivaJoystick = true; }},
          {1572, Le32(0x0B0C0D0E), [](P& p) { p.Joy_ScreenShot = 0x0B0C0D0E; }},
          {1576, kVero, [](P& p) { p.Joy_ShowDaSolo = true; }},
          {1578, Le32(0x0F101112), [](P& p) { p.Joy_ChiudiTrle = 0x0F101112; }},
          {1582, kVero, [](P& p) { p.Joy_ChiudiTrleDaSolo = true; }},
          {1584, Le16(0x1314), [](P& p) { p.Joy_GamePort = 0x1314; }},
          {1586, Le16(0x1516), [](P& p) { p.VersioneSubBumber = 0x1516; }},
          {1588, Le32(0x7F00), [](P& p) { p.Flags = 0x7F00; }},
          {1592, Riempita("ITALIANO", 256), [](P& p) { p.LinguaAttuale.Assegna("ITALIANO"); }},
          {1848, Le32(-2), [](P& p) { p.NonMostrato2 = -2; }},
          {1852, tabella,
           [](P& p) { std::iota(p.TabellaNonMostrata.begin(), p.TabellaNonMostrata.end(), 100); }},
          {2054, Riempita("C:\\Save", 256), [](P& p) { p.FolderSavegameExt.Assegna("C:\\Save"); }},
          {2310, Riempita("C:\\Script", 256), [](P& p) { p.FolderScriptEx.Assegna("C:\\Script"); }},
          {2566, LeDoppio(45000.25), [](P& p) { p.DateLastUpdating = 45000.25; }},
          {2574, Riempita("english.dat", 32), [](P& p) { p.LinguaDatDefault.Assegna("english.dat"); }},
      },
      CodificaPreferenze, [](std::string_view b) { return DecodificaPreferenze(b); });
}

TEST(Record, CaricaPreferenzeERegolaDellaLunghezza) {
  MacchinaProva m;
  PrefRecord p, attesi;
  ImpostaDefaultPreferenze(attesi, false);
  CaricaPreferenze("C:\\Ordl\\ordelio.prf", p);  // no file: the defaults
  EXPECT_EQ(p, attesi);

  PrefRecord f;
  f.Flags = 0x7F00;
  f.PathTRLE.Assegna("C:\\Trle");
  f.LinguaDatDefault.Assegna("english.dat");
  const std::string intero = CodificaPreferenze(f);
  for (const std::size_t lunghezza : {2606, 2607, 1400}) {
    SCOPED_TRACE(lunghezza);
    std::string byte = intero.substr(0, lunghezza);
    byte.resize(lunghezza, 'x');
    MacchinaProva::ScriviHost(m.C("Ordl/ordelio.prf"), byte);
    PrefRecord q;
    CaricaPreferenze("C:\\ordl\\ORDELIO.PRF", q);
    // Of the wrong length, the later fields get their defaults back; the earlier ones keep the file's.
    EXPECT_EQ(q.Flags, lunghezza == 2606 ? 0x7F00 : 4);
    EXPECT_EQ(q.PathTRLE, f.PathTRLE);
    // Past the end of a short file the defaults stand.
    EXPECT_EQ(q.LinguaDatDefault.Testo(),
              lunghezza > 2574 ? Riempita("english.dat", 32) : std::string(32, ' '));
  }
}

TEST(Record, ArchivioAlByte) {
  using H = ArchivioHeader;
  ControllaCampi<H>(
      546,
      {
          {0, Le32(0x01020304), [](H& h) { h.NVersione = 0x01020304; }},
          {4, Riempita("C:\\Livelli", 256), [](H& h) { h.MainDir.Assegna("C:\\Livelli"); }},
          {260, Riempita("D:\\Backup", 256), [](H& h) { h.SecondaryDir.Assegna("D:\\Backup"); }},
          {516, Le32(0x05060708), [](H& h) { h.TotLivelli = 0x05060708; }},
          {520, Le32(-9), [](H& h) { h.TotCD = -9; }},
          {524, kVero, [](H& h) { h.TestCompresso = true; }},
          {526, kVero, [](H& h) { h.TestAudioInMp3 = true; }},
          {528, kVero, [](H& h) { h.TestSetupCd = true; }},
          {530, LeDoppio(1e10), [](H& h) { h.SizeMainDir = 1e10; }},
          {538, LeDoppio(2.5), [](H& h) { h.SizeSecondayDir = 2.5; }},
      },
      CodificaArchivioHeader, DecodificaArchivioHeader);

  using L = ArchivioLivello;
  ControllaCampi<L>(1634,
                    {
                        {0, Riempita("Tomba", 256), [](L& v) { v.Nome.Assegna("Tomba"); }},
                        {256, Riempita("note", 256), [](L& v) { v.Note.Assegna("note"); }},
                        {512, std::string(80, 'A'),
                         [](L& v) { v.Autore_Nome.Assegna(std::string(90, 'A')); }},  // cut at 80
                        {592, Riempita("a@b.c", 256), [](L& v) { v.Autore_Email.Assegna("a@b.c"); }},
                        {848, Riempita("www", 256), [](L& v) { v.Autore_Sito.Assegna("www"); }},
                        {1104, Riempita("bravo", 256), [](L& v) { v.Autore_Note.Assegna("bravo"); }},
                        {1360, Le16(0x0102), [](L& v) { v.Codice = 0x0102; }},
                        {1362, Le16(0x0304), [](L& v) { v.MaxSavegames = 0x0304; }},
                        {1364, Le16(0x0506), [](L& v) { v.NumeroCd = 0x0506; }},
                        {1366, Le16(-16), [](L& v) { v.Flags = -16; }},
                        {1368, Riempita("sol", 256), [](L& v) { v.NomeSoluzione.Assegna("sol"); }},
                        {1624, Le32(0x0708090A), [](L& v) { v.SizeFiles = 0x0708090A; }},
                        {1628, Le32(-2000), [](L& v) { v.SizeSubDir = -2000; }},
                        {1632, kVero, [](L& v) { v.TestRicalcolaSize = true; }},
                    },
                    CodificaArchivioLivello, DecodificaArchivioLivello);
}

TEST(Record, ArchivioConteggiOstili) {
  MacchinaProva m;
  const auto archivio = [](std::int32_t tot, int record, std::size_t taglio = 0) {
    ArchivioHeader h;
    h.TotLivelli = tot;
    std::string b = CodificaArchivioHeader(h);
    for (int i = 0; i < record; ++i) {
      ArchivioLivello v;
      v.Nome.Assegna("L" + std::to_string(i));
      b += CodificaArchivioLivello(v);
    }
    return b.substr(0, b.size() - taglio);
  };
  const std::tuple<const char*, std::string, std::size_t> casi[] = {
      {"more records than counted", archivio(2, 5), 2},       {"negative count", archivio(-7, 2), 0},
      {"count past the end", archivio(0x7FFFFFFF, 3), 3},     {"cut last record", archivio(3, 3, 1000), 3},
      {"header only, cut", archivio(5, 0).substr(0, 100), 0},
  };
  for (const auto& [caso, byte, quanti] : casi) {
    SCOPED_TRACE(caso);
    MacchinaProva::ScriviHost(m.C("archivio.qlv"), byte);
    ArchivioHeader h;
    std::vector<ArchivioLivello> livelli;
    ASSERT_TRUE(LeggiArchivio("C:\\archivio.qlv", &h, &livelli));
    ASSERT_EQ(livelli.size(), quanti);
    for (std::size_t i = 0; i < livelli.size(); ++i)
      EXPECT_EQ(livelli[i].Nome.Testo().substr(0, 2), "L" + std::to_string(i));
  }
  ArchivioHeader h;
  EXPECT_FALSE(LeggiArchivioHeader("C:\\manca.qlv", &h));
}

}  // namespace
