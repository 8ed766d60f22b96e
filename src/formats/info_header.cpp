#include "formats/info_header.h"

namespace formats {

std::string CodificaInfoHeader(const InfoHeader& h) {
  Scrittore s(InfoHeader::kDimensione);
  s.Stringa(0, h.StartFolderTrle);
  s.Stringa(256, h.StartFolderOrdl);
  s.Stringa(512, h.VersioneOrdelio);
  s.I32(768, h.FlagErrori);
  s.Booleano(772, h.WindowsXp);
  s.Doppio(774, h.SpazioDiscoC);
  s.Doppio(782, h.SpazioDiscoMaggiore);
  s.Stringa(790, h.DiscoMaggiore);
  return s.Byte();
}

InfoHeader DecodificaInfoHeader(std::string_view byte, const InfoHeader& base) {
  const std::string tutto = Sovrapponi(CodificaInfoHeader(base), byte);
  const Lettore l(tutto);
  InfoHeader h;
  l.Stringa(0, h.StartFolderTrle);
  l.Stringa(256, h.StartFolderOrdl);
  l.Stringa(512, h.VersioneOrdelio);
  h.FlagErrori = l.I32(768);
  h.WindowsXp = l.Booleano(772);
  h.SpazioDiscoC = l.Doppio(774);
  h.SpazioDiscoMaggiore = l.Doppio(782);
  l.Stringa(790, h.DiscoMaggiore);
  return h;
}

bool ScriviInfoHeader(const std::string& percorso, const InfoHeader& h) {
  return ScriviRecord(percorso, CodificaInfoHeader(h));
}

bool LeggiInfoHeader(const std::string& percorso, InfoHeader* h) {
  std::string byte;
  if (!LeggiTesta(percorso, InfoHeader::kDimensione, &byte, nullptr)) return false;
  *h = DecodificaInfoHeader(byte);
  return true;
}

}  // namespace formats
