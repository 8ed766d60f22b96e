// A whole folder read in one pass on Windows: one find gives every entry's attributes and size.
#ifdef _WIN32

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/collegamenti.h"
#include "host/grezzo.h"
#include "host/interno_win32.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host {

CartellaDaLeggere grezzo::ApriCartella(const std::string& winFolder) {
  CartellaDaLeggere c;
  c.percorso = winFolder;
  return c;
}

bool grezzo::LeggiCartella(const CartellaDaLeggere& cartella, int mask, std::vector<VoceCartella>& voci) {
  voci.clear();
  const std::string base = ConBarra(cartella.percorso);
  WIN32_FIND_DATAW dati{};
  HANDLE h = ::FindFirstFileW((Largo(base) + L"*").c_str(), &dati);
  if (h == INVALID_HANDLE_VALUE) return false;
  do {
    const std::string nome = DaLargo(dati.cFileName);
    const int attr = static_cast<int>(dati.dwFileAttributes);
    if (nome == "." || nome == ".." || !AmmessoDaMaschera(attr, mask)) continue;
    VoceCartella v;
    v.nome = nome;
    v.attributi = attr & 0xFF;
    v.collegamento = (dati.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if (!(attr & kAttrDirectory)) {
      v.dimensione = (static_cast<std::int64_t>(dati.nFileSizeHigh) << 32) | dati.nFileSizeLow;
      // A find gives a link's own size; the one that counts is its target's.
      if (v.collegamento) {
        int err = 0;
        v.dimensione = grezzo::Lunghezza(base + nome, &err);
        if (err || v.dimensione < 0) continue;
      }
    }
    voci.push_back(std::move(v));
  } while (::FindNextFileW(h, &dati));
  ::FindClose(h);
  return true;
}

}  // namespace host

#endif  // _WIN32
