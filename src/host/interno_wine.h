// What the files of the Wine-prefix back end share among themselves; no other part of the program sees it.
#pragma once
#ifndef _WIN32

#include <sys/stat.h>
#include <sys/types.h>

#include <optional>
#include <string>

#include "host/versione.h"

namespace host {

// ---- Paths (percorsi_wine.cpp, prefisso_wine.cpp) ----

// The program's error number for an errno.
int ErroreDaErrno(int e);
bool Esiste(const std::string& p, struct stat* st);
// Lexical clean-up of an absolute host path: no ".", "..", doubled or trailing slashes.
std::string Normalizza(const std::string& p);
// Where a drive letter's link points, or nullopt when the prefix names no such drive.
const std::optional<std::string>& BersaglioDrive(char lettera);

struct Risolto {
  std::string host;
  // The host folder that holds the last component exists.
  bool genitoreEsiste = false;
};

// Resolves a Windows path component by component, without regard to case; a relative one from the current
// folder.
std::optional<Risolto> Risolvi(const std::string& winPath, int* err);
// The folder of a path with its closing separator ("C:" for "C:name"), and its last name.
void SeparaUltimo(const std::string& p, std::string* cartella, std::string* nome);
// A reserved device name as the last name of a path: the platform takes the device, in any folder that
// exists. Null when the path names no device; else the error of the device's folder (0 when it exists).
std::optional<int> Dispositivo(const std::string& p);
// Of the devices only NUL can be opened here: the others wait for hardware or a console.
bool Nul(const std::string& p);

// ---- The registry (accesso_registro_wine.cpp) ----

// A prefix made for 32-bit Windows says so in its system.reg; a prefix without the line, or without the
// file yet, is the 64-bit kind that Wine makes.
bool Prefisso32Bit();

// ---- Versions (versione_wine.cpp) ----

// The system Wine reports to a program that may know every version (RtlGetVersion): the prefix's "Version"
// setting, else what its registry describes, else Windows 7.
VersioneOs VersioneWine();

// ---- Attributes and order (attributi_wine.cpp, enumerazione_wine.cpp) ----

// Folder 16, else archive 32; read-only 1 when no one may write; hidden 2 and system 4 from user.DOSATTRIB,
// and hidden for a name with a leading dot unless the prefix shows dot files.
int AttributiWine(const std::string& hostPath, const struct stat& st, const std::string& nomeWin);

// Wine's order of a folder's entries, by their host names: without regard to case (letters compared in
// upper case, so "_" comes after them), then by the exact name.
bool PrimaInCartella(const std::string& a, const std::string& b);

// The prefix's ShowDotFiles setting, read once per prefix.
bool MostraPuntiFile();

// ---- Below a folder of the program's own (sotto_wine.cpp) ----

// The folder that holds the last name of a path below `base`, opened name by name from `base` without
// following a link or crossing into another file system (a mount point), and that last name as the host
// spells it. Names match without regard to case, as everywhere else in the resolution.
struct Sotto {
  Sotto() = default;
  Sotto(const Sotto&) = delete;
  Sotto& operator=(const Sotto&) = delete;
  ~Sotto();
  int fd = -1;
  dev_t dispositivo = 0;
  std::string host;
  std::string nome;
};

bool ApriSotto(const std::string& base, const std::string& percorso, Sotto* s, int* err);

}  // namespace host

#endif
