// Where each value of a rules file stands: one walk of the text (aware of strings, escapes and both kinds of
// comment) that maps the JSON pointers asked for to their offsets, so that an error found in the parsed
// document is told at its line and column. The same walk finds the first place past the reader's limits.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace analysis {

inline constexpr std::size_t kNessunLuogo = static_cast<std::size_t>(-1);

struct Luogo {
  std::size_t valore = kNessunLuogo;
  // The member's name, for a value that is one of an object's.
  std::size_t chiave = kNessunLuogo;
};

struct Mappa {
  std::unordered_map<std::string, Luogo> luoghi;
  // The first container that opens `profondita` levels deep (the document itself at 0), the first number
  // that is not finite, the first key past `chiavi` in one object, the first value past `valori` in one array
  // (and that array's pointer).
  std::size_t troppoProfondo = kNessunLuogo;
  std::size_t numeroInfinito = kNessunLuogo;
  std::size_t troppeChiavi = kNessunLuogo;
  std::size_t troppiValori = kNessunLuogo;
  std::string arrayTroppoLungo;
};

struct Limiti {
  int profondita;
  std::size_t chiavi, valori;
};
Mappa Localizza(std::string_view testo, const std::unordered_set<std::string>& cercati, const Limiti& limiti);

// Line and column, from 1, of a byte offset (the column counted in bytes); the lines' starts found once.
class Righe {
 public:
  explicit Righe(std::string_view testo);
  std::pair<int, int> Di(std::size_t offset) const;

 private:
  std::vector<std::size_t> inizi_;
  std::size_t fine_;
};

// "/rules/0/id": a key as a JSON pointer writes it.
std::string Segmento(std::string_view chiave);

}  // namespace analysis
