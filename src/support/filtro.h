// The common file dialog's filter, "Description|mask[;mask...]|Description|mask...", as its entries.
#pragma once

#include <string>
#include <vector>

namespace support {

struct VoceFiltro {
  std::string descrizione;
  std::vector<std::string> maschere;
};

// An odd last part (a description without masks) is left out; blanks around a mask are dropped.
std::vector<VoceFiltro> LeggiFiltro(const std::string& filtro);

}  // namespace support
