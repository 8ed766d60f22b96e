// Turning raw values into what the user sees: size texts, progress percent, clean fixed-length fields.
#pragma once

#include <string>

#include "support/interfacce.h"

namespace support {

// "1.5 Mb", "3 Kb", "1024"; the decimal separator is the user's locale's.
std::string FormattaDimensione(double byte);
std::string FormattaDimensione(double byte, char separatoreDecimale);

// Shows the whole percent of `corrente` out of `totale`, repainting only when it changes.
void AggiornaProgresso(BarraProgresso& barra, double totale, double corrente);

// Blanks off both ends; tabs, line ends and NULs stay.
std::string TogliSpazi(const std::string& testo);

// NULs become blanks, then blanks are trimmed from both ends.
std::string PulisciStringa(const std::string& testo);

// The locale's decimal separator, as the machine gives it.
char SeparatoreDecimale();

}  // namespace support
