// Watches the largest single allocation made while a scope is open, so tests can show that a reader never
// allocates what a hostile file claims.
#pragma once

#include <cstddef>

class OsservaAllocazioni {
 public:
  OsservaAllocazioni();
  ~OsservaAllocazioni();
  OsservaAllocazioni(const OsservaAllocazioni&) = delete;
  OsservaAllocazioni& operator=(const OsservaAllocazioni&) = delete;
  std::size_t Massima() const;
};
