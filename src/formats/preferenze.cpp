#include "formats/preferenze.h"

#include "support/files.h"

namespace formats {

std::string CodificaPreferenze(const PrefRecord& p) {
  Scrittore s(PrefRecord::kDimensione);
  s.Booleano(0, p.TestShowScreenShot);
  s.Booleano(2, p.TestChiediDopoCattura);
  s.Booleano(4, p.TestNoAutoCompile);
  s.Booleano(6, p.TestConfrontaUguali);
  s.Booleano(8, p.TestLogFile);
  s.Stringa(10, p.PathArchivio);
  s.Stringa(266, p.PathTRLE);
  s.Stringa(522, p.NameTom2Pc);
  s.Stringa(778, p.NameTomb4);
  s.Stringa(1034, p.DefaultLoadDir);
  s.Booleano(1290, p.TestNonDecomprimere);
  s.Booleano(1292, p.TestFullBackup);
  s.Booleano(1294, p.TestAutoSave);
  s.Booleano(1296, p.TestArchiviaSavegame);
  s.I32(1298, p.NumeroArcSavegame);
  s.I16(1302, p.NonMostrato1);
  s.I32(1304, p.MinutiSaveGameScreenShot);
  s.Stringa(1308, p.PathEditorGrafico);
  s.I32(1564, p.TimerDecimi);
  s.Booleano(1568, p.TestVerifyImpage);
  s.Booleano(1570, p.TestAttivaJoystick);
  s.I32(1572, p.Joy_ScreenShot);
  s.Booleano(1576, p.Joy_ShowDaSolo);
  s.I32(1578, p.Joy_ChiudiTrle);
  s.Booleano(1582, p.Joy_ChiudiTrleDaSolo);
  s.I16(1584, p.Joy_GamePort);
  s.I16(1586, p.VersioneSubBumber);
  s.I32(1588, p.Flags);
  s.Stringa(1592, p.LinguaAttuale);
  s.I32(1848, p.NonMostrato2);
  for (std::size_t i = 0; i < p.TabellaNonMostrata.size(); ++i) s.I16(1852 + 2 * i, p.TabellaNonMostrata[i]);
  s.Stringa(2054, p.FolderSavegameExt);
  s.Stringa(2310, p.FolderScriptEx);
  s.Doppio(2566, p.DateLastUpdating);
  s.Stringa(2574, p.LinguaDatDefault);
  return s.Byte();
}

PrefRecord DecodificaPreferenze(std::string_view byte, const PrefRecord& base) {
  const std::string tutto = Sovrapponi(CodificaPreferenze(base), byte);
  const Lettore l(tutto);
  PrefRecord p;
  p.TestShowScreenShot = l.Booleano(0);
  p.TestChiediDopoCattura = l.Booleano(2);
  p.TestNoAutoCompile = l.Booleano(4);
  p.TestConfrontaUguali = l.Booleano(6);
  p.TestLogFile = l.Booleano(8);
  l.Stringa(10, p.PathArchivio);
  l.Stringa(266, p.PathTRLE);
  l.Stringa(522, p.NameTom2Pc);
  l.Stringa(778, p.NameTomb4);
  l.Stringa(1034, p.DefaultLoadDir);
  p.TestNonDecomprimere = l.Booleano(1290);
  p.TestFullBackup = l.Booleano(1292);
  p.TestAutoSave = l.Booleano(1294);
  p.TestArchiviaSavegame = l.Booleano(1296);
  p.NumeroArcSavegame = l.I32(1298);
  p.NonMostrato1 = l.I16(1302);
  p.MinutiSaveGameScreenShot = l.I32(1304);
  l.Stringa(1308, p.PathEditorGrafico);
  p.TimerDecimi = l.I32(1564);
  p.TestVerifyImpage = l.Booleano(1568);
  p.TestAttivaJoystick = l.Booleano(1570);
  p.Joy_ScreenShot = l.I32(1572);
  p.Joy_ShowDaSolo = l.Booleano(1576);
  p.Joy_ChiudiTrle = l.I32(1578);
  p.Joy_ChiudiTrleDaSolo = l.Booleano(1582);
  p.Joy_GamePort = l.I16(1584);
  p.VersioneSubBumber = l.I16(1586);
  p.Flags = l.I32(1588);
  l.Stringa(1592, p.LinguaAttuale);
  p.NonMostrato2 = l.I32(1848);
  for (std::size_t i = 0; i < p.TabellaNonMostrata.size(); ++i) p.TabellaNonMostrata[i] = l.I16(1852 + 2 * i);
  l.Stringa(2054, p.FolderSavegameExt);
  l.Stringa(2310, p.FolderScriptEx);
  p.DateLastUpdating = l.Doppio(2566);
  l.Stringa(2574, p.LinguaDatDefault);
  return p;
}

void ImpostaDefaultPreferenze(PrefRecord& p, bool soloAzzerabili) {
  if (!soloAzzerabili) {
    p.TestShowScreenShot = true;
    p.TestChiediDopoCattura = false;
    p.TestNoAutoCompile = false;
    p.TestConfrontaUguali = true;
    p.TestLogFile = false;
    p.PathArchivio.Assegna("");
    p.PathTRLE.Assegna("");
    p.NameTom2Pc.Assegna("tom2pc.exe");
    p.NameTomb4.Assegna("tomb4.exe");
    p.DefaultLoadDir.Assegna("c:\\");
    p.TestNonDecomprimere = true;
    p.TestFullBackup = false;
    p.TestAutoSave = true;
    p.VersioneSubBumber = 0;
    p.LinguaDatDefault.Assegna("");
  }
  p.TestArchiviaSavegame = true;
  p.NumeroArcSavegame = 5;
  p.NonMostrato1 = 0;
  p.MinutiSaveGameScreenShot = 5;
  p.PathEditorGrafico.Assegna("");
  p.TimerDecimi = 5;
  p.TestVerifyImpage = true;
  p.TestAttivaJoystick = true;
  p.Joy_ScreenShot = 0;
  p.Joy_ShowDaSolo = false;
  p.Joy_ChiudiTrle = 0;
  p.Joy_GamePort = 0;
  p.Flags = 4;
  p.LinguaAttuale.Assegna("");
  p.NonMostrato2 = 0;
  p.FolderSavegameExt.Assegna("");
  p.FolderScriptEx.Assegna("");
  p.DateLastUpdating = 0;
}

bool LeggiPreferenze(const std::string& percorso, PrefRecord* p) {
  std::string byte;
  if (!LeggiTesta(percorso, PrefRecord::kDimensione, &byte, nullptr)) return false;
  *p = DecodificaPreferenze(byte);
  return true;
}

void CaricaPreferenze(const std::string& percorso, PrefRecord& p) {
  ImpostaDefaultPreferenze(p, false);
  if (!support::FileExists(percorso)) return;
  std::string byte;
  std::int64_t lunghezza = 0;
  if (!LeggiTesta(percorso, PrefRecord::kDimensione, &byte, &lunghezza)) return;
  p = DecodificaPreferenze(byte, p);
  if (lunghezza != static_cast<std::int64_t>(PrefRecord::kDimensione)) ImpostaDefaultPreferenze(p, true);
}

}  // namespace formats
