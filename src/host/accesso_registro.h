// The registry below HKEY_LOCAL_MACHINE (and, for the few values kept per user, HKEY_CURRENT_USER), read
// only, and the shell's special folders. On Windows these are the platform's calls; on a Wine prefix the
// registry is the prefix's system.reg (and user.reg).
#pragma once

#include <string>

namespace host {

// Result codes as the platform gives them.
enum EsitoRegistro : long {
  kRegOk = 0,
  kRegNonTrovato = 2,        // no such key or value
  kRegPercorsoErrato = 161,  // a key path that starts with a backslash
  kRegNessunAltro = 259,     // no value at that index
};

// The value at `indice` of a key, in the order in which the platform enumerates the key's values (Wine:
// sorted by name without regard to case, the default value first). Name and data come whole, however
// long; the data of text types (1, 2, 7) is Windows-1252 without its terminating NUL, other types are the
// raw bytes. `tipo` may be null.
long LeggiValoreRegistroIndice(const std::string& chiave, int indice, std::string* nome, std::string* dati,
                               int* tipo = nullptr);

// A value of a key by its name ("" for the default value), in the same form.
long LeggiValoreRegistroNome(const std::string& chiave, const std::string& nome, std::string* dati,
                             int* tipo = nullptr);

// The same as the system itself holds it: a 32-bit program on 64-bit Windows is otherwise shown the
// registry's 32-bit view of SOFTWARE. A Wine prefix's system.reg is that view already.
long LeggiValoreSistema(const std::string& chiave, const std::string& nome, std::string* dati,
                        int* tipo = nullptr);

// The registries a value can be asked of by name.
enum class Vista {
  utente,  // HKEY_CURRENT_USER
  // HKEY_LOCAL_MACHINE as the system itself holds it, as LeggiValoreSistema.
  sistema,
  // Its 32-bit view, what a 32-bit program reads below SOFTWARE on 64-bit Windows (Wow6432Node). A 32-bit
  // Windows has one view: the Win32 back end is given that, a 32-bit prefix gives nothing.
  sistema32,
};

long LeggiValoreVista(Vista vista, const std::string& chiave, const std::string& nome, std::string* dati,
                      int* tipo = nullptr);

// The CSIDL numbers the program asks for.
enum Csidl : int {
  kCsidlDesktopDirectory = 0x10,
  kCsidlLocalAppData = 0x1C,
  // As a 32-bit program gets it: "Program Files (x86)" on a 64-bit system. A 64-bit program gets the same
  // folder from kCsidlProgramFilesX86, on either kind of system.
  kCsidlProgramFiles = 0x26,
  kCsidlProgramFilesX86 = 0x2A,
};

// The folder of a CSIDL number as the platform gives it to a 32-bit program; *esito is 0 on success (an
// HRESULT otherwise). A Wine prefix knows the folders above: the program-files folder from system.reg
// (its value for the prefix's kind, "#arch=win64" or "win32", else Wine's default) and the user's folders
// from user.reg's "Shell Folders", else C:\users\<login>\... as Wine makes them.
std::string CartellaSpeciale(int csidl, long* esito);

}  // namespace host
