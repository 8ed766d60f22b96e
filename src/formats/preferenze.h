// Ordelio's settings record, `ordelio.prf`: 2606 bytes. This program only reads it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/codifica.h"

namespace formats {

struct PrefRecord {
  static constexpr std::size_t kDimensione = 2606;

  bool TestShowScreenShot = false;
  bool TestChiediDopoCattura = false;
  bool TestNoAutoCompile = false;
  bool TestConfrontaUguali = false;
  bool TestLogFile = false;
  StringaFissa<256> PathArchivio;
  StringaFissa<256> PathTRLE;
  StringaFissa<256> NameTom2Pc;
  StringaFissa<256> NameTomb4;
  StringaFissa<256> DefaultLoadDir;
  bool TestNonDecomprimere = false;
  bool TestFullBackup = false;
  bool TestAutoSave = false;
  bool TestArchiviaSavegame = false;
  std::int32_t NumeroArcSavegame = 0;
  std::int16_t NonMostrato1 = 0;
  std::int32_t MinutiSaveGameScreenShot = 0;
  StringaFissa<256> PathEditorGrafico;
  std::int32_t TimerDecimi = 0;
  bool TestVerifyImpage = false;
  bool TestAttivaJoystick = false;
  std::int32_t Joy_ScreenShot = 0;
  bool Joy_ShowDaSolo = false;
  std::int32_t Joy_ChiudiTrle = 0;
  bool Joy_ChiudiTrleDaSolo = false;
  std::int16_t Joy_GamePort = 0;
  std::int16_t VersioneSubBumber = 0;
  std::int32_t Flags = 0;
  StringaFissa<256> LinguaAttuale;
  std::int32_t NonMostrato2 = 0;
  std::array<std::int16_t, 101> TabellaNonMostrata{};
  StringaFissa<256> FolderSavegameExt;
  StringaFissa<256> FolderScriptEx;
  double DateLastUpdating = 0;  // OLE Automation date: days since 30 December 1899
  StringaFissa<32> LinguaDatDefault;

  bool operator==(const PrefRecord&) const = default;
};

std::string CodificaPreferenze(const PrefRecord& p);
// The places of the record's fixed strings.
std::vector<CampoTesto> CampiTestoPreferenze();
// Bytes past the end of a short input keep the values of `base`.
PrefRecord DecodificaPreferenze(std::string_view byte, const PrefRecord& base = {});

// Ordelio's record as read by the check run and the report: no defaults, no length rule.
bool LeggiPreferenze(const std::string& percorso, PrefRecord* p);

// The defaults, then the file over them; a file of any length but the record's own gets the defaults of
// the later fields back. A missing file leaves the defaults.
void CaricaPreferenze(const std::string& percorso, PrefRecord& p);

// The defaults over `p`; with `soloAzzerabili`, only those that a file of the wrong length gets back.
void ImpostaDefaultPreferenze(PrefRecord& p, bool soloAzzerabili);

}  // namespace formats
