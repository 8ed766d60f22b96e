// What the files of the Win32 back end share among themselves; no other part of the program sees it. The
// back end is the Win32 calls, with their error codes turned into the program's error numbers; the ones that
// name a file are the wide calls, the path passed through Largo, so that a folder whose name the ANSI code
// page cannot show is reached too. Where the platform answers "access denied" for a file it merely will not
// open that way, the answer is made the same as the Wine back end's, so callers see one behaviour.
#pragma once
#ifdef _WIN32

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstdint>
#include <string>

namespace host {

// ---- Paths and errors (percorsi_win32.cpp) ----

// The platform reports a drive that is not there, or whose root cannot be read (a drive without medium as
// Wine shows it), as a missing path; the program needs it as a device.
bool DriveAssente(const std::string& path);
// The program's error number for the platform's error code of a call on `path`.
int ErroreDa(DWORD codice, const std::string& path);

// A name the platform gives in UTF-16 in the program's form, the ANSI code page, with '?' for what that
// cannot hold (never a look-alike letter, which could name another file).
std::string DaLargo(const std::wstring& largo);
// A path of the program's form for the platform's wide calls. '?' never stands in a Windows name, so a
// folder name that holds it is one the ANSI code page could not show (a desktop below a profile named
// outside it): it is taken to be the entry of that folder whose name DaLargo gives as it is. A name left
// without such an entry keeps its '?', which the platform refuses as a bad name.
std::wstring Largo(const std::string& path);

// For calls that answer with the length they wrote, or with the size they need when the buffer is short.
template <class Chiamata>
std::string ConBuffer(Chiamata chiama) {
  std::string buf(MAX_PATH, '\0');
  for (;;) {
    const DWORD n = chiama(buf.data(), static_cast<DWORD>(buf.size()));
    if (n == 0) return {};
    if (n < buf.size()) {
      buf.resize(n);
      return buf;
    }
    buf.resize(n);
  }
}

// ---- Attributes (attributi_win32.cpp) ----

// Folders, and for writing read-only, hidden and system files, are requests the platform will not carry
// out; Windows calls that "access denied" (and Wine running as root may just do it), while the program keeps
// "permission denied" for real denials.
bool Rifiutato(const std::string& path, DWORD bloccanti);

// ---- Below a folder of the program's own (sotto_win32.cpp) ----

// A link to a file that does not say so: Wine shows a host link to a file as the file it names, without
// the reparse point bit, and deletes the file named for it. Opened, it is elsewhere than its folder.
bool FileAltrove(const std::string& pieno);

// The full path of a file below `base`, every folder between them checked: none may be a reparse point
// (a symbolic link, a junction or a mount point). `attributi` are the file's own, INVALID_FILE_ATTRIBUTES
// when it is not there.
bool ControllaSotto(const std::string& base, const std::string& percorso, std::string* pieno,
                    DWORD* attributi, int* err);

// ---- Handles (file_win32.cpp, blocco_win32.cpp) ----

inline HANDLE Maniglia(std::intptr_t h) {
  return reinterpret_cast<HANDLE>(h);
}

}  // namespace host

#endif
