// Who the window program is to the desktop: its name, the desktop entry its windows belong to (so that a
// dock or a task bar shows them under the entry's icon), and the program's icon on every window.
#pragma once

namespace gui {

inline constexpr const char* kNomeDesktop = "org.checkordl.CheckORDL";

// Called once, after the application object is made.
void ImpostaIdentita();

}  // namespace gui
