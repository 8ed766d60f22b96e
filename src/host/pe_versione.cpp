// The version resource out of a PE file, as the platform's loader finds it: headers, the resource data
// directory, the sections that map its addresses to the file, and the three levels of the resource tree.
// Everything comes from an outside file, so each offset and count is held against what the file can hold
// before anything is read or allocated.
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "host/byte_le.h"
#include "host/pe_immagine.h"
#include "host/versione.h"

namespace host {
namespace {

constexpr std::uint32_t kRtVersion = 16;
// In a resource directory entry: the offset names a further directory, not a data entry.
constexpr std::uint32_t kSottocartella = 0x80000000u;

constexpr std::size_t kCartellaRisorse = 16;
constexpr std::size_t kVoceRisorsa = 8;
constexpr std::size_t kVoceDati = 16;
constexpr std::size_t kIndiceDatiRisorse = 2;

// The offset of the chosen entry of the directory at `cartella`: the entry with id `id`, or the first entry
// when `id` is negative. False when there is none or the directory does not fit.
bool VoceScelta(ImmaginePe& im, std::uint32_t cartella, std::int64_t id, std::uint32_t* offset) {
  std::string intestazione;
  if (!LeggiRva(im, cartella, kCartellaRisorse, &intestazione)) return false;
  const std::size_t numero = std::size_t{U16LE(intestazione, 12)} + U16LE(intestazione, 14);
  if (numero == 0 || cartella > std::numeric_limits<std::uint32_t>::max() - kCartellaRisorse) return false;
  std::string voci;
  if (!LeggiRva(im, cartella + kCartellaRisorse, numero * kVoceRisorsa, &voci)) return false;
  for (std::size_t i = 0; i < numero; ++i) {
    // A named entry has its top bit set, so it never equals a numeric id.
    if (id < 0 || U32LE(voci, i * kVoceRisorsa) == id) {
      *offset = U32LE(voci, i * kVoceRisorsa + 4);
      return true;
    }
  }
  return false;
}

}  // namespace

bool LettoreMemoria::Leggi(std::uint64_t inizio, std::size_t n, std::string* out) {
  if (inizio > byte_.size() || n > byte_.size() - inizio) return false;
  out->assign(byte_.substr(static_cast<std::size_t>(inizio), n));
  return true;
}

std::string EstraiRisorsaVersione(LettoreByte& lettore) {
  ImmaginePe im;
  if (!ApriImmaginePe(lettore, &im)) return {};
  const std::uint32_t radice = CartellaDati(im, kIndiceDatiRisorse);
  if (radice == 0) return {};

  // Type, then name, then language. Each level must lead to a directory not seen before: a tree whose
  // offsets point back is broken, not a longer way round.
  std::uint32_t visitate[3] = {radice, 0, 0};
  std::uint32_t cartella = radice;
  std::uint32_t voceDati = 0;
  for (int livello = 0; livello < 3; ++livello) {
    std::uint32_t offset = 0;
    if (!VoceScelta(im, cartella, livello == 0 ? std::int64_t{kRtVersion} : -1, &offset)) return {};
    const bool sottocartella = (offset & kSottocartella) != 0;
    const std::uint64_t dove = std::uint64_t{radice} + (offset & ~kSottocartella);
    if (dove > std::numeric_limits<std::uint32_t>::max() || sottocartella != (livello < 2)) return {};
    if (livello == 2) {
      voceDati = static_cast<std::uint32_t>(dove);
      break;
    }
    cartella = static_cast<std::uint32_t>(dove);
    for (int k = 0; k <= livello; ++k)
      if (visitate[k] == cartella) return {};
    visitate[livello + 1] = cartella;
  }

  std::string voce;
  if (!LeggiRva(im, voceDati, kVoceDati, &voce)) return {};
  const std::uint32_t dimensione = U32LE(voce, 4);
  std::string blocco;
  if (dimensione == 0 || !LeggiRva(im, U32LE(voce, 0), dimensione, &blocco)) return {};
  return blocco;
}

}  // namespace host
