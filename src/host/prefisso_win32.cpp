// Windows is the machine itself: there is no prefix to choose, only the machine's state read again.
#ifdef _WIN32

#include <string>

#include "host/macchina.h"
#include "host/vista_virtuale.h"

namespace host {

void UsaPrefisso(const std::string&) {
  DimenticaVistaVirtuale();
}

std::string PrefissoCorrente() {
  return {};
}

}  // namespace host

#endif  // _WIN32
