// Processes on a system that runs Wine: the host's own, as the native tool's folders name them.
#ifndef _WIN32

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <climits>

#include "host/processo.h"

namespace host {

std::uint32_t IdProcesso() {
  return static_cast<std::uint32_t>(::getpid());
}

bool ProcessoVivo(std::uint32_t id) {
  // 0 would ask of the whole process group, and a number past a pid_t of some other process's group.
  if (id == 0 || id > static_cast<std::uint32_t>(INT_MAX)) return true;
  return ::kill(static_cast<pid_t>(id), 0) == 0 || errno != ESRCH;
}

}  // namespace host

#endif
