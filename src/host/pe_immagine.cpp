#include "host/pe_immagine.h"

#include "host/byte_le.h"

namespace host {
namespace {

constexpr std::size_t kDosHeader = 64;
constexpr std::size_t kPosLfanew = 0x3C;
constexpr std::size_t kFirmaECoff = 4 + 20;
constexpr std::size_t kPosMacchina = 4;
constexpr std::size_t kPosNumeroSezioni = 4 + 2;
constexpr std::size_t kPosDimensioneOpzionale = 4 + 16;
constexpr std::size_t kSezione = 40;

// Where the optional header keeps the number of data directories and the first of them, by its kind.
bool PosizioniCartelle(const std::string& opzionale, std::size_t* numero, std::size_t* prima) {
  if (opzionale.size() < 2) return false;
  switch (U16LE(opzionale, 0)) {
    case 0x10B:  // PE32
      *numero = 92;
      *prima = 96;
      return true;
    case 0x20B:  // PE32+
      *numero = 108;
      *prima = 112;
      return true;
    default:
      return false;
  }
}

}  // namespace

bool LeggiNelFile(ImmaginePe& im, std::uint64_t inizio, std::size_t n, std::string* out) {
  if (inizio > im.lunghezza || n > im.lunghezza - inizio) return false;
  return im.lettore->Leggi(inizio, n, out);
}

bool LeggiRva(ImmaginePe& im, std::uint32_t rva, std::size_t n, std::string* out) {
  for (const SezionePe& s : im.sezioni) {
    if (rva < s.indirizzo) continue;
    const std::uint64_t dentro = rva - s.indirizzo;
    if (dentro >= s.byteNelFile || n > s.byteNelFile - dentro) continue;
    return LeggiNelFile(im, s.posizioneNelFile + dentro, n, out);
  }
  return false;
}

std::size_t ByteDaRva(const ImmaginePe& im, std::uint32_t rva) {
  for (const SezionePe& s : im.sezioni) {
    if (rva < s.indirizzo || rva - s.indirizzo >= s.byteNelFile) continue;
    const std::uint64_t inizio = std::uint64_t{s.posizioneNelFile} + (rva - s.indirizzo);
    if (inizio >= im.lunghezza) continue;
    const std::uint64_t nellaSezione = s.byteNelFile - (rva - s.indirizzo);
    const std::uint64_t nelFile = im.lunghezza - inizio;
    return static_cast<std::size_t>(nellaSezione < nelFile ? nellaSezione : nelFile);
  }
  return 0;
}

bool ApriImmaginePe(LettoreByte& lettore, ImmaginePe* im, bool* conMacchina) {
  im->lettore = &lettore;
  im->lunghezza = lettore.Lunghezza();
  if (conMacchina) *conMacchina = false;
  std::string dos;
  if (!LeggiNelFile(*im, 0, kDosHeader, &dos) || dos[0] != 'M' || dos[1] != 'Z') return false;
  const std::uint64_t pe = U32LE(dos, kPosLfanew);
  std::string coff;
  if (!LeggiNelFile(*im, pe, kFirmaECoff, &coff) || coff.compare(0, 4, std::string("PE\0\0", 4)) != 0)
    return false;
  im->macchina = U16LE(coff, kPosMacchina);
  if (conMacchina) *conMacchina = true;
  const std::size_t numeroSezioni = U16LE(coff, kPosNumeroSezioni);
  const std::size_t dimensioneOpzionale = U16LE(coff, kPosDimensioneOpzionale);
  std::size_t numero = 0, prima = 0;
  if (!LeggiNelFile(*im, pe + kFirmaECoff, dimensioneOpzionale, &im->opzionale) ||
      !PosizioniCartelle(im->opzionale, &numero, &prima))
    return false;
  std::string tabella;
  if (!LeggiNelFile(*im, pe + kFirmaECoff + dimensioneOpzionale, numeroSezioni * kSezione, &tabella))
    return false;
  im->sezioni.reserve(numeroSezioni);
  for (std::size_t i = 0; i < numeroSezioni; ++i) {
    const std::size_t s = i * kSezione;
    im->sezioni.push_back({U32LE(tabella, s + 12), U32LE(tabella, s + 16), U32LE(tabella, s + 20)});
  }
  return true;
}

std::uint32_t CartellaDati(const ImmaginePe& im, std::size_t indice) {
  std::size_t numero = 0, prima = 0;
  if (!PosizioniCartelle(im.opzionale, &numero, &prima)) return 0;
  const std::size_t pos = prima + indice * 8;
  if (im.opzionale.size() < pos + 8 || im.opzionale.size() < numero + 4 ||
      U32LE(im.opzionale, numero) <= indice)
    return 0;
  return U32LE(im.opzionale, pos);
}

}  // namespace host
