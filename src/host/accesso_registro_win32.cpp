// The registry through the platform's ANSI calls, and the shell folders. Where the program's fixed rooms
// would cut a name or a value short, these ask again with the room the value needs.
#ifdef _WIN32

// windows.h first: the shell's header needs it.
#include "host/interno_win32.h"

#include <shlobj.h>

#include <algorithm>
#include <cstring>

#include "host/accesso_registro.h"
#include "host/registro_file.h"

namespace host {
namespace {

constexpr REGSAM kLettura = 0x20019;

class Chiave {
 public:
  explicit Chiave(const std::string& percorso, REGSAM vista = 0, HKEY radice = HKEY_LOCAL_MACHINE)
      : esito_(::RegOpenKeyExA(radice, percorso.c_str(), 0, kLettura | vista, &h_)) {}
  ~Chiave() {
    if (esito_ == ERROR_SUCCESS) ::RegCloseKey(h_);
  }
  Chiave(const Chiave&) = delete;
  Chiave& operator=(const Chiave&) = delete;
  long Esito() const { return esito_; }
  HKEY Handle() const { return h_; }

 private:
  HKEY h_ = nullptr;
  long esito_;
};

// The ANSI calls count the terminating NUL of text types as data; the other back end does not.
void Dati(DWORD tipo, std::string b, std::string* dati, int* t) {
  if (TipoTesto(static_cast<int>(tipo)) && !b.empty() && b.back() == '\0') b.pop_back();
  if (dati) *dati = std::move(b);
  if (t) *t = static_cast<int>(tipo);
}

}  // namespace

long LeggiValoreRegistroIndice(const std::string& chiave, int indice, std::string* nome, std::string* dati,
                               int* tipo) {
  Chiave k(chiave);
  if (k.Esito() != ERROR_SUCCESS) return k.Esito();
  if (indice < 0) return ERROR_NO_MORE_ITEMS;
  DWORD maxNome = 0, maxDati = 0;
  ::RegQueryInfoKeyA(k.Handle(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &maxNome,
                     &maxDati, nullptr, nullptr);
  std::string n(std::max<DWORD>(maxNome + 1, 512), '\0');
  std::string d(std::max<DWORD>(maxDati + 1, 256), '\0');
  long esito = ERROR_MORE_DATA;
  // The value may grow between the calls; a few rounds are plenty.
  for (int giro = 0; giro < 8 && esito == ERROR_MORE_DATA; ++giro) {
    DWORD ln = static_cast<DWORD>(n.size()), ld = static_cast<DWORD>(d.size()), t = 0;
    esito = ::RegEnumValueA(k.Handle(), static_cast<DWORD>(indice), n.data(), &ln, nullptr, &t,
                            reinterpret_cast<BYTE*>(d.data()), &ld);
    if (esito == ERROR_MORE_DATA) {
      n.resize(std::min<std::size_t>(n.size() * 2, 32768));
      d.resize(std::max<std::size_t>(d.size() * 2, ld + 1));
    } else if (esito == ERROR_SUCCESS) {
      if (nome) nome->assign(n.data(), ln);
      Dati(t, d.substr(0, ld), dati, tipo);
    }
  }
  return esito;
}

namespace {

long ValoreDi(const Chiave& k, const std::string& nome, std::string* dati, int* tipo) {
  if (k.Esito() != ERROR_SUCCESS) return k.Esito();
  std::string d(256, '\0');
  long esito = ERROR_MORE_DATA;
  for (int giro = 0; giro < 8 && esito == ERROR_MORE_DATA; ++giro) {
    DWORD ld = static_cast<DWORD>(d.size()), t = 0;
    esito = ::RegQueryValueExA(k.Handle(), nome.c_str(), nullptr, &t, reinterpret_cast<BYTE*>(d.data()), &ld);
    if (esito == ERROR_MORE_DATA)
      d.resize(std::max<std::size_t>(d.size() * 2, ld + 1));
    else if (esito == ERROR_SUCCESS)
      Dati(t, d.substr(0, ld), dati, tipo);
  }
  return esito;
}

}  // namespace

long LeggiValoreRegistroNome(const std::string& chiave, const std::string& nome, std::string* dati,
                             int* tipo) {
  return ValoreDi(Chiave(chiave), nome, dati, tipo);
}

// KEY_WOW64_64KEY is ignored on 32-bit Windows, which has one view.
long LeggiValoreSistema(const std::string& chiave, const std::string& nome, std::string* dati, int* tipo) {
  return ValoreDi(Chiave(chiave, KEY_WOW64_64KEY), nome, dati, tipo);
}

long LeggiValoreVista(Vista vista, const std::string& chiave, const std::string& nome, std::string* dati,
                      int* tipo) {
  switch (vista) {
    case Vista::utente:
      return ValoreDi(Chiave(chiave, 0, HKEY_CURRENT_USER), nome, dati, tipo);
    case Vista::sistema32:
      return ValoreDi(Chiave(chiave, KEY_WOW64_32KEY), nome, dati, tipo);
    case Vista::sistema:
      break;
  }
  return LeggiValoreSistema(chiave, nome, dati, tipo);
}

std::string CartellaSpeciale(int csidl, long* esito) {
  wchar_t stanza[MAX_PATH + 1] = {};
  // The program-files folder as a 32-bit program gets it, whichever kind this build is.
  if (csidl == kCsidlProgramFiles) csidl = kCsidlProgramFilesX86;
  // Owner handle 1 and the default user's token, as the program has always asked; the user's own folders
  // are this user's, which the default user's token would not give.
  const bool dellUtente = csidl == kCsidlDesktopDirectory || csidl == kCsidlLocalAppData;
  const HANDLE token = dellUtente ? nullptr : reinterpret_cast<HANDLE>(-1);
  // Asked in UTF-16: the ANSI call would give a look-alike letter for one its code page lacks ("Lodz" for
  // "Łódź"), naming another folder; DaLargo gives '?', which the wide calls resolve again.
  const HRESULT hr = ::SHGetFolderPathW(reinterpret_cast<HWND>(1), csidl, token, 0, stanza);
  *esito = hr;
  if (hr != S_OK) return {};
  return DaLargo(stanza);
}

}  // namespace host

#endif  // _WIN32
