// The report items of the analysis window in one table: the menus, their handlers, the marks they clear and
// the headless tool's item words all come from here, so that an item is added in one place.
#pragma once

#include <array>
#include <cstddef>

#include "analysis/dialog_analisi.h"

namespace analysis {

// The menu a report item belongs to. The items of "Prospetto" carry a mark that DeselezionaProspetti clears;
// the others have none of their own and clear those marks when they show their text.
enum class Posto { prospetto, analisi, diagnosi };

struct VoceMenu {
  Voce voce;
  // The menu item's control name and its caption as the window shows it.
  const char* controllo;
  const char* didascalia;
  // The word that names the item to the headless tool.
  const char* parola;
  void (*esegui)(Dialog_Analisi&);
  Posto posto;
};

// In menu order, which is also the order of `Voce`.
inline constexpr std::array<VoceMenu, kNumeroVoci> kVoci = {{
    {Voce::mnu_ShowInfoHeader, "mnu_ShowInfoHeader", "Info File Header", "header", mnu_ShowInfoHeader_Click,
     Posto::prospetto},
    {Voce::mnu_ShowPref, "mnu_ShowPref", "Ordelio preferenze", "pref", mnu_ShowPref_Click, Posto::prospetto},
    {Voce::mnu_ShowArchivioQlv, "mnu_ShowArchivioQlv", "File archivio qlv", "archive",
     mnu_ShowArchivioQlv_Click, Posto::prospetto},
    {Voce::mnu_ShowORDL_Dir, "mnu_ShowORDL_Dir", "Directory Ordelio", "ordl", mnu_ShowORDL_Dir_Click,
     Posto::prospetto},
    {Voce::mnu_ShowTRLE_Dir, "mnu_ShowTRLE_Dir", "Directory Level Editor", "trle", mnu_ShowTRLE_Dir_Click,
     Posto::prospetto},
    {Voce::mnu_ShowArchivioDir, "mnu_ShowArchivioDir", "Directory Archivio livelli", "dirarc",
     mnu_ShowArchivioDir_Click, Posto::prospetto},
    {Voce::mnu_ShowOrdelioTxt, "mnu_ShowOrdelioTxt", "Ordelio.txt", "ordeio", mnu_ShowOrdelioTxt_Click,
     Posto::prospetto},
    {Voce::mnu_ShowScriptDat, "mnu_ShowScriptDat", "Script.Dat", "script", mnu_ShowScriptDat_Click,
     Posto::prospetto},
    {Voce::mnu_AnalisiBackup, "mnu_AnalisiBackup", "Analisi backup_trle", "backup", mnu_AnalisiBackup_Click,
     Posto::analisi},
    {Voce::mnu_ShowAmbiente, "mnu_ShowAmbiente", "Ambiente", "environment", mnu_ShowAmbiente_Click,
     Posto::diagnosi},
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
