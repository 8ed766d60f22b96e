// Every finding the program itself gives, one row each: the code names a finding by its row, the JSON and the
// text print the row's id, the README lists the rows (a test holds it to this table), and a rule may not take
// an id of a row.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace analysis {

enum class IdEsito {
  flagNoArchive,
  flagNoOrdelioFolder,
  flagNoArchiveFolder,
  flagNoBackupFolder,
  flagNoEditorFolder,
  flagNoPreferences,
  flagNoOrdl2009,
  flagNoOrdeioTxt,
  flagNoScript,
  flagUnknownBits,
  flagNone,
  memberMissing,
  memberUnreadable,
  memberAllPresent,
  headerUnreadable,
  listUnreadable,
  prefsWrongLength,
  prefsOtherEditorFolder,
  prefsSameEditorFolder,
  scriptUnreadable,
  scriptLevelMissing,
  scriptLevelsPresent,
  editorEmptyLevel,
  editorNoEmptyLevel,
  editorNoTomb4,
  editorTomb4Present,
  archiveUnreadable,
  archiveCut,
  archiveFewFolders,
  archiveFoldersMatch,
  installProgramFiles,
  installNonAsciiPath,
  installOnedrive,
  installLongPath,
  installUnshowableName,
  installLongName,
  installPathsOk,
  installVirtualstore,
  diskLowSpace,
  diskSpaceOk,
  ordelioNoVersion,
  ordelioVersion,
  backupDiffers,
  backupNoSampleLists,
  backupNoGoodCopy,
  backupMatches,
  dllNotFound,
  dllAllFound,
  exeCompatLayers,
  webMarked,
  exeSettingsOk,
  cfaGuardedFolder,
  cfaAudit,
  environmentNotRecorded,
  environmentUnreadable,
  rulesUnreadable,
  snapshotUnreadable,
};

struct VoceEsito {
  IdEsito esito;
  std::string_view id;
  // The severities it may carry, as the README gives them: "fail", "warn/fail", "pass", ...
  std::string_view livelli;
  // What it says, in a few words, for the README's list.
  std::string_view descrizione;
};

