// The environment on Windows, asked of the system itself: RtlGetVersion for the version that no manifest
// limits, the process's WOW64 state, Wine's own export where Wine runs us, the code page, the system DPI, the
// DEP policy and the Zone.Identifier stream. Calls that older systems lack are looked up, not linked.
#ifdef _WIN32

#include "host/interno_win32.h"

#include <cstdint>
#include <string>

#include "host/grezzo.h"
#include "host/nomi.h"

namespace host {
namespace {

// The call behind `nome` in a DLL the process has loaded or loads now; null where the system lacks it.
template <class Funzione>
Funzione Cerca(const char* dll, const char* nome) {
  HMODULE m = ::GetModuleHandleA(dll);
  if (!m) m = ::LoadLibraryA(dll);
  if (!m) return nullptr;
  return reinterpret_cast<Funzione>(reinterpret_cast<void (*)()>(::GetProcAddress(m, nome)));
}

struct VersioneRtl {
  ULONG dimensione;
  ULONG maggiore;
  ULONG minore;
  ULONG build;
  ULONG piattaforma;
  WCHAR servicePack[128];
};

bool ProcessoWow64() {
  using Funzione = BOOL(WINAPI*)(HANDLE, PBOOL);
  const auto f = Cerca<Funzione>("kernel32.dll", "IsWow64Process");
  BOOL wow = FALSE;
  return f && f(::GetCurrentProcess(), &wow) && wow;
}

std::uint32_t DpiDiSistema() {
  using Funzione = UINT(WINAPI*)();
  // A program that does not declare itself DPI-aware is told 96 whatever the system's setting; the thread
  // asks as a system-aware one for the moment of the call.
  using Contesto = void*(WINAPI*)(void*);
  if (const auto f = Cerca<Funzione>("user32.dll", "GetDpiForSystem")) {
    const auto imposta = Cerca<Contesto>("user32.dll", "SetThreadDpiAwarenessContext");
    void* const prima = imposta ? imposta(reinterpret_cast<void*>(static_cast<std::intptr_t>(-2))) : nullptr;
    const UINT dpi = f();
    if (prima) imposta(prima);
    return dpi;
  }
  using Dc = HDC(WINAPI*)(HWND);
  using Rilascia = int(WINAPI*)(HWND, HDC);
  using Capacita = int(WINAPI*)(HDC, int);
  const auto dc = Cerca<Dc>("user32.dll", "GetDC");
  const auto rilascia = Cerca<Rilascia>("user32.dll", "ReleaseDC");
  const auto capacita = Cerca<Capacita>("gdi32.dll", "GetDeviceCaps");
  if (!dc || !rilascia || !capacita) return 0;
  HDC schermo = dc(nullptr);
  if (!schermo) return 0;
  const int dpi = capacita(schermo, LOGPIXELSY);
  rilascia(nullptr, schermo);
  return dpi > 0 ? static_cast<std::uint32_t>(dpi) : 0;
}

// Far more than a Zone.Identifier stream holds; a longer one is read as far as this.
constexpr DWORD kStreamMassimo = 4096;

}  // namespace

void grezzo::Sistema(SistemaWindows* s) {
  using Rtl = LONG(WINAPI*)(VersioneRtl*);
  if (const auto f = Cerca<Rtl>("ntdll.dll", "RtlGetVersion")) {
    VersioneRtl v{};
    v.dimensione = sizeof v;
    if (f(&v) == 0) {
      s->maggiore = v.maggiore;
      s->minore = v.minore;
      s->build = v.build;
    }
  }
  s->wow64 = ProcessoWow64();
  s->windows64 = sizeof(void*) == 8 || s->wow64;
  using VersioneWine = const char*(__cdecl*)();
  if (const auto f = Cerca<VersioneWine>("ntdll.dll", "wine_get_version")) {
    s->wine = true;
    if (const char* v = f()) s->versioneWine = v;
  }
  s->codePage = ::GetACP();
  s->dpi = DpiDiSistema();
  using Dep = int(WINAPI*)();
  if (const auto f = Cerca<Dep>("kernel32.dll", "GetSystemDEPPolicy"))
    s->dep = static_cast<std::uint32_t>(f());
}

std::string grezzo::PercorsoDelCaricatore(const std::string& winPath, const SistemaWindows& s) {
  if (!s.wow64) return winPath;
  char w[MAX_PATH + 1] = {};
  const UINT n = ::GetSystemWindowsDirectoryA(w, MAX_PATH);
  if (n == 0 || n > MAX_PATH) return winPath;
  const std::string sistema32 = ConBarra(std::string(w, n)) + "System32";
  if (winPath.size() < sistema32.size() ||
      (winPath.size() > sistema32.size() && winPath[sistema32.size()] != '\\') ||
      !UgualiSenzaCaso(std::string_view(winPath).substr(0, sistema32.size()), sistema32))
    return winPath;
  return ConBarra(std::string(w, n)) + "Sysnative" + winPath.substr(sistema32.size());
}

int grezzo::Zona(const std::string& winPath) {
  const HANDLE h = ::CreateFileW((Largo(winPath) + L":Zone.Identifier").c_str(), GENERIC_READ,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) return kZonaNessuna;
  std::string testo(kStreamMassimo, '\0');
  DWORD letti = 0;
  const BOOL ok = ::ReadFile(h, testo.data(), kStreamMassimo, &letti, nullptr);
  ::CloseHandle(h);
  if (!ok) return kZonaNessuna;
  testo.resize(letti);
  return ZonaDelTesto(testo);
}

}  // namespace host

#endif  // _WIN32
