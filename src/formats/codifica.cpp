#include "formats/codifica.h"

#include <algorithm>

#include "host/macchina.h"

namespace formats {

std::string Sovrapponi(std::string base, std::string_view letti) {
  letti.substr(0, base.size()).copy(base.data(), base.size());
  return base;
}

bool LeggiTesta(const std::string& percorso, std::size_t massimo, std::string* byte,
                std::int64_t* lunghezza) {
  int err = 0;
  host::File f = host::File::ApriLettura(percorso, &err);
  if (err || !f.Aperto()) return false;
  const std::int64_t n = f.Lunghezza();
  if (lunghezza) *lunghezza = n;
  // Never more room than the file has.
  const std::size_t quanti = n < 0 ? 0 : std::min(massimo, static_cast<std::size_t>(n));
  byte->assign(quanti, '\0');
  byte->resize(f.Leggi(byte->data(), quanti));
  return true;
}

}  // namespace formats
