// The import directory as the loader walks it: descriptors of 20 bytes until one without a name or without
// an address table, each naming a DLL by the relative virtual address of a NUL-terminated string. The size
// the data directory gives is not trusted (the loader does not look at it either); every read is bounded by
// the section that holds it.
#include "host/pe_importazioni.h"

#include <cstdint>
#include <string>

#include "host/byte_le.h"
#include "host/pe_immagine.h"

namespace host {
namespace {

constexpr std::size_t kIndiceImportazioni = 1;
constexpr std::size_t kDescrittore = 20;
constexpr std::size_t kPosNome = 12;
constexpr std::size_t kPosIndirizzi = 16;
// No DLL name comes near it; a longer string is a broken table.
constexpr std::size_t kNomeMassimo = 260;

MacchinaPe Macchina(std::uint16_t m) {
  switch (m) {
    case 0x14C:
      return MacchinaPe::x86;
    case 0x8664:
      return MacchinaPe::x64;
    default:
      return MacchinaPe::altra;
  }
}

// The NUL-terminated name at `rva`; false when it does not end inside its section and the limit.
bool Nome(ImmaginePe& im, std::uint32_t rva, std::string* nome) {
  const std::size_t n = std::min(ByteDaRva(im, rva), kNomeMassimo + 1);
  if (n == 0 || !LeggiRva(im, rva, n, nome)) return false;
  const std::size_t fine = nome->find('\0');
  if (fine == std::string::npos || fine == 0) return false;
  nome->resize(fine);
  return true;
}

}  // namespace

ImportazioniPe LeggiImportazioniPe(LettoreByte& lettore) {
  ImportazioniPe r;
  ImmaginePe im;
  bool conMacchina = false;
  const bool aperta = ApriImmaginePe(lettore, &im, &conMacchina);
  if (conMacchina) r.macchina = Macchina(im.macchina);
  if (!aperta) {
    r.problema = "not a PE file that can be read";
    return r;
  }
  std::uint32_t rva = CartellaDati(im, kIndiceImportazioni);
  if (rva == 0) return r;
  for (;; rva += kDescrittore) {
    std::string d;
    if (rva > UINT32_MAX - kDescrittore || !LeggiRva(im, rva, kDescrittore, &d)) {
      r.problema = "the import table reaches outside the file";
      return r;
    }
    const std::uint32_t nome = U32LE(d, kPosNome);
    if (nome == 0 || U32LE(d, kPosIndirizzi) == 0) return r;
    if (r.dll.size() == kMassimoImportazioni) {
      // Appended, not "text" + string: GCC 12 sees a false overlap there at -O3 (its bug 105329).
      r.problema = std::string("the import table names more than ")
                       .append(std::to_string(kMassimoImportazioni))
                       .append(" DLLs; the first ones are recorded");
      return r;
    }
    std::string dll;
    if (!Nome(im, nome, &dll)) {
      r.problema = "a DLL name of the import table lies outside the file";
      return r;
    }
    r.dll.push_back(std::move(dll));
  }
}

}  // namespace host
