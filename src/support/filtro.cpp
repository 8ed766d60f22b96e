#include "support/filtro.h"

namespace support {
namespace {

std::vector<std::string> Dividi(const std::string& s, char separatore) {
  std::vector<std::string> parti;
  std::size_t inizio = 0;
  for (;;) {
    const std::size_t fine = s.find(separatore, inizio);
    parti.push_back(s.substr(inizio, fine == std::string::npos ? std::string::npos : fine - inizio));
    if (fine == std::string::npos) return parti;
    inizio = fine + 1;
  }
}

std::string SenzaSpazi(const std::string& s) {
  const std::size_t a = s.find_first_not_of(' ');
  if (a == std::string::npos) return {};
  return s.substr(a, s.find_last_not_of(' ') - a + 1);
}

}  // namespace

std::vector<VoceFiltro> LeggiFiltro(const std::string& filtro) {
  std::vector<VoceFiltro> voci;
  if (filtro.empty()) return voci;
  const std::vector<std::string> parti = Dividi(filtro, '|');
  for (std::size_t i = 0; i + 1 < parti.size(); i += 2) {
    VoceFiltro v{parti[i], {}};
    for (const std::string& m : Dividi(parti[i + 1], ';'))
      if (std::string t = SenzaSpazi(m); !t.empty()) v.maschere.push_back(std::move(t));
    voci.push_back(std::move(v));
  }
  return voci;
}

}  // namespace support
