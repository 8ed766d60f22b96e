// What the two back ends give the rest of the machine layer, and the little they share. The reads are as the
// platform answers them to this program, before the view of a legacy program (vista_virtuale.h) is laid over
// them. Only the machine layer includes this.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/ambiente.h"
#include "host/collegamenti.h"
#include "host/macchina.h"
#include "host/nomi.h"

namespace host::grezzo {

int Attributi(const std::string& path, int* err);
std::int64_t Lunghezza(const std::string& path, int* err);
// Every name an enumeration of `pattern` (not empty) with `mask` gives, in the platform's order. An error
// that ends the enumeration after some names goes to `errFine`; one that stops it at once to `err`; both
// are left alone otherwise.
void Elenco(const std::string& pattern, int mask, std::vector<std::string>* nomi, int* err, int* errFine);
CartellaDaLeggere ApriCartella(const std::string& winFolder);
bool LeggiCartella(const CartellaDaLeggere& cartella, int mask, std::vector<VoceCartella>& voci);
std::string BloccoVersione(const std::string& winPath);
// Deletes a file that EliminaFile found to be neither a folder nor read-only.
bool Elimina(const std::string& path, int* err);
// Sets the attributes of a file or folder that ImpostaAttributi found to be no link.
bool ImpostaAttributi(const std::string& path, int attr, int* err);
// The last name of the path is a link, or may be one for all the platform tells: a symbolic link, a junction,
// or a host link that Wine shows as the file it names. What stands behind it is not the entry's own.
bool Collegamento(const std::string& path);

// What only the back end can tell of SistemaWindows: the version numbers, the bitness of the system and of
// this program, Wine and its version, the ANSI code page, the system DPI, the DEP policy.
void Sistema(SistemaWindows* s);
// The path under which this program reaches what the loader finds at `winPath` for a program of the
// system's own bitness: a 32-bit program on 64-bit Windows names the real System32 "Sysnative", its own
// "System32" being SysWOW64. `winPath` itself everywhere else.
std::string PercorsoDelCaricatore(const std::string& winPath, const SistemaWindows& s);
// The zone of a file's Zone.Identifier stream, kZonaNessuna where there is none or no ZoneId in it.
int Zona(const std::string& winPath);

}  // namespace host::grezzo

namespace host {

inline void Imposta(int* err, int valore) {
  if (err) *err = valore;
}

inline bool Barra(char c) {
  return c == '\\' || c == '/';
}

// Trailing separators make the platform refuse a file name; a drive root keeps its own.
inline std::string SenzaBarraFinale(std::string p) {
  while (p.size() > 3 && Barra(p.back())) p.pop_back();
  return p;
}

// A folder's path with its closing "\".
inline std::string ConBarra(const std::string& cartella) {
  return !cartella.empty() && cartella.back() == '\\' ? cartella : cartella + '\\';
}

// How every call of a back end that names one file or folder begins: no error yet, and a path that is empty
// or holds a "*", which names none, refused as a bad file name (false). A '?' is no wildcard here but a
// letter the code page could not show (a desktop below "C:\Users\?ukasz"): the back end resolves
// it to the entry whose real name it stands for, or refuses it as a bad name when there is none.
inline bool PercorsoAccettato(const std::string& path, int* err) {
  const bool accettato = !path.empty() && path.find('*') == std::string::npos;
  Imposta(err, accettato ? kNessunErrore : kErrBadFileName);
  return accettato;
}

}  // namespace host
