// The whole of an open snapshot as one text, for the supporter's files and for the headless tool: the
// member table, every report item under its caption, the environment, the findings.
#pragma once

#include <string>

#include "analysis/dialog_analisi.h"

namespace analysis {

// What opens each section: a line of this and the section's caption.
inline constexpr const char* kInizioSezione = "== ";
// The caption of the member table's section; the others are the menu items' captions.
inline constexpr const char* kSezioneMembri = "Members";

// The text of the snapshot that `d` has open, in Windows-1252 with CR LF as the report area keeps it: a line
// "Snapshot: " and its file, then the sections, each after a blank line: the members (name, a tab, the size,
// as the snapshot's table has them), each report item in menu order, the findings unwrapped. Each item runs
// into a report area of its own, so that the window's area, its marks and what the items leave in the model
// stay as they were; what an item would show in a box stands at the top of its section as a line "plain: "
// or "critical: " and the text. The window's bar shows the progress of the listings.
std::string TestoCompleto(const Dialog_Analisi& d);

// The save dialog of "Salva tutto in un file di testo...".
inline constexpr const char* kTitoloTestoCompleto = "Save the whole snapshot as one text";
inline constexpr const char* kFiltroTestoCompleto = "Text files (*.txt)|*.txt|All files (*.*)|*.*";
// The name it proposes: the snapshot's file name with ".txt" for its extension (INFO_ORDL.BIN gives
// INFO_ORDL.txt).
std::string NomeTestoCompleto(const std::string& snapshot);

}  // namespace analysis
