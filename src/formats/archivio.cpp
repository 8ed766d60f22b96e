#include "formats/archivio.h"

#include <algorithm>

namespace formats {

std::string CodificaArchivioHeader(const ArchivioHeader& h) {
  Scrittore s(ArchivioHeader::kDimensione);
  s.I32(0, h.NVersione);
  s.Stringa(4, h.MainDir);
  s.Stringa(260, h.SecondaryDir);
  s.I32(516, h.TotLivelli);
  s.I32(520, h.TotCD);
  s.Booleano(524, h.TestCompresso);
  s.Booleano(526, h.TestAudioInMp3);
  s.Booleano(528, h.TestSetupCd);
  s.Doppio(530, h.SizeMainDir);
  s.Doppio(538, h.SizeSecondayDir);
  return s.Byte();
}

ArchivioHeader DecodificaArchivioHeader(std::string_view byte) {
  const std::string tutto = Sovrapponi(std::string(ArchivioHeader::kDimensione, '\0'), byte);
  const Lettore l(tutto);
  ArchivioHeader h;
  h.NVersione = l.I32(0);
  l.Stringa(4, h.MainDir);
  l.Stringa(260, h.SecondaryDir);
  h.TotLivelli = l.I32(516);
  h.TotCD = l.I32(520);
  h.TestCompresso = l.Booleano(524);
  h.TestAudioInMp3 = l.Booleano(526);
  h.TestSetupCd = l.Booleano(528);
  h.SizeMainDir = l.Doppio(530);
  h.SizeSecondayDir = l.Doppio(538);
  return h;
}

std::string CodificaArchivioLivello(const ArchivioLivello& v) {
  Scrittore s(ArchivioLivello::kDimensione);
  s.Stringa(0, v.Nome);
  s.Stringa(256, v.Note);
  s.Stringa(512, v.Autore_Nome);
  s.Stringa(592, v.Autore_Email);
  s.Stringa(848, v.Autore_Sito);
  s.Stringa(1104, v.Autore_Note);
  s.I16(1360, v.Codice);
  s.I16(1362, v.MaxSavegames);
  s.I16(1364, v.NumeroCd);
  s.I16(1366, v.Flags);
  s.Stringa(1368, v.NomeSoluzione);
  s.I32(1624, v.SizeFiles);
  s.I32(1628, v.SizeSubDir);
  s.Booleano(1632, v.TestRicalcolaSize);
  return s.Byte();
}

ArchivioLivello DecodificaArchivioLivello(std::string_view byte) {
  const std::string tutto = Sovrapponi(std::string(ArchivioLivello::kDimensione, '\0'), byte);
  const Lettore l(tutto);
  ArchivioLivello v;
  l.Stringa(0, v.Nome);
  l.Stringa(256, v.Note);
  l.Stringa(512, v.Autore_Nome);
  l.Stringa(592, v.Autore_Email);
  l.Stringa(848, v.Autore_Sito);
  l.Stringa(1104, v.Autore_Note);
  v.Codice = l.I16(1360);
  v.MaxSavegames = l.I16(1362);
  v.NumeroCd = l.I16(1364);
  v.Flags = l.I16(1366);
  l.Stringa(1368, v.NomeSoluzione);
  v.SizeFiles = l.I32(1624);
  v.SizeSubDir = l.I32(1628);
  v.TestRicalcolaSize = l.Booleano(1632);
  return v;
}

std::vector<ArchivioLivello> DecodificaLivelli(std::string_view archivio, std::int32_t totLivelli) {
  std::vector<ArchivioLivello> livelli;
  if (totLivelli <= 0 || archivio.size() <= ArchivioHeader::kDimensione) return livelli;
  // Bounded by the records that begin inside the file, before anything is allocated for them.
  const std::size_t presenti =
      (archivio.size() - ArchivioHeader::kDimensione + ArchivioLivello::kDimensione - 1) /
      ArchivioLivello::kDimensione;
  const std::size_t n = std::min(presenti, static_cast<std::size_t>(totLivelli));
  livelli.reserve(n);
  for (std::size_t i = 0; i < n; ++i)
    livelli.push_back(DecodificaArchivioLivello(archivio.substr(
        ArchivioHeader::kDimensione + i * ArchivioLivello::kDimensione, ArchivioLivello::kDimensione)));
  return livelli;
}

bool LeggiArchivioHeader(const std::string& percorso, ArchivioHeader* h) {
  std::string byte;
  if (!LeggiTesta(percorso, ArchivioHeader::kDimensione, &byte, nullptr)) return false;
  *h = DecodificaArchivioHeader(byte);
  return true;
}

bool LeggiArchivio(const std::string& percorso, ArchivioHeader* h, std::vector<ArchivioLivello>* livelli) {
  std::string byte;
  std::int64_t lunghezza = 0;
  if (!LeggiTesta(percorso, ArchivioHeader::kDimensione, &byte, &lunghezza)) return false;
  *h = DecodificaArchivioHeader(byte);
  // Only as far as the counted records go: whatever follows them is not read.
  const std::int64_t fine =
      ArchivioHeader::kDimensione +
      static_cast<std::int64_t>(std::max(h->TotLivelli, 0)) * ArchivioLivello::kDimensione;
  if (!LeggiTesta(percorso, static_cast<std::size_t>(std::min(fine, lunghezza)), &byte, nullptr))
    return false;
  *livelli = DecodificaLivelli(byte, h->TotLivelli);
  return true;
}

}  // namespace formats
