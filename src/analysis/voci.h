// The report items of the analysis window in one table: the menus, their handlers, the marks they clear and
// the headless tool's item words all come from here, so that an item is added in one place.
#pragma once

#include <array>
#include <cstddef>

#include "analysis/dialog_analisi.h"

namespace analysis {

struct VoceMenu {
  Voce voce;
  // The menu item's control name and its caption as the window shows it.
  const char* controllo;
  const char* didascalia;
  // The word that names the item to the headless tool.
  const char* parola;
  void (*esegui)(Dialog_Analisi&);
  // A report of the menu "Prospetto": it carries a mark that DeselezionaProspetti clears. The others belong
  // to the menu "Analisi".
  bool prospetto;
};

// In menu order, which is also the order of `Voce`.
inline constexpr std::array<VoceMenu, kNumeroVoci> kVoci = {{
    {Voce::mnu_ShowInfoHeader, "mnu_ShowInfoHeader", "Info File Header", "header", mnu_ShowInfoHeader_Click,
     true},
    {Voce::mnu_ShowPref, "mnu_ShowPref", "Ordelio preferenze", "pref", mnu_ShowPref_Click, true},
    {Voce::mnu_ShowArchivioQlv, "mnu_ShowArchivioQlv", "File archivio qlv", "archive",
     mnu_ShowArchivioQlv_Click, true},
    {Voce::mnu_ShowORDL_Dir, "mnu_ShowORDL_Dir", "Directory Ordelio", "ordl", mnu_ShowORDL_Dir_Click, true},
    {Voce::mnu_ShowTRLE_Dir, "mnu_ShowTRLE_Dir", "Directory Level Editor", "trle", mnu_ShowTRLE_Dir_Click,
     true},
    {Voce::mnu_ShowArchivioDir, "mnu_ShowArchivioDir", "Directory Archivio livelli", "dirarc",
     mnu_ShowArchivioDir_Click, true},
    {Voce::mnu_ShowOrdelioTxt, "mnu_ShowOrdelioTxt", "Ordelio.txt", "ordeio", mnu_ShowOrdelioTxt_Click, true},
    {Voce::mnu_ShowScriptDat, "mnu_ShowScriptDat", "Script.Dat", "script", mnu_ShowScriptDat_Click, true},
    {Voce::mnu_AnalisiBackup, "mnu_AnalisiBackup", "Analisi backup_trle", "backup", mnu_AnalisiBackup_Click,
     false},
}};

constexpr const VoceMenu& VoceDi(Voce v) {
  return kVoci[static_cast<std::size_t>(v)];
}

// Each row sits at its item's place, so that VoceDi and the window's arrays indexed by `Voce` agree.
constexpr bool VociInOrdine() {
  for (std::size_t i = 0; i < kVoci.size(); ++i)
    if (static_cast<std::size_t>(kVoci[i].voce) != i) return false;
  return true;
}
static_assert(VociInOrdine());

}  // namespace analysis
