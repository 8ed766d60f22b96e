#include "host/nomi.h"

#include <array>

namespace host {

char Maiuscola(char c) {
  const auto b = static_cast<unsigned char>(c);
  if (b >= 'a' && b <= 'z') return static_cast<char>(b - 0x20);
  if (b >= 0xE0 && b <= 0xFE && b != 0xF7) return static_cast<char>(b - 0x20);
  switch (b) {
    case 0x9A:
      return static_cast<char>(0x8A);  // s caron
    case 0x9C:
      return static_cast<char>(0x8C);  // oe
    case 0x9E:
      return static_cast<char>(0x8E);  // z caron
    case 0xFF:
      return static_cast<char>(0x9F);  // y diaeresis
    default:
      return c;
  }
}

std::string Maiuscolo(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = Maiuscola(c);
  return out;
}

bool UgualiSenzaCaso(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (Maiuscola(a[i]) != Maiuscola(b[i])) return false;
  return true;
}

bool HaJolly(std::string_view s) {
  return s.find_first_of("*?") != std::string_view::npos;
}

namespace {

bool Glob(std::string_view p, std::string_view n) {
  // Iterative matcher with one backtrack point: linear enough for names.
  std::size_t pi = 0, ni = 0, stella = std::string_view::npos, dopo = 0;
  while (ni < n.size()) {
    if (pi < p.size() && (p[pi] == '?' || Maiuscola(p[pi]) == Maiuscola(n[ni]))) {
      ++pi;
      ++ni;
    } else if (pi < p.size() && p[pi] == '*') {
      stella = pi++;
      dopo = ni;
    } else if (stella != std::string_view::npos) {
      pi = stella + 1;
      ni = ++dopo;
    } else {
      return false;
    }
  }
  while (pi < p.size() && p[pi] == '*') ++pi;
  return pi == p.size();
}

}  // namespace

bool CorrispondeModello(std::string_view modello, std::string_view nome) {
  if (Glob(modello, nome)) return true;
  const bool senzaPunto = nome.find('.') == std::string_view::npos;
  if (senzaPunto && modello.size() >= 2 && modello.substr(modello.size() - 2) == ".*")
    return Glob(modello.substr(0, modello.size() - 2), nome);
  if (senzaPunto && !modello.empty() && modello.back() == '.')
    return Glob(modello.substr(0, modello.size() - 1), nome);
  return false;
}

bool AmmessoDaMaschera(int attributi, int mask) {
  return (attributi & (2 | 4 | 16) & ~mask) == 0;
}

bool NomeDispositivo(std::string_view nome) {
  std::string_view base = nome.substr(0, nome.find('.'));
  while (!base.empty() && base.back() == ' ') base.remove_suffix(1);
  const std::string b = Maiuscolo(base);
  static constexpr std::array<std::string_view, 4> kFissi = {"CON", "PRN", "AUX", "NUL"};
  for (auto f : kFissi)
    if (b == f) return true;
  if (b.size() != 4 || !(b.starts_with("COM") || b.starts_with("LPT"))) return false;
  // Newer systems also take the superscript digits 1, 2 and 3.
  const auto d = static_cast<unsigned char>(b[3]);
  return (d >= '1' && d <= '9') || d == 0xB9 || d == 0xB2 || d == 0xB3;
}

std::optional<std::vector<std::string>> NomiSotto(std::string_view base, std::string_view percorso) {
  const auto barra = [](char c) { return c == '\\' || c == '/'; };
  while (!base.empty() && barra(base.back())) base.remove_suffix(1);
  if (base.empty() || percorso.size() <= base.size() + 1 || !barra(percorso[base.size()]) ||
      !UgualiSenzaCaso(percorso.substr(0, base.size()), base))
    return std::nullopt;
  std::vector<std::string> nomi;
  for (std::size_t i = base.size() + 1; i <= percorso.size();) {
    std::size_t j = i;
    while (j < percorso.size() && !barra(percorso[j])) ++j;
    std::string nome(percorso.substr(i, j - i));
    const bool ultimo = j >= percorso.size();
    i = j + 1;
    if (nome == "..") return std::nullopt;
    if (nome.empty() || nome == ".") continue;
    if (!ultimo && nome.back() == '.') nome.pop_back();
    while (ultimo && !nome.empty() && (nome.back() == '.' || nome.back() == ' ')) nome.pop_back();
    if (!nome.empty()) nomi.push_back(std::move(nome));
  }
  if (nomi.empty()) return std::nullopt;
  return nomi;
}

}  // namespace host
