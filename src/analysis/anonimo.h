// The account names in profile paths, and the stand-ins that replace them in a copy of a snapshot meant for
// others to read. A profile path is `X:\Users\NAME\`, `X:\Documents and Settings\NAME\`, `X:\home\NAME\`
// (at any drive letter, Wine's `C:\users` and XP's short `C:\DOCUME~1` included, either slash, doubled or
// not) and `/home/NAME/`; the name runs to the next slash, or to a byte no Windows name holds or a ';',
// less closing blanks and dots. Only such a place is
// replaced: the same word elsewhere in a path is a folder's name and stays.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace analysis {

// What a stand-in replaces: an account name, or (on request) one of a level author's three fields.
enum class Genere { utente, autore, email, sito };

struct VoceChiave {
  std::string sostituto;
  // As first met.
  std::string originale;
  Genere genere = Genere::utente;
};

// The stand-ins of one copy: `user1`, `user2`, ... in order of first appearance, the same name (compared
// without regard to case) always the same. A name with letters outside ASCII keeps one in its stand-in
// (`user1\xE9`), so that what the findings say of such a path still stands in the copy.
class Sostituti {
 public:
  const std::string& Di(Genere genere, std::string_view originale);
  // `nome` is one of the stand-ins given, whole or made to its length.
  bool GiaSostituto(std::string_view nome) const;
  // Every pair, in order of first appearance.
  const std::vector<VoceChiave>& Chiave() const { return chiave_; }

 private:
  std::map<std::pair<Genere, std::string>, std::size_t> indice_;
  std::map<Genere, int> numeri_;
  std::vector<VoceChiave> chiave_;
};

// A stand-in made exactly `lunghezza` bytes long, for bytes whose offsets must not move: blank-free
// padding with '_' behind it, or a shorter form ("u1", "1") when it does not fit.
std::string SostitutoLungo(const std::string& sostituto, std::size_t lunghezza);

struct Tratto {
  std::size_t posizione = 0;
  std::size_t lunghezza = 0;
};
// The account names of the profile paths in `testo`, in order.
std::vector<Tratto> NomiNelTesto(std::string_view testo);

// Replaces the account names of `testo`; `sostituzioni` grows by their number.
std::string AnonimizzaTesto(std::string_view testo, Sostituti& s, std::int64_t& sostituzioni);
// One name of `byte`, found by NomiNelTesto, by its stand-in made as long as the name.
void SostituisciInPosto(std::string& byte, const Tratto& t, Sostituti& s, std::int64_t& sostituzioni);
// The same where no offset may move: each stand-in as long as the name it replaces. A `ripasso` over bytes
// partly replaced already passes over the stand-ins it meets.
void AnonimizzaInPosto(std::string& byte, std::size_t da, std::size_t a, Sostituti& s,
                       std::int64_t& sostituzioni, bool ripasso = false);
// A fixed field of `byte` from `da`, `lunghezza` long (or as far as `byte` goes): the text replaced, then
// filled to the field's length with the byte the field ended with (blank or NUL); where the text would not
// fit, each stand-in as long as its name. Stand-ins already there (made to a name's length) stay.
void AnonimizzaCampo(std::string& byte, std::size_t da, std::size_t lunghezza, Sostituti& s,
                     std::int64_t& sostituzioni);
// A name relative to the folder `base` (a list's entry): the profile path may begin in the folder. With
// `inPosto`, each stand-in as long as the name it replaces.
std::string AnonimizzaSotto(std::string_view base, std::string_view nome, Sostituti& s,
                            std::int64_t& sostituzioni, std::string& appoggio, bool inPosto = false);

}  // namespace analysis
