#include "formats/info_header.h"

namespace formats {
namespace {

// The record's fields in file order.
constexpr auto kCampi = [](auto& v, auto& h) {
  v(h.StartFolderTrle);
  v(h.StartFolderOrdl);
  v(h.VersioneOrdelio);
  v(h.FlagErrori);
  v(h.WindowsXp);
  v(h.SpazioDiscoC);
  v(h.SpazioDiscoMaggiore);
  v(h.DiscoMaggiore);
};
static_assert(LunghezzaCampi<InfoHeader>(kCampi) == InfoHeader::kDimensione);

}  // namespace

std::vector<CampoTesto> CampiTestoInfoHeader() {
  return CampiTesto(kCampi, InfoHeader{});
}

std::string CodificaInfoHeader(const InfoHeader& h) {
  return Codifica(h, kCampi);
}

InfoHeader DecodificaInfoHeader(std::string_view byte, const InfoHeader& base) {
  return Decodifica(byte, base, kCampi);
}

bool LeggiInfoHeader(const std::string& percorso, InfoHeader* h) {
  std::string byte;
  if (!LeggiTesta(percorso, InfoHeader::kDimensione, &byte, nullptr)) return false;
  *h = DecodificaInfoHeader(byte);
  return true;
}

}  // namespace formats
