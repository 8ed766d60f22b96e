// One category of the C library's locale set for a test, the previous one put back when it ends.
#pragma once

#include <clocale>
#include <string>

class LocaleProva {
 public:
  LocaleProva(int categoria, const char* nome)
      : categoria_(categoria), prima_(std::setlocale(categoria, nullptr)) {
    attivo_ = std::setlocale(categoria, nome) != nullptr;
  }
  ~LocaleProva() { std::setlocale(categoria_, prima_.c_str()); }
  LocaleProva(const LocaleProva&) = delete;
  LocaleProva& operator=(const LocaleProva&) = delete;
  bool Attivo() const { return attivo_; }

 private:
  int categoria_;
  std::string prima_;
  bool attivo_ = false;
};
