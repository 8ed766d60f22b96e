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

inline constexpr auto kEsitiNoti = std::to_array<VoceEsito>({
    {IdEsito::flagNoArchive, "flag.no-archive", "fail", "the check found no level archive"},
    {IdEsito::flagNoOrdelioFolder, "flag.no-ordelio-folder", "fail", "the check found no Ordelio folder"},
    {IdEsito::flagNoArchiveFolder, "flag.no-archive-folder", "fail", "the check found no archive folder"},
    {IdEsito::flagNoBackupFolder, "flag.no-backup-folder", "fail", "the check found no backup folder"},
    {IdEsito::flagNoEditorFolder, "flag.no-editor-folder", "fail", "the check found no editor folder"},
    {IdEsito::flagNoPreferences, "flag.no-preferences", "fail", "the check found no ordelio.prf"},
    {IdEsito::flagNoOrdl2009, "flag.no-ordl2009", "fail", "the check found no ordl2009.exe"},
    {IdEsito::flagNoOrdeioTxt, "flag.no-ordeio-txt", "warn", "the check found no ordeio.txt"},
    {IdEsito::flagNoScript, "flag.no-script", "fail", "the check found no script.dat"},
    {IdEsito::flagUnknownBits, "flag.unknown-bits", "warn", "error flags this program does not know"},
    {IdEsito::flagNone, "flag.none", "pass", "the check set no error flag"},
    {IdEsito::memberMissing, "member.missing", "fail/warn", "a file the reports read is not in the snapshot"},
    {IdEsito::memberUnreadable, "member.unreadable", "warn", "the check run could not read a file"},
    {IdEsito::memberAllPresent, "member.all-present", "pass",
     "the snapshot holds every file the reports read"},
    {IdEsito::headerUnreadable, "header.unreadable", "fail", "infofile.bin is not the check run's record"},
    {IdEsito::listUnreadable, "list.unreadable", "warn", "a file list could not be read whole"},
    {IdEsito::prefsWrongLength, "prefs.wrong-length", "warn", "ordelio.prf is not of the record's length"},
    {IdEsito::prefsOtherEditorFolder, "prefs.other-editor-folder", "fail",
     "Ordelio points at another editor folder"},
    {IdEsito::prefsSameEditorFolder, "prefs.same-editor-folder", "pass",
     "Ordelio points at the checked editor folder"},
    {IdEsito::scriptUnreadable, "script.unreadable", "fail", "script.dat cannot be read as the level script"},
    {IdEsito::scriptLevelMissing, "script.level-missing", "fail",
     "a level script.dat names is not in the editor folder"},
    {IdEsito::scriptLevelsPresent, "script.levels-present", "pass", "every level script.dat names is there"},
    {IdEsito::editorEmptyLevel, "editor.empty-level", "fail", "a level file in the editor folder is empty"},
    {IdEsito::editorNoEmptyLevel, "editor.no-empty-level", "pass",
     "no level file in the editor folder is empty"},
    {IdEsito::editorNoTomb4, "editor.no-tomb4", "fail", "the editor folder holds no tomb4.exe"},
    {IdEsito::editorTomb4Present, "editor.tomb4-present", "pass", "the editor folder holds tomb4.exe"},
    {IdEsito::archiveUnreadable, "archive.unreadable", "fail", "the level archive's header cannot be read"},
    {IdEsito::archiveCut, "archive.cut", "fail", "the archive holds fewer levels than its header counts"},
    {IdEsito::archiveFewFolders, "archive.few-folders", "warn", "fewer level folders than archived levels"},
    {IdEsito::archiveFoldersMatch, "archive.folders-match", "pass", "a folder for each archived level"},
    {IdEsito::installProgramFiles, "install.program-files", "warn", "installed below a Program Files folder"},
    {IdEsito::installNonAsciiPath, "install.non-ascii-path", "warn", "an installation path outside ASCII"},
    {IdEsito::installOnedrive, "install.onedrive", "warn", "installed in OneDrive"},
    {IdEsito::installLongPath, "install.long-path", "warn", "paths near the 260-character limit"},
    {IdEsito::installUnshowableName, "install.unshowable-name", "warn", "names the level tools cannot open"},
    {IdEsito::installLongName, "install.long-name", "warn", "file names too long for the level tools"},
    {IdEsito::installPathsOk, "install.paths-ok", "pass", "the installations' paths look right"},
    {IdEsito::installVirtualstore, "install.virtualstore", "warn", "files that came from the VirtualStore"},
    {IdEsito::diskLowSpace, "disk.low-space", "warn", "a drive with less than 200 Mb free"},
    {IdEsito::diskSpaceOk, "disk.space-ok", "pass", "enough free space"},
    {IdEsito::ordelioNoVersion, "ordelio.no-version", "warn", "ordl2009.exe carries no version text"},
    {IdEsito::ordelioVersion, "ordelio.version", "pass", "Ordelio's version"},
    {IdEsito::backupDiffers, "backup.differs", "warn", "backup_trle differs from the sample"},
    {IdEsito::backupNoSampleLists, "backup.no-sample-lists", "warn",
     "the sample lists are not beside the program"},
    {IdEsito::backupNoGoodCopy, "backup.no-good-copy", "warn",
     "the known good backup_trle is not on this computer"},
    {IdEsito::backupMatches, "backup.matches", "pass", "backup_trle matches the sample"},
    {IdEsito::dllNotFound, "dll.not-found", "fail", "an imported DLL Windows cannot find"},
    {IdEsito::dllAllFound, "dll.all-found", "pass", "Windows finds every imported DLL"},
    {IdEsito::exeCompatLayers, "exe.compat-layers", "warn", "compatibility layers on a level tool"},
    {IdEsito::webMarked, "web.marked", "warn", "files with the mark of the web"},
    {IdEsito::exeSettingsOk, "exe.settings-ok", "pass", "no layer and no mark on the level tools"},
    {IdEsito::cfaGuardedFolder, "cfa.guarded-folder", "warn",
     "Controlled Folder Access guards an installation"},
    {IdEsito::cfaAudit, "cfa.audit", "pass", "Controlled Folder Access only audits"},
    {IdEsito::environmentNotRecorded, "environment.not-recorded", "pass",
     "an older program made the snapshot"},
    {IdEsito::environmentUnreadable, "environment.unreadable", "warn", "ambiente.json cannot be read"},
    {IdEsito::rulesUnreadable, "rules.unreadable", "warn",
     "a rules file could not be read; its rules were left out"},
    {IdEsito::snapshotUnreadable, "snapshot.unreadable", "fail", "the snapshot cannot be read"},
});

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
