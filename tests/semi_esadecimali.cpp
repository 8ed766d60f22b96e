// The fuzzers' seeds from a file of bytes under tests/data, read as the tests read it: its bytes, or a seed
// a case where it is a table of cases. Usage: semi_esadecimali FILE.hex FOLDER NAME
#include <fstream>

#include "esadecimale.h"

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  auto casi = LeggiCasi(argv[1]);
  if (casi.empty()) casi.push_back({{}, LeggiEsadecimale(argv[1])});
  for (std::size_t i = 0; i < casi.size(); ++i) {
    const std::string seme = std::string(argv[2]) + "/" + argv[3] + (i ? "_" + std::to_string(i) : "");
    std::ofstream(seme, std::ios::binary) << casi[i].byte;
  }
}
