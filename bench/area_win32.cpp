// The Win32 analysis window, under Wine, on the snapshot given: see bench/area_misura.h.
// usage: checkordl_bench_area_win32.exe SNAPSHOT WORD
#include <windows.h>

#include <psapi.h>

#include "bench/area_misura.h"
#include "gui_win32/finestra_analisi.h"

namespace {

bench::Memoria Memoria() {
  PROCESS_MEMORY_COUNTERS c{};
  c.cb = sizeof(c);
  if (!GetProcessMemoryInfo(GetCurrentProcess(), &c, sizeof(c))) return {};
  return {static_cast<double>(c.WorkingSetSize), static_cast<double>(c.PeakWorkingSetSize)};
}

}  // namespace

int main(int argc, char** argv) {
  if (!bench::Argomenti(argc, "checkordl_bench_area_win32")) return 2;
  bench::Servizi s;
  win32::FinestraAnalisi f(nullptr, s.messaggi, s.file, s.appunti);
  if (!analysis::ApriFinestra(f.Modello(), argv[1])) return 1;
  ShowWindow(f.Hwnd(), SW_SHOW);
  const HWND area = f.Controllo("Text_Out");
  bench::Misura(
      "Win32", f.Modello(), argv[2],
      [&] {
        SendMessageA(f.Hwnd(), WM_COMMAND,
                     static_cast<WPARAM>(win32::IdVoce(analysis::Voce::mnu_ShowTRLE_Dir)), 0);
      },
      [&] {
        win32::SmaltisciCoda();
        RedrawWindow(area, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
      },
      Memoria);
  std::fflush(stdout);
  return 0;
}
