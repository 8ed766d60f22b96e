// How the tool was started. A double click in Explorer gives it a console of its own, which Windows closes
// the moment the tool ends: the usage would flash past unread, so the tool waits for Enter there.
#pragma once

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#endif

namespace cli {

// True when no other program shares this process's console: the tool was started from Explorer, not from a
// Command Prompt or a script, which stay attached to the console.
inline bool ConsoleDaSola() {
#ifdef _WIN32
  DWORD processi[2];
  return GetConsoleProcessList(processi, 2) == 1;
#else
  return false;
#endif
}

// Waits for Enter in that console. (The C runtime's own read: the programs import nothing Windows 7 lacks.)
inline void AttendiInvio() {
#ifdef _WIN32
  char c;
  (void)_read(0, &c, 1);
#endif
}

}  // namespace cli
