// The report area: a window class of its own. It holds the report string once, with the index of its lines,
// and paints only the lines in view, so that a listing of hundreds of thousands of lines is shown at once;
// the system's EDIT control lays out every line of it first. It keeps the report's bytes and positions
// (a CR LF is two characters, a lone CR or LF is a line break too) and answers the EDIT messages that
// tests and tools send it: WM_GETTEXT, WM_COPY, EM_GETSEL, EM_POSFROMCHAR.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

namespace win32 {

inline constexpr const char* kClasseProspetto = "CheckORDLProspetto";

void RegistraProspetto();

// The string shown, selection and scrolling back at the start.
void ImpostaProspetto(HWND area, const std::string& testo);
// What the area holds; an empty string for a window that is not one.
const std::string& TestoProspetto(HWND area);

struct Selezione {
  std::size_t inizio = 0, fine = 0;
};
Selezione SelezioneProspetto(HWND area);
// Selects [inizio, fine), brings its end's columns into view and puts its line in the middle of the area.
void SelezionaProspetto(HWND area, std::size_t inizio, std::size_t fine);

}  // namespace win32
