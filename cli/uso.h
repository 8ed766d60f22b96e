// The verbs of the tool and their usage texts, from one table.
#pragma once

#include <string>
#include <vector>

#include "verbi.h"

namespace cli {

struct Verbo {
  const char* nome;
  const char* argomenti;
  const char* descrizione;
  int (*esegui)(const Argomenti&, MessaggiConsole&);
  bool voci = false;  // the report items follow the description
};

const std::vector<Verbo>& Verbi();
const Verbo* TrovaVerbo(const std::string& nome);

// The whole usage, and one verb's.
std::string TestoUso();
std::string TestoUsoVerbo(const Verbo& v);

// The manual page checkordl-cli(1), in roff, from the same table.
std::string PaginaManuale(const std::string& versione);

}  // namespace cli
