// Whether a run of a program is still going: the working folders named after a run's process id are left
// behind when the run is killed, and only a later run can tell a dead run's folder from a live one's.
#pragma once

#include <cstdint>

namespace host {

// This process's id, as the system names it to other processes.
std::uint32_t IdProcesso();

// False only when the system says no process of this id exists; a process that exists but may not be
// asked of (another user's) counts as alive, and so does any answer the system does not give plainly.
bool ProcessoVivo(std::uint32_t id);

}  // namespace host
