// What changes names and attributes, the same way on every platform: which files the platform refuses to
// delete, and that neither reaches through a link to what it names. The deleting itself, setting attributes,
// replacing a file and making a folder are the back ends' (modifiche_*.cpp, attributi_*.cpp).
#include <string>

#include "host/grezzo.h"
#include "host/macchina.h"

namespace host {

bool EliminaFile(const std::string& path, int* err) {
  const int a = grezzo::Attributi(path, err);
  if (a < 0) return false;
  // The platform refuses to delete a folder this way, or a read-only file: Windows says "access denied",
  // where the program expects the refusal of the request. A link to a read-only file is no read-only file
  // itself: it goes, and what it names stays as it was.
  if ((a & kAttrDirectory) || ((a & kAttrReadOnly) && !grezzo::Collegamento(path))) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  return grezzo::Elimina(path, err);
}

bool ImpostaAttributi(const std::string& path, int attr, int* err) {
  if (grezzo::Attributi(path, err) < 0) return false;
  // The attributes read through a link are those of what it names, which the program must not change; the
  // link keeps none of its own that a deletion would need cleared.
  if (grezzo::Collegamento(path)) return true;
  return grezzo::ImpostaAttributi(path, attr, err);
}

}  // namespace host
