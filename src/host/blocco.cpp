// The lock of a program folder: the waiting and the nesting are the same on every platform; holding the file
// is the back ends'.
#include <chrono>
#include <map>
#include <thread>
#include <utility>

#include "host/file_host.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host {
namespace {

struct Tenuta {
  std::string cartella;
  std::intptr_t maniglia = -1;
  int volte = 0;
};

// A second hold of the process on one folder would otherwise wait on the first for nothing.
std::map<std::string, Tenuta>& Tenute() {
  static std::map<std::string, Tenuta> t;
  return t;
}

constexpr auto kAttesa = std::chrono::seconds(2);
constexpr auto kPassoAttesa = std::chrono::milliseconds(50);

}  // namespace

BloccoCartella::BloccoCartella(const std::string& cartella) {
  // The folder itself, not its name: a Wine prefix changed meanwhile may name it by another drive.
  int err = 0;
  std::string chiave = Maiuscolo(PercorsoHost(cartella, &err));
  while (chiave.size() > 3 && (chiave.back() == '\\' || chiave.back() == '/')) chiave.pop_back();
  if (auto it = Tenute().find(chiave); it != Tenute().end()) {
    ++it->second.volte;
    chiave_ = std::move(chiave);
    return;
  }
  // What stands at the lock file's name and can never be held, told once for both back ends.
  const std::string file = cartella + "\\" + kFileBlocco;
  if (const Voce v = VoceSotto(cartella, file, nullptr); v == Voce::cartella || v == Voce::collegamento) {
    occupato_ = true;
    motivo_ = std::string(kFileBlocco) + (v == Voce::cartella ? " is a folder" : " is a link");
    return;
  }
  const auto fine = std::chrono::steady_clock::now() + kAttesa;
  for (;;) {
    bool occupato = false;
    std::string motivo;
    const std::intptr_t maniglia = PrendiBlocco(cartella, &occupato, &motivo);
    if (maniglia != -1) {
      Tenute()[chiave] = {cartella, maniglia, 1};
      chiave_ = std::move(chiave);
      return;
    }
    if (!motivo.empty()) {
      occupato_ = true;
      motivo_ = std::move(motivo);
      return;
    }
    if (!occupato) return;
    if (std::chrono::steady_clock::now() >= fine) {
      occupato_ = true;
      return;
    }
    std::this_thread::sleep_for(kPassoAttesa);
  }
}

BloccoCartella::BloccoCartella(BloccoCartella&& other) noexcept
    : chiave_(std::exchange(other.chiave_, {})),
      occupato_(other.occupato_),
      motivo_(std::move(other.motivo_)) {}

BloccoCartella& BloccoCartella::operator=(BloccoCartella&& other) noexcept {
  if (this != &other) {
    Rilascia();
    chiave_ = std::exchange(other.chiave_, {});
    occupato_ = other.occupato_;
    motivo_ = std::move(other.motivo_);
  }
  return *this;
}

BloccoCartella::~BloccoCartella() {
  Rilascia();
}

void BloccoCartella::Rilascia() {
  if (chiave_.empty()) return;
  const auto it = Tenute().find(chiave_);
  chiave_.clear();
  if (it == Tenute().end() || --it->second.volte > 0) return;
  LasciaBlocco(it->second.cartella, it->second.maniglia);
  Tenute().erase(it);
}

}  // namespace host
