#include "analysis/prospetto_preferenze.h"

#include "analysis/testo.h"
#include "collection/membri.h"
#include "support/data.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {

RigheRecord RighePreferenze(const formats::PrefRecord& p) {
  using support::TogliSpazi;
  return {
      {"DateLastUpdating", support::DataGenerale(p.DateLastUpdating)},
      {"DefaultLoadDir", Valore(p.DefaultLoadDir)},
      {"Flags", "0x" + Esadecimale(p.Flags, 32)},
      {"FolderSavegameExt", TogliSpazi(p.FolderSavegameExt.Testo())},
      {"FolderScriptEx", TogliSpazi(p.FolderScriptEx.Testo())},
      {"Joy_ChiudiTrle", Valore(p.Joy_ChiudiTrle)},
      {"Joy_ChiudiTrleDaSolo", Valore(p.Joy_ChiudiTrleDaSolo)},
      {"Joy_GamePort", Valore(p.Joy_GamePort)},
      {"Joy_ScreenShot", Valore(p.Joy_ScreenShot)},
      {"Joy_ShowDaSolo", Valore(p.Joy_ShowDaSolo)},
      {"LinguaAttuale", TogliSpazi(p.LinguaAttuale.Testo())},
      {"LinguaDatDefault", TogliSpazi(p.LinguaDatDefault.Testo())},
      {"MinutiSaveGameScreenShot", Valore(p.MinutiSaveGameScreenShot)},
      {"NameTom2Pc", Valore(p.NameTom2Pc)},
      // The whole field, padding included: this line is always 267 characters long.
      {"NameTomb4", p.NameTomb4.Testo()},
      {"NumeroArcSavegame", Valore(p.NumeroArcSavegame)},
      {"PathArchivio", Valore(p.PathArchivio)},
      {"PathEditorGrafico", Valore(p.PathEditorGrafico)},
      {"PathTRLE", Valore(p.PathTRLE)},
      {"TestArchiviaSavegame", Valore(p.TestArchiviaSavegame)},
      {"TestAttivaJoystick", Valore(p.TestAttivaJoystick)},
      {"TestAutoSave", Valore(p.TestAutoSave)},
      {"TestChiediDopoCattura", Valore(p.TestChiediDopoCattura)},
      {"TestConfrontaUguali", Valore(p.TestConfrontaUguali)},
      {"TestFullBackup", Valore(p.TestFullBackup)},
      {"TestLogFile", Valore(p.TestLogFile)},
      {"TestNoAutoCompile", Valore(p.TestNoAutoCompile)},
      {"TestNonDecomprimere", Valore(p.TestNonDecomprimere)},
      {"TestShowScreenShot", Valore(p.TestShowScreenShot)},
      {"TestVerifyImpage", Valore(p.TestVerifyImpage)},
      {"TimerDecimi", Valore(p.TimerDecimi)},
      {"VersioneSubBumber", Valore(p.VersioneSubBumber)},
  };
}

std::string TestoPreferenze(const formats::PrefRecord& p) {
  std::string t;
  AggiungiRighe(t, RighePreferenze(p));
  return t;
}

std::optional<std::string> ProspettoPreferenze(const std::string& cartellaDati, support::Messaggi& messaggi) {
  const std::string percorso = collection::FileDati(cartellaDati, collection::Membro::preferenze);
  if (!support::FileExists(percorso)) {
    messaggi.Critico("Non trovo file: " + percorso);
    return std::nullopt;
  }
  formats::PrefRecord p;
  if (!formats::LeggiPreferenze(percorso, &p)) p = formats::PrefRecord{};
  return TestoPreferenze(p);
}

}  // namespace analysis
