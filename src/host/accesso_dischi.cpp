#include "host/accesso_dischi.h"

#include "host/nomi.h"

namespace host {
namespace {

FunzioneMisura& Sostituta() {
  static FunzioneMisura f = nullptr;
  return f;
}

}  // namespace

char LetteraDrive(const std::string& radice) {
  if (radice.empty()) return 0;
  const char l = Maiuscola(radice[0]);
  return l >= 'A' && l <= 'Z' ? l : 0;
}

bool MisuraVolume(const std::string& radice, MisureVolume* misure) {
  // Every caller names the volume the same way: "C:\".
  const std::string r = radice.empty() ? radice : std::string(1, Maiuscola(radice[0])) + ":\\";
  const FunzioneMisura f = Sostituta();
  return f ? f(r, misure) : MisuraPiattaforma(r, misure);
}

void SostituisciMisuraVolume(FunzioneMisura misura) {
  Sostituta() = misura;
}

bool SpazioLiberoTotale(const std::string& radice, std::uint64_t* byte) {
  MisureVolume m;
  if (!MisuraVolume(radice, &m)) return false;
  *byte = m.liberi;
  return true;
}

}  // namespace host
