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
  std::string byte;
  if (LeggiTesta(percorso, kLetturaScript, &byte, nullptr)) livelli = AnalizzaScript(byte, numero);
  return true;
}

TabellaScript AnalizzaTabellaScript(std::string_view byte) {
  TabellaScript t;
  if (byte.size() < kDimensioneIntestazioneScript) {
    t.problema = std::to_string(byte.size()) + " bytes, shorter than the script's head of " +
                 std::to_string(kDimensioneIntestazioneScript);
    return t;
  }
  const std::int32_t numero = host::I16LE(byte, kOffsetNumeroLivelliScript);
  if (numero <= 0) {
    t.problema = "its head counts " + std::to_string(numero) + " level files";
    return t;
  }
  const auto n = static_cast<std::size_t>(numero);
  const std::size_t inizio = kDimensioneIntestazioneScript + 2 * n;
  const std::size_t lunghezza = host::U16LE(byte, kOffsetLunghezzaNomiScript);
  if (inizio + lunghezza > byte.size()) {
    t.problema = "its table of " + std::to_string(n) + " level files and their names (" +
                 std::to_string(lunghezza) + " bytes) run past the end of the file";
    return t;
  }
  const std::string_view blocco = byte.substr(inizio, lunghezza);
  const auto quale = [n](std::size_t i) { return std::to_string(i + 1) + " of " + std::to_string(n); };
  std::size_t atteso = 0;
  for (std::size_t i = 0; i < n && t.problema.empty(); ++i) {
    const std::size_t fine = blocco.find('\0', atteso);
    if (host::U16LE(byte, kDimensioneIntestazioneScript + 2 * i) != atteso)
      t.problema =
          "the table's entry for level file " + quale(i) + " does not point where the name before ends";
    else if (fine == std::string_view::npos)
      t.problema = "the name of level file " + quale(i) + " runs past its block";
    else
      t.livelli.push_back(std::string(blocco.substr(atteso, fine - atteso)) + ".tr4");
    atteso = fine + 1;
  }
  if (!t.problema.empty()) t.livelli.clear();
  return t;
}

}  // namespace formats
