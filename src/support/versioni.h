// The version text of a program file and the family of Windows that runs the program. Neither shows
// anything or lets a failure reach the caller: failure is "" or false.
#pragma once

#include <cstdint>
#include <string>

#include "host/versione.h"

namespace support {

// The text behind the first "FileVersion" key of the block, found by a plain search that ignores case: the
// 8-bit form of the key first, the 16-bit form only when that is not there. NUL bytes are left out of the
// text, so a 16-bit text comes back as plain text. "" when there is no key or the text has no end.
std::string CercaVersioneNelBlocco(const std::string& blocco);

// The version text of a program file; "" for a missing file, a file without a version block or a block
// without the key.
std::string GetFileVersion(const std::string& percorso);

// Each character followed by a NUL: the 16-bit form of a plain text.
std::string InserisciNulDopoCaratteri(const std::string& testo);

// 0 (Win32s or unknown), 1 (Windows 95), 4 (Windows 98 and ME), 5 (Windows 2000, XP, Server 2003) or 6
// (every other NT system, NT 4 included).
std::int32_t CodiceVersioneWindows(const host::VersioneOs& versione);
// The code of the running system; 0 when the platform will not tell.
std::int32_t GetWindowsVersion();
bool IsWindowsNT();

}  // namespace support
