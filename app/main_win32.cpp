// checkordl.exe: the desktop program for Windows, in plain Win32. It takes no command line.
#include <windows.h>

#include <clocale>

#include "gui_win32/controlli.h"
#include "gui_win32/finestra_analisi.h"
#include "gui_win32/finestra_getdir.h"
#include "gui_win32/finestra_principale.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int mostra) {
  // The reports take the locale's decimal separator, as the headless tool does.
  std::setlocale(LC_ALL, "");
  win32::MessaggiW messaggi;
  win32::DialogoFileW dialogoFile;
  win32::AppuntiW appunti;
  win32::FinestraPrincipale finestra({messaggi, dialogoFile, appunti,
                                      [](win32::FinestraGetDir& d) { win32::MostraModale(d); },
                                      [](win32::FinestraAnalisi& d) { win32::MostraModale(d); }, true});
  finestra.AlPostoLibero();
  ShowWindow(finestra.Hwnd(), mostra);
  MSG m;
  while (GetMessageA(&m, nullptr, 0, 0) > 0) {
    if (IsDialogMessageA(finestra.Hwnd(), &m)) continue;
    TranslateMessage(&m);
    DispatchMessageA(&m);
  }
  return 0;
}
