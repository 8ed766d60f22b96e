#include "osservatore_allocazioni.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::size_t> g_massima{0};
std::atomic<bool> g_attivo{false};
}  // namespace

// Replaces the global allocation functions of the test program; kept in its own file so that no caller
// sees them inlined.
void* operator new(std::size_t n) {
  if (g_attivo.load(std::memory_order_relaxed)) {
    std::size_t prima = g_massima.load();
    while (n > prima && !g_massima.compare_exchange_weak(prima, n)) {
    }
  }
  if (void* p = std::malloc(n ? n : 1)) return p;
  throw std::bad_alloc();
}
void* operator new[](std::size_t n) {
  return ::operator new(n);
}
// The nothrow forms too, so that everything the test program allocates is freed by the same pair.
void* operator new(std::size_t n, const std::nothrow_t&) noexcept {
  try {
    return ::operator new(n);
  } catch (...) {
    return nullptr;
  }
}
void* operator new[](std::size_t n, const std::nothrow_t& t) noexcept {
  return ::operator new(n, t);
}
void operator delete(void* p, const std::nothrow_t&) noexcept {
  std::free(p);
}
void operator delete[](void* p, const std::nothrow_t&) noexcept {
  std::free(p);
}
void operator delete(void* p) noexcept {
  std::free(p);
}
void operator delete[](void* p) noexcept {
  std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
  std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept {
  std::free(p);
}

OsservaAllocazioni::OsservaAllocazioni() {
  g_massima = 0;
  g_attivo = true;
}
OsservaAllocazioni::~OsservaAllocazioni() {
  g_attivo = false;
}
std::size_t OsservaAllocazioni::Massima() const {
  return g_massima.load();
}
