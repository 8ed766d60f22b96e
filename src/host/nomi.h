// Name rules of the platform: case folding in Windows-1252, wildcard patterns, reserved device names.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

// The names of `percorso` below the folder `base` ("C:\P" and "C:\P\Dati\a.txt" give "Dati" and "a.txt"),
// folder names losing one closing dot and the last name every closing dot and blank, as the platform reads
// them. Nothing when `percorso` is not below `base`, climbs with ".." or names nothing.
std::optional<std::vector<std::string>> NomiSotto(std::string_view base, std::string_view percorso);

}  // namespace host
