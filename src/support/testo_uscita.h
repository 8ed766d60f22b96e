// Our text on its way out of the program, to a terminal or to a file: inside, it is Windows-1252 with CR LF,
// as the report area keeps it.
#pragma once

#include <string>

namespace support {

// The text as this system's plain text wants it: on Linux in the locale's encoding (UTF-8 under a UTF-8
// locale, the bytes as they are under any other) with LF; on Windows as it is.
std::string TestoLocale(const std::string& testo);

// Why a file could not be written, in words for a message, from the platform's error number.
std::string MotivoScrittura(int errore);

// Writes `byte` whole or not at all (ScriviFileIntero); "" when written, else why not.
std::string ScriviTestoIntero(const std::string& percorso, const std::string& byte);

}  // namespace support
