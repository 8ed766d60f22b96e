// The record this program composes about the user's machine: the start folders, Ordelio's version, the
// error-flag word of the check run, and the disk figures. 791 bytes, nothing before or after.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/codifica.h"

namespace formats {

struct InfoHeader {
  static constexpr std::size_t kDimensione = 791;

  StringaFissa<256> StartFolderTrle;
  StringaFissa<256> StartFolderOrdl;
  StringaFissa<256> VersioneOrdelio;
  std::int32_t FlagErrori = 0;
  bool WindowsXp = false;
  double SpazioDiscoC = 0;
  double SpazioDiscoMaggiore = 0;
  StringaFissa<1> DiscoMaggiore;

  bool operator==(const InfoHeader&) const = default;
};

// Bits of `FlagErrori`.
enum FlagErrore : std::int32_t {
  kMancaOrdelioPrf = 0x001,
  kMancaArchivioQlv = 0x002,
  kMancaCartellaTrle = 0x004,
  kMancaCartellaOrdl = 0x008,
  kMancaCartellaArchivio = 0x010,
  kMancaCartellaBackup = 0x020,
  kMancaOrdl2009Exe = 0x040,
  kMancaOrdeioTxt = 0x080,
  kMancaScriptDat = 0x100,
};

struct TestoFlag {
  std::int32_t bit;
  std::string_view testo;
};

// The texts of the flag bits in the order the header report walks them (not the order of their values).
inline constexpr auto kTestiFlagErrori = std::to_array<TestoFlag>({
    {kMancaArchivioQlv, "Manca archivio.qlv"},
    {kMancaCartellaOrdl, "Manca cartella ORDL"},
    {kMancaCartellaArchivio, "Manca cartella archivio"},
    {kMancaCartellaBackup, "Manca cartella backup"},
    {kMancaCartellaTrle, "Manca cartella TRLE"},
    {kMancaOrdelioPrf, "Manca ordelio.prf"},
    {kMancaOrdl2009Exe, "Manca ordl2009.exe"},
    {kMancaOrdeioTxt, "Manca Ordeio.txt"},
    {kMancaScriptDat, "Manca Script.dat"},
});

// Every bit that the table names: a new flag is one row of it.
constexpr std::int32_t BitFlagNoti() {
  std::int32_t bit = 0;
  for (const TestoFlag& f : kTestiFlagErrori) bit |= f.bit;
  return bit;
}

std::string CodificaInfoHeader(const InfoHeader& h);
// The places of the record's fixed strings.
std::vector<CampoTesto> CampiTestoInfoHeader();
// Bytes past the end of a short input keep the values of `base`.
InfoHeader DecodificaInfoHeader(std::string_view byte, const InfoHeader& base = {});

// False when the file cannot be opened; a short file leaves the rest of the record zero.
bool LeggiInfoHeader(const std::string& percorso, InfoHeader* h);

}  // namespace formats
