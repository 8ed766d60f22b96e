#include "formats/preferenze.h"

#include "support/files.h"

namespace formats {

namespace {

// The record's fields in file order.
constexpr auto kCampi = [](auto& v, auto& p) {
  v(p.TestShowScreenShot);
  v(p.TestChiediDopoCattura);
  v(p.TestNoAutoCompile);
  v(p.TestConfrontaUguali);
  v(p.TestLogFile);
  v(p.PathArchivio);
  v(p.PathTRLE);
  v(p.NameTom2Pc);
  v(p.NameTomb4);
  v(p.DefaultLoadDir);
  v(p.TestNonDecomprimere);
  v(p.TestFullBackup);
  v(p.TestAutoSave);
  v(p.TestArchiviaSavegame);
  v(p.NumeroArcSavegame);
  v(p.NonMostrato1);
  v(p.MinutiSaveGameScreenShot);
  v(p.PathEditorGrafico);
  v(p.TimerDecimi);
  v(p.TestVerifyImpage);
  v(p.TestAttivaJoystick);
  v(p.Joy_ScreenShot);
  v(p.Joy_ShowDaSolo);
  v(p.Joy_ChiudiTrle);
  v(p.Joy_ChiudiTrleDaSolo);
  v(p.Joy_GamePort);
  v(p.VersioneSubBumber);
  v(p.Flags);
  v(p.LinguaAttuale);
  v(p.NonMostrato2);
  v(p.TabellaNonMostrata);
  v(p.FolderSavegameExt);
  v(p.FolderScriptEx);
  v(p.DateLastUpdating);
  v(p.LinguaDatDefault);
};
static_assert(LunghezzaCampi<PrefRecord>(kCampi) == PrefRecord::kDimensione);

}  // namespace

std::vector<CampoTesto> CampiTestoPreferenze() {
  return CampiTesto(kCampi, PrefRecord{});
}

std::string CodificaPreferenze(const PrefRecord& p) {
  return Codifica(p, kCampi);
}

PrefRecord DecodificaPreferenze(std::string_view byte, const PrefRecord& base) {
  return Decodifica(byte, base, kCampi);
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
