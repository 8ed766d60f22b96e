// The machine around the installations, as a supporter needs it to tell why a program does not start: the
// real Windows, each executable's imports and where the loader would find them for that program's bitness,
// compatibility layers, the mark of the web, Controlled Folder Access, the DEP policy, and what a legacy
// program reads from the VirtualStore. The Win32 back end asks Windows; the Wine-prefix back end reads the
// prefix (its registry files, drive_c\windows\system32 and syswow64, the PE files) the way Wine would answer
// the same calls. Everything is recorded as found; judging it is for the findings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// Windows as it is, not as the manifest-limited GetVersionEx reports it.
struct SistemaWindows {
  // As the registry's Software\Microsoft\Windows NT\CurrentVersion holds them: ProductName, DisplayVersion
  // (else ReleaseId; "" when neither is there).
  std::string prodotto;
  std::string rilascio;
  // As the system reports them (RtlGetVersion; a prefix: its CurrentMajorVersionNumber,
  // CurrentMinorVersionNumber and CurrentBuildNumber, else CurrentVersion).
  std::uint32_t maggiore = 0;
  std::uint32_t minore = 0;
  std::uint32_t build = 0;
  bool windows64 = false;
  // This program runs as a 32-bit program on 64-bit Windows.
  bool wow64 = false;
  bool wine = false;
  // As Wine says it (wine_get_version); "" where it is not said.
  std::string versioneWine;
  // EnableLUA and EnableVirtualization as the VirtualStore view reads them (Windows' defaults where absent).
  bool uac = false;
  bool virtualizzazione = false;
  std::uint32_t codePage = 0;
  std::uint32_t dpi = 0;
  // EnableControlledFolderAccess (0 off, 1 on, 2 audit only, ...); nothing when the value is not set.
  std::optional<std::uint32_t> accessoControllato;
  // The system DEP policy (0 always off, 1 always on, 2 opt-in, 3 opt-out); nothing when it cannot be had.
  std::optional<std::uint32_t> dep;
  // Whether the mark of the web (the Zone.Identifier stream) can be read on this machine: not under Wine.
  bool zoneLeggibili = false;
};

SistemaWindows LeggiSistemaWindows();

// The machine a PE file is built for.
enum class MacchinaPe { x86, x64, altra, nessuna };

// Where the loader would find an imported DLL for the executable that imports it.
enum class Origine {
  nonTrovata,
  cartellaEseguibile,
  // The system folder for the executable's bitness: SysWOW64 for a 32-bit program on 64-bit Windows,
  // System32 otherwise.
  sistema,
  cartellaWindows,
  // An api-ms-win-* or ext-ms-* name: the system maps it to a DLL of its own.
  apiSet,
};

// The zone of a file's Zone.Identifier stream.
inline constexpr int kZonaNessuna = -1;  // no stream, or no ZoneId in it
inline constexpr int kZonaIgnota = -2;   // the machine cannot tell (Wine)

// The ZoneId of the [ZoneTransfer] section of a Zone.Identifier stream's text; kZonaNessuna where there is
// none or it is no small number.
int ZonaDelTesto(std::string_view testo);

struct DllImportata {
  // As the import table names it.
  std::string nome;
  Origine origine = Origine::nonTrovata;
  // The file found, as a Windows path; "" for nonTrovata and apiSet.
  std::string percorso;
  // The mark of the web of the file found beside the executable; kZonaNessuna elsewhere.
  int zona = kZonaNessuna;
};

// A compatibility layer setting of an executable: where it was found and its data ("~ RUNASADMIN WINXPSP3").
struct LivelloCompatibilita {
  // "HKCU", "HKLM" (the 64-bit view, the only one of a 32-bit Windows) or "HKLM (32-bit)".
  std::string radice;
  std::string dati;
};

struct Eseguibile {
  std::string percorso;
  MacchinaPe macchina = MacchinaPe::nessuna;
  // The import table's DLLs in the table's order, at most kMassimoImportazioni.
  std::vector<DllImportata> importazioni;
  // The file was not a PE file that could be read whole, or its table was cut at the limit: why, "" when
  // neither.
  std::string problema;
  std::vector<LivelloCompatibilita> livelli;
  int zona = kZonaNessuna;
};

inline constexpr std::size_t kMassimoEseguibili = 64;
inline constexpr std::size_t kMassimoImportazioni = 256;

// The executables (*.exe) at the top of `cartella`, as paths below it: the `primi` (names) among them first
// in the order given, then the others by name without regard to case; at most kMassimoEseguibili. What the
// loader runs is never virtualized, so the listing is the raw folder's.
std::vector<std::string> EseguibiliInCima(const std::string& cartella, const std::vector<std::string>& primi);

// One executable: its machine, its imports resolved for its bitness on this Windows, its layers, its zone.
// The folders the imports are looked for in are listed once after each LeggiSistemaWindows, which gives
// `sistema`: files put there since are seen after the next one.
Eseguibile StudiaEseguibile(const std::string& winPath, const SistemaWindows& sistema);

// The files below `cartella` that a legacy program reads from the user's VirtualStore (their paths as the
// program sees them, below `cartella`), at most `massimo`; *totale counts them all. None where the machine
// virtualizes nothing there.
std::vector<std::string> FileDaVirtualStore(const std::string& cartella, std::size_t massimo,
                                            std::size_t* totale);

}  // namespace host
