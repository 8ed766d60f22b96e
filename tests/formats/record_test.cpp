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

// Records with every field set to a value of its own, as the golden files under tests/data/record hold them.
InfoHeader InfoNota() {
  InfoHeader h;
  h.StartFolderTrle.Assegna("C:\\Trle");
  h.StartFolderOrdl.Assegna("C:\\Ordl");
  h.VersioneOrdelio.Assegna("1, 0, 0, 5");
  h.FlagErrori = 0x01020304;
  h.WindowsXp = true;
  h.SpazioDiscoC = 5368709120.5;
  h.SpazioDiscoMaggiore = 1.5;
  h.DiscoMaggiore.Assegna("D:");  // cut to its one character
  return h;
}

PrefRecord PrefNota() {
  PrefRecord p;
  p.TestShowScreenShot = p.TestConfrontaUguali = p.TestFullBackup = p.TestAttivaJoystick = true;
  p.Joy_ChiudiTrleDaSolo = true;
  p.PathArchivio.Assegna("C:\\Ordl\\archivio.qlv");
  p.PathTRLE.Assegna("C:\\Trle");
  p.NameTom2Pc.Assegna("t2p.exe");
  p.NameTomb4.Assegna("t4.exe");
  p.DefaultLoadDir.Assegna("d:\\");
  p.NumeroArcSavegame = 0x01020304;
  p.NonMostrato1 = 0x0506;
  p.MinutiSaveGameScreenShot = 0x0708090A;
  p.PathEditorGrafico.Assegna("paint.exe");
  p.TimerDecimi = -77;
  p.Joy_ScreenShot = 0x0B0C0D0E;
  p.Joy_ChiudiTrle = 0x0F101112;
  p.Joy_GamePort = 0x1314;
  p.VersioneSubBumber = 0x1516;
  p.Flags = 0x7F00;
  p.LinguaAttuale.Assegna("ITALIANO");
  p.NonMostrato2 = -2;
  for (std::size_t i = 0; i < p.TabellaNonMostrata.size(); ++i)
    p.TabellaNonMostrata[i] = static_cast<std::int16_t>(100 + i);
  p.FolderSavegameExt.Assegna("C:\\Save");
  p.FolderScriptEx.Assegna("C:\\Script");
  p.DateLastUpdating = 45000.25;
  p.LinguaDatDefault.Assegna("english.dat");
  return p;
}

ArchivioHeader ArchivioNoto() {
  ArchivioHeader h;
  h.NVersione = 0x01020304;
  h.MainDir.Assegna("C:\\Livelli");
  h.SecondaryDir.Assegna("D:\\Backup");
  h.TotLivelli = 0x05060708;
  h.TotCD = -9;
  h.TestAudioInMp3 = true;
  h.SizeMainDir = 1e10;
  h.SizeSecondayDir = 2.5;
  return h;
}

ArchivioLivello LivelloNoto() {
  ArchivioLivello v;
  v.Nome.Assegna("Tomba");
  v.Note.Assegna("note");
  v.Autore_Nome.Assegna(std::string(90, 'A'));  // cut at 80
  v.Autore_Email.Assegna("a@b.c");
  v.Autore_Sito.Assegna("www");
  v.Autore_Note.Assegna("bravo");
  v.Codice = 0x0102;
  v.MaxSavegames = 0x0304;
  v.NumeroCd = 0x0506;
  v.Flags = -16;
  v.NomeSoluzione.Assegna("sol");
  v.SizeFiles = 0x0708090A;
  v.SizeSubDir = -2000;
  v.TestRicalcolaSize = true;
  return v;
}

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
      {"info_header", CodificaInfoHeader(InfoNota()),
       [](const std::string& b) { return DecodificaInfoHeader(b) == InfoNota(); }},
      {"preferenze", CodificaPreferenze(PrefNota()),
       [](const std::string& b) { return DecodificaPreferenze(b) == PrefNota(); }},
      {"archivio_header", CodificaArchivioHeader(ArchivioNoto()),
       [](const std::string& b) { return DecodificaArchivioHeader(b) == ArchivioNoto(); }},
      {"archivio_livello", CodificaArchivioLivello(LivelloNoto()),
       [](const std::string& b) { return DecodificaArchivioLivello(b) == LivelloNoto(); }},
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
    MacchinaProva::ScriviHost(m.C("archivio.qlv"), byte);
    ArchivioHeader h;
    std::vector<ArchivioLivello> livelli;
    ASSERT_TRUE(LeggiArchivio("C:\\archivio.qlv", &h, &livelli)) << caso;
    ASSERT_EQ(livelli.size(), quanti) << caso;
    for (std::size_t i = 0; i < livelli.size(); ++i)
      EXPECT_EQ(livelli[i].Nome.Testo().substr(0, 2), "L" + std::to_string(i)) << caso;
  }
  ArchivioHeader h;
  EXPECT_FALSE(LeggiArchivioHeader("C:\\manca.qlv", &h));
}

}  // namespace
