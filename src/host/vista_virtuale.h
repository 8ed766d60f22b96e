// The machine's files as the level tools see them. The level editor, the game and the archive manager are
// 32-bit programs whose manifests ask for no execution level; under UAC, Windows redirects their writes
// into a folder that only administrators may write (the program-files folders, ProgramData, the Windows
// folder) to the user's VirtualStore (%LOCALAPPDATA%\VirtualStore\ and the path without its drive), and
// from then on reads that copy in place of the original; a listing of the folder shows both, the copy
// winning. Windows never does that for this program (it declares "asInvoker"), nor for a 64-bit one, so
// the machine layer does it for every read of the machine's files: attributes, lengths, opening to read,
// version blocks, the listings and the walk of a folder. Writes and deletes never go through it.
// Windows virtualizes from Vista on, while the registry's Policies\System has EnableLUA and
// EnableVirtualization on (both default to on); Wine's prefixes say EnableLUA=0.
#pragma once

#include <string>

namespace host {

// The VirtualStore copy of a path at or below a virtualized folder ("C:\Program Files (x86)\a" gives
// "C:\Users\u\AppData\Local\VirtualStore\Program Files (x86)\a"), whether or not it exists; "" where the
// machine virtualizes nothing there.
std::string CopiaVirtuale(const std::string& winPath);
// What a read of the path reaches: a file of the copy where there is one, the original otherwise (a folder
// that exists in both is the original's, the listings of the two being merged).
std::string PercorsoLettura(const std::string& winPath);
// UAC (EnableLUA) and its file virtualization (EnableVirtualization) as the machine's registry sets them,
// Windows' defaults (on) where it does not.
void StatoUac(bool* uac, bool* virtualizzazione);
// The machine's settings are read again at the next read (a prefix was chosen, the registry changed); no
// folder is left out any more.
void DimenticaVistaVirtuale();

// A working folder whose files are not the open snapshot's (it is a link, or it could not be emptied):
// every read below it finds nothing, as if the folder were empty, until the next call. "" leaves none out.
void EscludiCartella(const std::string& winFolder);

}  // namespace host
