// The conditions of a rule as the reader leaves them for the evaluation: every name looked up, every pattern
// folded, every operand of the type its field wants. The fields a rule may compare are one table here.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "analysis/fatti.h"
#include "collection/membri.h"
#include "formats/ambiente.h"

namespace analysis {

// A name with `*` and `?`, folded as host::Maiuscolo folds, `/` made `\`. A path pattern (one that began
// with a separator) keeps a single `\` in front and is matched against the whole path from the list's folder.
// A pattern of a text field's value (`percorsi` false) is taken whole.
struct Modello {
  std::string testo;
  bool percorso = false;
  bool jolly = false;
  // Where the first and the last `*` stand (npos for none): what lies before and after is matched first.
  std::size_t primaStella = std::string::npos, ultimaStella = std::string::npos;
};
Modello FaiModello(std::string_view pattern, bool percorsi = true);
// `nome` already folded, `\` for every separator.
bool Corrisponde(const Modello& m, std::string_view nome);
// Folded, `/` made `\`, into `out` (whose room is reused).
void Piega(std::string_view s, std::string& out);
// The same for one character: the table, indexed by the character as unsigned.
const std::array<char, 256>& TabellaPiega();

enum class TipoCampo { intero, numero, testo, versione, booleano };
const char* NomeTipo(TipoCampo t);

// Numeric parts compared as numbers, a missing part 0; "1.10" > "1.9". Negative, zero, positive.
int ConfrontaVersioni(std::string_view a, std::string_view b);

using ValoreCampo = std::variant<double, std::string, bool>;

struct CampoRegola {
  std::string_view nome;
  TipoCampo tipo;
  // The member whose record holds it: a field of a member that is not read is unknown.
  collection::Membro membro;
  // Nothing when the facts do not hold it (a later field of an older record).
  std::optional<ValoreCampo> (*leggi)(const Fatti&);
};
const std::vector<CampoRegola>& CampiRegole();
const CampoRegola* CercaCampo(std::string_view nome);

enum class Operatore { uguale, diverso, minore, minoreUguale, maggiore, maggioreUguale, corrisponde, bit };
struct Termine {
  Operatore op = Operatore::uguale;
  double numero = 0;
  // Texts and versions: as PulisciStringa leaves them and folded.
  std::string testo;
  bool booleano = false;
  std::int64_t bit = 0;
  Modello modello;
};
// Every term must hold.
using Confronto = std::vector<Termine>;
bool Confronta(const Confronto& c, TipoCampo tipo, const ValoreCampo& v);
bool ConfrontaNumero(const Confronto& c, double x);

enum class TipoCondizione { tutte, una, non, membro, file, campo, livelloScript, eseguibile };
enum class StatoVoluto { presente, assente, danneggiato, letto };
enum class Lista { editor, ordelio, archivio };

struct Condizione {
  TipoCondizione tipo = TipoCondizione::tutte;
  std::vector<Condizione> figli;
  collection::Membro membro = collection::Membro::intestazione;
  StatoVoluto stato = StatoVoluto::presente;
  // file, script_level, exe.
  Modello modello;
  Lista lista = Lista::editor;
  bool presente = true;
  std::optional<Confronto> dimensione;
  const CampoRegola* campo = nullptr;
  Confronto valore;
  // exe.
  std::optional<formats::CartellaEseguibile> cartella;
  // As formats::NomeMacchina writes it ("arm64" matches no executable the environment records).
  std::optional<std::string> macchina;
  std::optional<Modello> dllNonTrovata, livello;
  std::optional<bool> marcato;
};

}  // namespace analysis
