// An open file read piece by piece at absolute offsets: an executable may be far larger than the headers and
// names needed of it.
#pragma once

#include <cstdint>
#include <string>

#include "host/macchina.h"
#include "host/versione.h"

namespace host {

class LettoreFile final : public LettoreByte {
 public:
  explicit LettoreFile(File& file) : file_(file) {
    const std::int64_t n = file_.Lunghezza();
    lunghezza_ = n > 0 ? static_cast<std::uint64_t>(n) : 0;
  }
  std::uint64_t Lunghezza() const override { return lunghezza_; }
  bool Leggi(std::uint64_t inizio, std::size_t n, std::string* out) override {
    if (inizio > lunghezza_ || n > lunghezza_ - inizio) return false;
    const std::int64_t qui = file_.Posizione();
    if (qui < 0 || !file_.Salta(static_cast<std::int64_t>(inizio) - qui)) return false;
    out->resize(n);
    return file_.Leggi(out->data(), n) == n;
  }

 private:
  File& file_;
  std::uint64_t lunghezza_ = 0;
};

}  // namespace host
