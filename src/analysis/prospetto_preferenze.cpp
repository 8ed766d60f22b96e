#include "analysis/prospetto_preferenze.h"

#include "analysis/testo.h"
#include "collection/membri.h"
#include "support/data.h"
#include "support/files.h"
#include "support/valori.h"

namespace analysis {

std::string TestoPreferenze(const formats::PrefRecord& p) {
  using support::PulisciStringa;
  using support::TogliSpazi;
  auto decimale = [](std::int64_t v) { return std::to_string(v); };
  auto booleano = [](bool v) { return std::string(TestoBooleano(v)); };
  std::string t;
  auto riga = [&t](std::string_view etichetta, const std::string& valore) {
    t += etichetta;
    AggiungiRiga(t, valore);
  };
  riga("DateLastUpdating: ", support::DataGenerale(p.DateLastUpdating));
  riga("DefaultLoadDir: ", PulisciStringa(p.DefaultLoadDir.Testo()));
  riga("Flags: 0x", Esadecimale(p.Flags, 32));
  riga("FolderSavegameExt: ", TogliSpazi(p.FolderSavegameExt.Testo()));
  riga("FolderScriptEx: ", TogliSpazi(p.FolderScriptEx.Testo()));
  riga("Joy_ChiudiTrle: ", decimale(p.Joy_ChiudiTrle));
  riga("Joy_ChiudiTrleDaSolo: ", booleano(p.Joy_ChiudiTrleDaSolo));
  riga("Joy_GamePort: ", decimale(p.Joy_GamePort));
  riga("Joy_ScreenShot: ", decimale(p.Joy_ScreenShot));
  riga("Joy_ShowDaSolo: ", booleano(p.Joy_ShowDaSolo));
  riga("LinguaAttuale: ", TogliSpazi(p.LinguaAttuale.Testo()));
  riga("LinguaDatDefault: ", TogliSpazi(p.LinguaDatDefault.Testo()));
  riga("MinutiSaveGameScreenShot: ", decimale(p.MinutiSaveGameScreenShot));
  riga("NameTom2Pc: ", PulisciStringa(p.NameTom2Pc.Testo()));
  // The whole field, padding included: this line is always 267 characters long.
  riga("NameTomb4: ", p.NameTomb4.Testo());
  riga("NumeroArcSavegame: ", decimale(p.NumeroArcSavegame));
  riga("PathArchivio: ", PulisciStringa(p.PathArchivio.Testo()));
  riga("PathEditorGrafico: ", PulisciStringa(p.PathEditorGrafico.Testo()));
  riga("PathTRLE: ", PulisciStringa(p.PathTRLE.Testo()));
  riga("TestArchiviaSavegame: ", booleano(p.TestArchiviaSavegame));
  riga("TestAttivaJoystick: ", booleano(p.TestAttivaJoystick));
  riga("TestAutoSave: ", booleano(p.TestAutoSave));
  riga("TestChiediDopoCattura: ", booleano(p.TestChiediDopoCattura));
  riga("TestConfrontaUguali: ", booleano(p.TestConfrontaUguali));
  riga("TestFullBackup: ", booleano(p.TestFullBackup));
  riga("TestLogFile: ", booleano(p.TestLogFile));
  riga("TestNoAutoCompile: ", booleano(p.TestNoAutoCompile));
  riga("TestNonDecomprimere: ", booleano(p.TestNonDecomprimere));
  riga("TestShowScreenShot: ", booleano(p.TestShowScreenShot));
  riga("TestVerifyImpage: ", booleano(p.TestVerifyImpage));
  riga("TimerDecimi: ", decimale(p.TimerDecimi));
  riga("VersioneSubBumber: ", decimale(p.VersioneSubBumber));
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
