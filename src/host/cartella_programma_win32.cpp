// The program folder's places on Windows: the executable's own folder and %LOCALAPPDATA%\CheckORDL.
#ifdef _WIN32

// windows.h first: the shell's header needs it.
#include "host/interno_win32.h"

#include <shlobj.h>

#include <cstdlib>

#include "host/file_host.h"
#include "host/macchina.h"

namespace host {
namespace {

std::string TestoErrore(DWORD codice) {
  char buf[512] = {};
  DWORD n = ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, codice, 0,
                             buf, sizeof buf, nullptr);
  while (n > 0 && (buf[n - 1] == '\r' || buf[n - 1] == '\n' || buf[n - 1] == ' ' || buf[n - 1] == '.')) --n;
  return n > 0 ? std::string(buf, n) : "error " + std::to_string(codice);
}

}  // namespace

std::string CartellaEseguibile() {
  std::string exe(MAX_PATH, '\0');
  for (;;) {
    const DWORD n = ::GetModuleFileNameA(nullptr, exe.data(), static_cast<DWORD>(exe.size()));
    if (n == 0) return CartellaCorrente();
    // A name that fills the buffer exactly has been cut short.
    if (n < exe.size()) {
      exe.resize(n);
      break;
    }
    exe.resize(exe.size() * 2);
  }
  const std::size_t k = exe.find_last_of('\\');
  if (k == std::string::npos) return CartellaCorrente();
  std::string cartella = exe.substr(0, k);
  if (cartella.size() == 2 && cartella[1] == ':') cartella += '\\';
  return cartella;
}

// The rights on a folder are read the only sure way: by making a file there, which goes when it is closed.
bool CartellaScrivibile(const std::string& cartella) {
  const std::string prova = cartella + (cartella.ends_with("\\") ? "" : "\\") + "checkordl-prova-" +
                            std::to_string(::GetCurrentProcessId()) + ".tmp";
  const HANDLE h =
      ::CreateFileA(prova.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                    FILE_ATTRIBUTE_TEMPORARY | FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (h == INVALID_HANDLE_VALUE) return false;
  ::CloseHandle(h);
  return true;
}

std::string CartellaUtente() {
  std::string base;
  if (const char* l = std::getenv("LOCALAPPDATA"); l && *l) {
    base = l;
  } else {
    char buf[MAX_PATH] = {};
    if (FAILED(::SHGetFolderPathA(nullptr, CSIDL_LOCAL_APPDATA, nullptr, 0, buf))) return {};
    base = buf;
  }
  while (base.size() > 3 && base.back() == '\\') base.pop_back();
  return base + (base.ends_with("\\") ? "" : "\\") + "CheckORDL";
}

bool PreparaCartella(const std::string& cartella, std::string* motivo) {
  // Each level below the drive or share, from the top; one that is there already is passed over. A level
  // that may not be made may still be there (a parent the user cannot write): the end tells.
  std::size_t k = cartella.starts_with("\\\\") ? cartella.find('\\', cartella.find('\\', 2) + 1) : 2;
  DWORD errore = 0;
  for (;;) {
    k = cartella.find('\\', k + 1);
    const std::string livello = cartella.substr(0, k);
    if (!::CreateDirectoryA(livello.c_str(), nullptr) && ::GetLastError() != ERROR_ALREADY_EXISTS)
      errore = ::GetLastError();
    if (k == std::string::npos) break;
  }
  const DWORD a = ::GetFileAttributesA(cartella.c_str());
  if (a == INVALID_FILE_ATTRIBUTES || !(a & FILE_ATTRIBUTE_DIRECTORY)) {
    *motivo = TestoErrore(errore ? errore : ERROR_DIRECTORY);
    return false;
  }
  return true;
}

}  // namespace host

#endif
