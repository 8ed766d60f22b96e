// What changes names, the same way on every platform: which files the platform refuses to delete. The
// deleting itself, replacing a file and making a folder are the back ends' (modifiche_*.cpp).
#include <string>

#include "host/grezzo.h"
#include "host/machine.h"

namespace host {

bool EliminaFile(const std::string& path, int* err) {
  const int a = grezzo::Attributi(path, err);
  if (a < 0) return false;
  // The platform refuses to delete a folder this way, or a read-only file: Windows says "access denied",
  // where the program expects the refusal of the request.
  if (a & (kAttrDirectory | kAttrReadOnly)) {
    Imposta(err, kErrPathFileAccess);
    return false;
  }
  return grezzo::Elimina(path, err);
}

}  // namespace host