inline constexpr std::array kEsitiNoti = {
    VoceEsito{IdEsito::flagNoArchive, "flag.no-archive", "fail", "the check found no level archive"},
    VoceEsito{IdEsito::flagNoOrdelioFolder, "flag.no-ordelio-folder", "fail",
              "the check found no Ordelio folder"},
    VoceEsito{IdEsito::flagNoArchiveFolder, "flag.no-archive-folder", "fail",
              "the check found no archive folder"},
    VoceEsito{IdEsito::flagNoBackupFolder, "flag.no-backup-folder", "fail",
              "the check found no backup folder"},
    VoceEsito{IdEsito::flagNoEditorFolder, "flag.no-editor-folder", "fail",
              "the check found no editor folder"},
    VoceEsito{IdEsito::flagNoPreferences, "flag.no-preferences", "fail", "the check found no ordelio.prf"},
    VoceEsito{IdEsito::flagNoOrdl2009, "flag.no-ordl2009", "fail", "the check found no ordl2009.exe"},
    VoceEsito{IdEsito::flagNoOrdeioTxt, "flag.no-ordeio-txt", "warn", "the check found no ordeio.txt"},
    VoceEsito{IdEsito::flagNoScript, "flag.no-script", "fail", "the check found no script.dat"},
    VoceEsito{IdEsito::flagUnknownBits, "flag.unknown-bits", "warn",
              "error flags this program does not know"},
    VoceEsito{IdEsito::flagNone, "flag.none", "pass", "the check set no error flag"},
    VoceEsito{IdEsito::memberMissing, "member.missing", "fail/warn",
              "a file the reports read is not in the snapshot"},
    VoceEsito{IdEsito::memberUnreadable, "member.unreadable", "warn", "the check run could not read a file"},
    VoceEsito{IdEsito::memberAllPresent, "member.all-present", "pass",
              "the snapshot holds every file the reports read"},
    VoceEsito{IdEsito::headerUnreadable, "header.unreadable", "fail",
              "infofile.bin is not the check run's record"},
    VoceEsito{IdEsito::listUnreadable, "list.unreadable", "warn", "a file list could not be read whole"},
    VoceEsito{IdEsito::prefsWrongLength, "prefs.wrong-length", "warn",
              "ordelio.prf is not of the record's length"},
    VoceEsito{IdEsito::prefsOtherEditorFolder, "prefs.other-editor-folder", "fail",
              "Ordelio points at another editor folder"},
    VoceEsito{IdEsito::prefsSameEditorFolder, "prefs.same-editor-folder", "pass",
              "Ordelio points at the checked editor folder"},
    VoceEsito{IdEsito::scriptUnreadable, "script.unreadable", "fail",
              "script.dat cannot be read as the level script"},
    VoceEsito{IdEsito::scriptLevelMissing, "script.level-missing", "fail",
              "a level script.dat names is not in the editor folder"},
    VoceEsito{IdEsito::scriptLevelsPresent, "script.levels-present", "pass",
              "every level script.dat names is there"},
    VoceEsito{IdEsito::editorEmptyLevel, "editor.empty-level", "fail",
              "a level file in the editor folder is empty"},
    VoceEsito{IdEsito::editorNoEmptyLevel, "editor.no-empty-level", "pass",
              "no level file in the editor folder is empty"},
    VoceEsito{IdEsito::editorNoTomb4, "editor.no-tomb4", "fail", "the editor folder holds no tomb4.exe"},
    VoceEsito{IdEsito::editorTomb4Present, "editor.tomb4-present", "pass",
              "the editor folder holds tomb4.exe"},
    VoceEsito{IdEsito::archiveUnreadable, "archive.unreadable", "fail",
              "the level archive's header cannot be read"},
    VoceEsito{IdEsito::archiveCut, "archive.cut", "fail",
              "the archive holds fewer levels than its header counts"},
    VoceEsito{IdEsito::archiveFewFolders, "archive.few-folders", "warn",
              "fewer level folders than archived levels"},
    VoceEsito{IdEsito::archiveFoldersMatch, "archive.folders-match", "pass",
              "a folder for each archived level"},
    VoceEsito{IdEsito::installProgramFiles, "install.program-files", "warn",
              "installed below a Program Files folder"},
    VoceEsito{IdEsito::installNonAsciiPath, "install.non-ascii-path", "warn",
              "an installation path outside ASCII"},
    VoceEsito{IdEsito::installOnedrive, "install.onedrive", "warn", "installed in OneDrive"},
    VoceEsito{IdEsito::installLongPath, "install.long-path", "warn", "paths near the 260-character limit"},
    VoceEsito{IdEsito::installUnshowableName, "install.unshowable-name", "warn",
              "names the level tools cannot open"},
    VoceEsito{IdEsito::installLongName, "install.long-name", "warn",
              "file names too long for the level tools"},
    VoceEsito{IdEsito::installPathsOk, "install.paths-ok", "pass", "the installations' paths look right"},
    VoceEsito{IdEsito::installVirtualstore, "install.virtualstore", "warn",
              "files that came from the VirtualStore"},
    VoceEsito{IdEsito::diskLowSpace, "disk.low-space", "warn", "a drive with less than 200 Mb free"},
    VoceEsito{IdEsito::diskSpaceOk, "disk.space-ok", "pass", "enough free space"},
    VoceEsito{IdEsito::ordelioNoVersion, "ordelio.no-version", "warn",
              "ordl2009.exe carries no version text"},
    VoceEsito{IdEsito::ordelioVersion, "ordelio.version", "pass", "Ordelio's version"},
    VoceEsito{IdEsito::backupDiffers, "backup.differs", "warn", "backup_trle differs from the sample"},
    VoceEsito{IdEsito::backupNoSampleLists, "backup.no-sample-lists", "warn",
              "the sample lists are not beside the program"},
    VoceEsito{IdEsito::backupNoGoodCopy, "backup.no-good-copy", "warn",
              "the known good backup_trle is not on this computer"},
    VoceEsito{IdEsito::backupMatches, "backup.matches", "pass", "backup_trle matches the sample"},
    VoceEsito{IdEsito::dllNotFound, "dll.not-found", "fail", "an imported DLL Windows cannot find"},
    VoceEsito{IdEsito::dllAllFound, "dll.all-found", "pass", "Windows finds every imported DLL"},
    VoceEsito{IdEsito::exeCompatLayers, "exe.compat-layers", "warn", "compatibility layers on a level tool"},
    VoceEsito{IdEsito::webMarked, "web.marked", "warn", "files with the mark of the web"},
    VoceEsito{IdEsito::exeSettingsOk, "exe.settings-ok", "pass", "no layer and no mark on the level tools"},
    VoceEsito{IdEsito::cfaGuardedFolder, "cfa.guarded-folder", "warn",
              "Controlled Folder Access guards an installation"},
    VoceEsito{IdEsito::cfaAudit, "cfa.audit", "pass", "Controlled Folder Access only audits"},
    VoceEsito{IdEsito::environmentNotRecorded, "environment.not-recorded", "pass",
              "an older program made the snapshot"},
    VoceEsito{IdEsito::environmentUnreadable, "environment.unreadable", "warn",
              "ambiente.json cannot be read"},
    VoceEsito{IdEsito::rulesUnreadable, "rules.unreadable", "warn",
              "a rules file could not be read; its rules were left out"},
    VoceEsito{IdEsito::snapshotUnreadable, "snapshot.unreadable", "fail", "the snapshot cannot be read"},
};

// The rows stand in the order of the enumeration, so that a row is found by its name.
constexpr bool RigheInOrdine() {
  for (std::size_t i = 0; i < kEsitiNoti.size(); ++i)
    if (static_cast<std::size_t>(kEsitiNoti[i].esito) != i) return false;
  return true;
}
static_assert(RigheInOrdine(), "one row per finding, in the enumeration's order");

constexpr const VoceEsito& VoceDi(IdEsito e) {
  return kEsitiNoti[static_cast<std::size_t>(e)];
}

// The row of a built-in id; nullptr for any other.
constexpr const VoceEsito* CercaEsito(std::string_view id) {
  for (const VoceEsito& v : kEsitiNoti)
    if (v.id == id) return &v;
  return nullptr;
}

}  // namespace analysis
