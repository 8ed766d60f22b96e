// The reads of each back end as the platform answers them to this program, before the view of a legacy
// program (vista_virtuale.h) is laid over them. Only the machine layer calls these.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/collegamenti.h"

namespace host::grezzo {

int Attributi(const std::string& path, int* err);
std::int64_t Lunghezza(const std::string& path, int* err);
// Every name an enumeration of `pattern` with `mask` gives, in the platform's order. An error that ends the
// enumeration after some names goes to `errFine`; one that stops it at once to `err`.
void Elenco(const std::string& pattern, int mask, std::vector<std::string>* nomi, int* err, int* errFine);
CartellaDaLeggere ApriCartella(const std::string& winFolder);
bool LeggiCartella(const CartellaDaLeggere& cartella, int mask, std::vector<VoceCartella>& voci);
std::string BloccoVersione(const std::string& winPath);

}  // namespace host::grezzo

namespace host {

// Ends the one enumeration of the process.
void ChiudiEnumerazione();

}  // namespace host
