// Ordelio's level archive (as a rule archivio.qlv): a 546-byte header, then `TotLivelli` level records of
// 1634 bytes each, one right behind the other.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/codifica.h"

namespace formats {

struct ArchivioHeader {
  static constexpr std::size_t kDimensione = 546;

  std::int32_t NVersione = 0;
  StringaFissa<256> MainDir;
  StringaFissa<256> SecondaryDir;
  std::int32_t TotLivelli = 0;
  std::int32_t TotCD = 0;
  bool TestCompresso = false;
  bool TestAudioInMp3 = false;
  bool TestSetupCd = false;
  double SizeMainDir = 0;
  double SizeSecondayDir = 0;

  bool operator==(const ArchivioHeader&) const = default;
};

struct ArchivioLivello {
  static constexpr std::size_t kDimensione = 1634;

  StringaFissa<256> Nome;
  StringaFissa<256> Note;
  StringaFissa<80> Autore_Nome;
  StringaFissa<256> Autore_Email;
  StringaFissa<256> Autore_Sito;
  StringaFissa<256> Autore_Note;
  std::int16_t Codice = 0;
  std::int16_t MaxSavegames = 0;
  std::int16_t NumeroCd = 0;
  std::int16_t Flags = 0;
  StringaFissa<256> NomeSoluzione;
  std::int32_t SizeFiles = 0;
  std::int32_t SizeSubDir = 0;
  bool TestRicalcolaSize = false;

  bool operator==(const ArchivioLivello&) const = default;
};

// The places of the records' fixed strings, and of a level's three about its author.
std::vector<CampoTesto> CampiTestoArchivioHeader();
std::vector<CampoTesto> CampiTestoLivello();
struct CampiAutore {
  CampoTesto Nome, Email, Sito;
};
CampiAutore CampiAutoreLivello();

std::string CodificaArchivioHeader(const ArchivioHeader& h);
ArchivioHeader DecodificaArchivioHeader(std::string_view byte);
std::string CodificaArchivioLivello(const ArchivioLivello& l);
ArchivioLivello DecodificaArchivioLivello(std::string_view byte);

// The levels of a whole archive image: as many as `TotLivelli` says, but only those whose record begins
// inside the bytes given (a cut last record is read as far as it goes). A negative count gives none.
std::vector<ArchivioLivello> DecodificaLivelli(std::string_view archivio, std::int32_t totLivelli);

// The header alone, as the check run reads it. False when the file cannot be opened.
bool LeggiArchivioHeader(const std::string& percorso, ArchivioHeader* h);
// The header and its levels, as the report reads them.
bool LeggiArchivio(const std::string& percorso, ArchivioHeader* h, std::vector<ArchivioLivello>* livelli);

}  // namespace formats
