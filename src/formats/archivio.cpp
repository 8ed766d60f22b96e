#include "formats/archivio.h"

#include <algorithm>

namespace formats {

namespace {

// The records' fields in file order.
constexpr auto kCampiHeader = [](auto& v, auto& h) {
  v(h.NVersione);
  v(h.MainDir);
  v(h.SecondaryDir);
  v(h.TotLivelli);
  v(h.TotCD);
  v(h.TestCompresso);
  v(h.TestAudioInMp3);
  v(h.TestSetupCd);
  v(h.SizeMainDir);
  v(h.SizeSecondayDir);
};
static_assert(LunghezzaCampi<ArchivioHeader>(kCampiHeader) == ArchivioHeader::kDimensione);

constexpr auto kCampiLivello = [](auto& v, auto& l) {
  v(l.Nome);
  v(l.Note);
  v(l.Autore_Nome);
  v(l.Autore_Email);
  v(l.Autore_Sito);
  v(l.Autore_Note);
  v(l.Codice);
  v(l.MaxSavegames);
  v(l.NumeroCd);
  v(l.Flags);
  v(l.NomeSoluzione);
  v(l.SizeFiles);
  v(l.SizeSubDir);
  v(l.TestRicalcolaSize);
};
static_assert(LunghezzaCampi<ArchivioLivello>(kCampiLivello) == ArchivioLivello::kDimensione);

}  // namespace

std::vector<CampoTesto> CampiTestoArchivioHeader() {
  return CampiTesto(kCampiHeader, ArchivioHeader{});
}

std::vector<CampoTesto> CampiTestoLivello() {
  return CampiTesto(kCampiLivello, ArchivioLivello{});
}

CampiAutore CampiAutoreLivello() {
  const ArchivioLivello l{};
  CampiAutore a;
  for (const CampoTesto& c : CampiTesto(kCampiLivello, l)) {
    if (c.campo == &l.Autore_Nome) a.Nome = c;
    if (c.campo == &l.Autore_Email) a.Email = c;
    if (c.campo == &l.Autore_Sito) a.Sito = c;
  }
  return a;
}

std::string CodificaArchivioHeader(const ArchivioHeader& h) {
  return Codifica(h, kCampiHeader);
}

ArchivioHeader DecodificaArchivioHeader(std::string_view byte) {
  return Decodifica(byte, ArchivioHeader{}, kCampiHeader);
}

std::string CodificaArchivioLivello(const ArchivioLivello& l) {
  return Codifica(l, kCampiLivello);
}

ArchivioLivello DecodificaArchivioLivello(std::string_view byte) {
  return Decodifica(byte, ArchivioLivello{}, kCampiLivello);
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
