#include "formats/script.h"

#include <algorithm>
#include <cstdint>

#include "formats/codifica.h"
#include "host/byte_le.h"
#include "support/files.h"

namespace formats {

std::vector<std::string> AnalizzaScript(std::string_view byte, std::int32_t& numero) {
  numero = 0;
  const std::string testa = Sovrapponi(std::string(kDimensioneIntestazioneScript, '\0'), byte);
  numero = host::I16LE(testa, kOffsetNumeroLivelliScript);
  if (numero <= 0) return {};
  const auto n = static_cast<std::size_t>(numero);
  std::vector<std::string> livelli(n);

  // Only the table's last entry is used; an entry past the end of the file reads as 0.
  const std::size_t posUltimo = kDimensioneIntestazioneScript + 2 * (n - 1);
  std::int32_t ultimo = 0;
  if (posUltimo + 2 <= byte.size()) ultimo = host::I16LE(byte, posUltimo);
  // The block's length is worked out in 16 bits: a sum that does not fit, or a negative one, reads nothing.
  const std::int32_t lunghezza = ultimo + 30;
  if (lunghezza < 0 || lunghezza > INT16_MAX) return livelli;
  const std::size_t inizio = kDimensioneIntestazioneScript + 2 * n;
  const std::string_view blocco =
      inizio < byte.size() ? byte.substr(inizio, static_cast<std::size_t>(lunghezza)) : std::string_view();

  // Split at NUL; an empty block has no pieces at all.
  std::size_t pezzo = 0, da = 0;
  while (!blocco.empty() && pezzo < n && da <= blocco.size()) {
    std::size_t a = blocco.find('\0', da);
    if (a == std::string_view::npos) a = blocco.size();
    livelli[pezzo++] = std::string(blocco.substr(da, a - da)) + ".tr4";
    da = a + 1;
  }
  return livelli;
}

bool LeggiLivelliScript(const std::string& percorso, std::int32_t& numero,
                        std::vector<std::string>& livelli) {
  numero = 0;
  livelli.clear();
  if (!support::FileExists(percorso)) return false;
  // The head, the table of at most 32767 entries and a block of at most 32767 bytes: never more.
  constexpr std::size_t kMassimo = kDimensioneIntestazioneScript + 2 * 32767 + 32767;
  std::string byte;
  if (LeggiTesta(percorso, kMassimo, &byte, nullptr)) livelli = AnalizzaScript(byte, numero);
  return true;
}

}  // namespace formats
