// Name rules of the platform: case folding in Windows-1252, wildcard patterns, reserved device names.
#pragma once

#include <string>
#include <string_view>

namespace host {

char Maiuscola(char c);
std::string Maiuscolo(std::string_view s);
bool UgualiSenzaCaso(std::string_view a, std::string_view b);

bool HaJolly(std::string_view s);
// `*` and `?` against a whole name, without regard to case; "*.*" and "x.*" also take names without a dot,
// and a pattern ending in "." takes names without an extension, as the platform's enumeration does.
bool CorrispondeModello(std::string_view modello, std::string_view nome);

// Whether an enumeration with `mask` returns an entry with these attributes: plain and read-only files
// always, hidden (2), system (4) and folders (16) only when the mask asks for them.
bool AmmessoDaMaschera(int attributi, int mask);

// CON, PRN, AUX, NUL, COM1-9, LPT1-9, with or without an extension.
bool NomeDispositivo(std::string_view nome);

}  // namespace host
